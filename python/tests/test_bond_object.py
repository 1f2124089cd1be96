"""The Bond object and the functions against the C exports called directly,
dates in every accepted form, argument checks and public signatures."""

import ctypes
import datetime as dt
import inspect
import unittest

import k_bond
from k_bond import _library

try:
    import numpy as np
    import pandas as pd
except ImportError:  # the tests of those forms skip themselves
    np = pd = None

I32, F64 = ctypes.c_int32, ctypes.c_double

# name, bond, settlement: a mid-period Treasury, a Gilt inside its
# ex-dividend period, a corporate with a sinking fund and a stepped coupon.
BONDS = [
    ("treasury", dict(type="ust", coupon=0.0425, maturity=dt.date(2034, 11, 15)),
     dt.date(2025, 1, 15)),
    ("gilt ex-dividend", dict(type="gilt", coupon=0.04, maturity=dt.date(2030, 3, 7)),
     dt.date(2025, 3, 3)),
    ("corporate sinking fund",
     dict(type=3, coupon=[0.05, 0.06], step_dates=[dt.date(2028, 6, 1), dt.date(2035, 6, 1)],
          factor=1.0, sink_dates=[dt.date(2030, 6, 1)], sink_amounts=[0.1]),
     dt.date(2025, 2, 10)),
]


def raw(export, bond, settlement, **own):
    """Calls `export` with C buffers made here by hand (not by the package's
    argument code), the bond's own arguments given by C name."""
    coupons = bond["coupon"] if isinstance(bond["coupon"], list) else [bond["coupon"]]
    dates = bond.get("step_dates") or [bond["maturity"]]
    serials = [k_bond.to_serial(d) for d in dates]
    sinks = [k_bond.to_serial(d) for d in bond.get("sink_dates", [])]
    amounts = bond.get("sink_amounts", [])
    values = dict(
        coupons=(F64 * len(coupons))(*coupons), n_coupons=len(coupons),
        dates=(I32 * len(serials))(*serials), n_dates=len(serials),
        settlement=k_bond.to_serial(settlement), maturity=serials[-1],
        reference_coupon=serials[-1], type=ctypes.pointer(I32(k_bond.type_code(bond["type"]))),
        factor=ctypes.pointer(F64(bond["factor"])) if "factor" in bond else None,
        sink_dates=(I32 * len(sinks))(*sinks) if sinks else None, n_sink=len(sinks),
        sink_amounts=(F64 * len(amounts))(*amounts) if amounts else None, n_frequency=0,
        n_holidays=0, n_sink_ends=0, n_call_dates=0, n_call_prices=0)
    values.update(own)
    error = I32(0)
    args = [ctypes.byref(error) if n == "error" else values.get(n)
            for n in _library.argument_names(export)]
    result = getattr(_library.library(), export)(*args)
    return result, error.value


def pointer(value, kind=I32):
    return ctypes.pointer(kind(value))


# Bond method, its arguments, the export and its own C arguments.
CALLS = [
    ("price", (0.045,), "KVLbpr", dict(**{"yield": 0.045})),
    ("yield_", (97.5,), "KVLbyld", dict(price=97.5)),
    ("accrued", (), "KVLbai1", {}),
    ("horizon_yield", (97.5, dt.date(2027, 2, 10), 99.0), "KVLbhyld",
     dict(price=97.5, horizon_date=k_bond.to_serial(dt.date(2027, 2, 10)), horizon_price=99.0)),
    ("realized_yield", (97.5, 0.03), "KVLbryld", dict(price=97.5, reinvestment_rate=0.03)),
    ("average_life_yield", (97.5,), "KVLbyldal", dict(price=97.5)),
    ("remaining_life", (), "KVLbel", dict(price_or_yield=0.045)),
    ("duration", (0.045,), "KVLbdur", dict(**{"yield": 0.045})),
    ("convexity", (0.045,), "KVLbconv", dict(**{"yield": 0.045})),
    ("pvbp", (0.045,), "KVLbvalbp", dict(**{"yield": 0.045})),
    ("value_of_32nd", (0.045,), "KVLbval32", dict(**{"yield": 0.045})),
    ("coupon_amount", (), "KVLbcamt", {}),
    ("coupons_remaining", (), "KVLbncpn", {}),
    ("average_life", (), "KVLbal", {}),
]


def call(bond_object, method, args, settlement):
    if method == "remaining_life":
        return bond_object.remaining_life(settlement, yield_=0.045)
    fn = getattr(bond_object, method)
    return fn(*args[:1], settlement, *args[1:]) if args else fn(settlement)


class AgainstTheExports(unittest.TestCase):
    def test_every_method_gives_the_export_value(self):
        for name, description, settlement in BONDS:
            bond = k_bond.Bond(**description)
            for method, args, export, own in CALLS:
                with self.subTest(bond=name, method=method):
                    expected, error = raw(export, description, settlement, **own)
                    self.assertEqual(error, 0)
                    self.assertEqual(call(bond, method, args, settlement), expected)

    def test_dates_and_the_cash_flow_table(self):
        for name, description, settlement in BONDS:
            bond = k_bond.Bond(**description)
            serial = k_bond.to_serial(settlement)
            with self.subTest(bond=name):
                for k in (1, 0):
                    expected, _ = raw("KVLbcpn", description, settlement, k=pointer(k))
                    self.assertEqual(bond.coupon_date(settlement, k), k_bond.from_serial(expected))
                self.assertEqual(bond.next_coupon(settlement), bond.coupon_date(settlement, 1))
                expected, _ = raw("KVLbexdiv", description, serial)
                self.assertEqual(bond.ex_dividend_date(settlement), k_bond.from_serial(expected))
                # The table reprices the bond at the coupon frequency's yield.
                flows = bond.cashflows(settlement)
                frame = bond.cashflows(settlement, frame=True) if pd else None
                freq = k_bond.type_info(description["type"]).frequency
                dirty = sum((f.coupon + f.principal) / (1 + 0.045 / freq) ** f.periods
                            for f in flows)
                # Corporate prices are truncated to three decimals.
                self.assertAlmostEqual(dirty - bond.accrued(settlement),
                                       bond.price(0.045, settlement), delta=1e-3)
                if frame is not None:
                    self.assertEqual(list(frame.columns), ["date", "coupon", "principal",
                                                           "periods"])
                    self.assertEqual(frame["date"].tolist(), [f.date for f in flows])
        # Seven business days before Friday 7 March 2025 is Wednesday 26
        # February; the Gilt goes ex-dividend the day after.
        self.assertEqual(k_bond.Bond(**BONDS[1][1]).ex_dividend_date("2025-03-03"),
                         dt.date(2025, 2, 27))

    def test_functions_are_the_bond_methods(self):
        bond = dict(coupon=0.0425, maturity="2034-11-15", bond_type="treasury")
        settle = "2025-01-15"
        obj = k_bond.Bond(coupon=0.0425, maturity="2034-11-15", type="treasury")
        self.assertEqual(k_bond.price(yield_=0.045, settlement=settle, **bond),
                         obj.price(0.045, settle))
        self.assertEqual(k_bond.yield_to_worst(price=101.0, settlement=settle,
                                               call_dates=["2029-11-15"], call_prices=[100.0],
                                               **bond),
                         obj.yield_to_worst(101.0, settle, call_dates=["2029-11-15"],
                                            call_prices=[100.0]))
        self.assertEqual(k_bond.risk(yield_=0.045, settlement=settle, **bond),
                         obj.risk(0.045, settle))

    def test_yield_to_worst_takes_the_call_when_it_is_lower(self):
        bond = k_bond.Bond(type="ust", coupon=0.06, maturity="2034-11-15")
        to_maturity = bond.yield_(110.0, "2025-01-15")
        worst = bond.yield_to_worst(110.0, "2025-01-15", call_dates=["2027-11-15"],
                                    call_prices=[100.0])
        self.assertLess(worst, to_maturity)


class DateForms(unittest.TestCase):
    def test_every_accepted_form_gives_the_same_price(self):
        bond = k_bond.Bond(type="ust", coupon=0.0425, maturity="2034-11-15")
        expected = bond.price(0.045, dt.date(2025, 1, 15))
        forms = [dt.datetime(2025, 1, 15, 16, 30), "2025-01-15", "2025-01-15T09:00", 45671]
        if np is not None:
            forms += [np.datetime64("2025-01-15"), np.datetime64("2025-01-15T12:00"),
                      pd.Timestamp("2025-01-15 08:00"), np.int32(45671)]
        for form in forms:
            with self.subTest(form=repr(form)):
                self.assertEqual(bond.price(0.045, form), expected)
        for form in forms:
            self.assertEqual(k_bond.Bond(type="ust", coupon=0.0425, maturity=form).maturity,
                             dt.date(2025, 1, 15))

    def test_refused_forms_name_the_argument(self):
        bond = k_bond.Bond(type="ust", coupon=0.0425, maturity="2034-11-15")
        bad = [45671.0, "15/01/2025", True, dt.date(1899, 12, 31), 1825001, None]
        if np is not None:
            bad += [np.datetime64("NaT")]
        for form in bad:
            with self.subTest(form=repr(form)):
                with self.assertRaises(k_bond.KBondArgumentError) as caught:
                    bond.price(0.045, form)
                self.assertIn("settlement", str(caught.exception))
        with self.assertRaises(k_bond.KBondArgumentError) as caught:
            k_bond.Bond(type="ust", coupon=0.0425, maturity="2034-13-01")
        self.assertIn("maturity", str(caught.exception))
        self.assertEqual(caught.exception.code, 150)


class Arguments(unittest.TestCase):
    def test_refusals_before_the_library_name_the_argument(self):
        bond = k_bond.Bond(type="ust", coupon=0.0425, maturity="2034-11-15")
        cases = [
            (lambda: bond.price("4.5%", "2025-01-15"), "yield_"),
            (lambda: bond.yield_(None, "2025-01-15"), "price"),
            (lambda: k_bond.Bond(type="moon bond", coupon=0.04, maturity="2030-01-01"), "bond_type"),
            (lambda: k_bond.Bond(type=4.0, coupon=0.04, maturity="2030-01-01"), "bond_type"),
            (lambda: k_bond.Bond(coupon="4%", maturity="2030-01-01"), "coupon"),
            (lambda: k_bond.Bond(coupon=0.04, maturity="2030-01-01", holidays="2025-12-25"),
             "holidays"),
            (lambda: bond.remaining_life("2025-01-15", yield_=0.04, price=99.0), "yield_ or price"),
            (lambda: bond.remaining_life("2025-01-15", price=5.0), "price"),
        ]
        for make, named in cases:
            with self.assertRaises(k_bond.KBondArgumentError) as caught:
                make()
            self.assertIn(named, str(caught.exception))

    def test_public_signatures_are_explicit_and_documented(self):
        # The array functions (vectorised, batch) keep their own signatures.
        public = [getattr(k_bond, n) for n in k_bond.__all__ if callable(getattr(k_bond, n))
                  and getattr(getattr(k_bond, n), "__module__", "") != "k_bond.vectorised"]
        public += [m for _, m in inspect.getmembers(k_bond.Bond, inspect.isfunction)
                   if not m.__name__.startswith("_")]
        for fn in public:
            if isinstance(fn, type) and issubclass(fn, BaseException):
                continue
            with self.subTest(fn=fn.__qualname__):
                kinds = {p.kind for p in inspect.signature(fn).parameters.values()}
                self.assertNotIn(inspect.Parameter.VAR_KEYWORD, kinds)
                self.assertTrue(fn.__doc__)


if __name__ == "__main__":
    unittest.main()
