#!/usr/bin/env python3
"""Every export over a fixed grid of bonds, compared bit for bit with the
results recorded in results.txt.gz beside this file.

The grid: every catalogue type (and a custom type) on bullets, odd first
coupons, a last period, an ex-dividend window, stepped coupons, pre-1999
conventions, month ends, business-day payment and two sinking funds; the
measures built on them (horizon, realized and average-life yields, yield to
worst, risk, carry, forwards, implied repo, Brady); every futures contract
code; floating-rate notes plain and typed; perpetuals; index-linked gilts,
TIPS and OATi; PIK bonds; a batch; and every export with all arguments
absent. Each line holds the export, the case, the error code and the result
(hex floats; arrays by digest), so any change of a digit of any result or of
an error code fails the comparison.

    /usr/bin/python3 tests/golden/golden_results.py           # compare
    /usr/bin/python3 tests/golden/golden_results.py --write   # record anew

The library is the one KBOND_LIBRARY names, as for the Python tests.
"""

import ctypes
import datetime
import gzip
import hashlib
import os
import struct
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "python"))

from k_bond import _library  # noqa: E402
from k_bond._prototypes import PD, PI, PPCHAR, PPD, PPI, PPPCHAR, PROTOTYPES, PU8, D, I32  # noqa: E402
from k_bond.dates import to_serial  # noqa: E402

RECORD = os.path.join(HERE, "results.txt.gz")
LIB = _library.library()

# Count arguments and the array each one counts.
COUNTS = {
    "n_coupons": "coupons", "n_dates": "dates", "n_holidays": "holidays", "n_frequency": "frequency",
    "n_sink": "sink_dates", "n_sink_ends": "sink_ends", "n_call_dates": "call_dates",
    "n_call_prices": "call_prices", "n_cash": "cash_rates", "n_pik": "pik_rates", "n_steps": "step_dates",
    "base_count": "base_index", "settlement_index_count": "settlement_index", "rate_count": "rates",
    "coupon_count": "coupon_dates", "holiday_count": "holidays",
}
FREE = {"KVLbcshflw": "KVLbcshflw_free", "KVLfrncshflw": "KVLfrncshflw_free",
        "KVLtfrncshflw": "KVLfrncshflw_free", "KVLilgcshflw": "KVLilgcshflw_free",
        "KVLilgcshflw2": "KVLilgcshflw_free", "KVLtipscshflw": "KVLtipscshflw_free",
        "KVLoaticshflw": "KVLoaticshflw_free", "KVLpikcshflw": "KVLpikcshflw_free"}


def d(y, m, day):
    return to_serial(datetime.date(y, m, day))


def text(x):
    if isinstance(x, float):
        return x.hex()
    if isinstance(x, bytes):
        return x.decode("latin-1")
    return str(x)


def digest(values, fmt):
    return hashlib.sha1(struct.pack(f"<{len(values)}{fmt}", *values)).hexdigest()[:16]


def _argument(ctype, value):
    if value is None:
        return None if ctype not in (D, I32) else 0
    if isinstance(value, ctypes._SimpleCData) or isinstance(value, ctypes.Array) or \
            type(value).__name__ == "CArgObject":
        return value
    if ctype in (D, I32):
        return value
    item = ctypes.c_double if ctype is PD else ctypes.c_uint8 if ctype is PU8 else ctypes.c_int32
    values = value if isinstance(value, (list, tuple)) else [value]
    return (item * max(1, len(values)))(*values)


def call(name, **given):
    """Calls `name` with the arguments named in `given` (lists become arrays,
    scalars of pointer arguments pointers to one value, counts follow their
    arrays, everything else NULL or 0). Returns (error, result, extra)."""
    restype, arguments = PROTOTYPES[name]
    error = ctypes.c_int32(-777)
    outs, values = [], []
    for arg, ctype in arguments:
        if arg == "error":
            values.append(ctypes.byref(error))
        elif ctype in (PPD, PPI) and arg not in given:
            holder = PD() if ctype is PPD else PI()
            outs.append(holder)
            values.append(ctypes.byref(holder))
        elif arg in given:
            values.append(_argument(ctype, given[arg]))
        elif arg in COUNTS:
            v = given.get(COUNTS[arg])
            values.append(0 if v is None else len(v) if isinstance(v, (list, tuple)) else 1)
        else:
            values.append(_argument(ctype, None))
    result = getattr(LIB, name)(*values)
    extra = ""
    if outs:
        n = result if isinstance(result, int) and 0 < result < 100000 else 0
        parts = []
        for holder in outs:
            if n and holder:
                is_int = isinstance(holder, PI)
                parts.append(digest([holder[k] for k in range(n)], "i" if is_int else "d"))
        extra = " ".join(parts)
        if name in FREE:
            getattr(LIB, FREE[name])(*outs)
    return error.value, result, extra


class Grid:
    def __init__(self):
        self.lines = []

    def run(self, name, case, **given):
        error, result, extra = call(name, **given)
        line = f"{name} {case} {error} {text(result)}"
        self.lines.append(line + (" " + extra if extra else ""))
        return error, result


# ---------------------------------------------------------------- straight bonds
BONDS = {
    "bullet": dict(coupons=[0.05], dates=[d(2034, 11, 15)], settlement=d(2025, 1, 15)),
    "odd": dict(coupons=[0.045], dates=[d(2031, 5, 15)], settlement=d(2024, 6, 10),
                dated_date=d(2024, 3, 1), first_coupon=d(2024, 11, 15)),
    "long_first": dict(coupons=[0.0475], dates=[d(2030, 9, 30)], settlement=d(2024, 2, 12),
                       dated_date=d(2023, 12, 4), first_coupon=d(2025, 3, 31)),
    "last": dict(coupons=[0.03], dates=[d(2025, 6, 15)], settlement=d(2025, 3, 10)),
    "exdiv": dict(coupons=[0.0425], dates=[d(2030, 3, 7)], settlement=d(2025, 3, 3)),
    "steps": dict(coupons=[0.04, 0.05, 0.06], dates=[d(2027, 6, 30), d(2029, 6, 30), d(2033, 6, 30)],
                  settlement=d(2025, 8, 20)),
    "pre1999": dict(coupons=[0.0625], dates=[d(2008, 6, 15)], settlement=d(1998, 9, 10)),
    "month_end": dict(coupons=[0.035], dates=[d(2033, 2, 28)], settlement=d(2025, 5, 30)),
    "paydays": dict(coupons=[0.055], dates=[d(2029, 8, 15)], settlement=d(2025, 2, 11), frequency=[4],
                    yield_method=1, holidays=[d(2025, 5, 15), d(2025, 8, 15)]),
    "sink_equal": dict(coupons=[0.06], dates=[d(2032, 6, 15)], settlement=d(2025, 2, 10), factor=-1.0,
                       sink_dates=[d(2028, 6, 15)]),
    "sink_table": dict(coupons=[0.055], dates=[d(2033, 12, 15)], settlement=d(2025, 4, 1), factor=1.0,
                       sink_dates=[d(2027, 12, 15), d(2030, 12, 15)], sink_amounts=[0.05, 0.1],
                       sink_premium=[0.01, 0.0]),
}


def straight_bonds(grid, codes):
    for code in codes:
        for label, bond in BONDS.items():
            case = f"{code}:{label}"
            b = dict(bond, type=code)
            grid.run("KVLbpr", case, **b, **{"yield": 0.045})
            grid.run("KVLbyld", case, price=97.25, **b)
            grid.run("KVLbai", case, **b)
            grid.run("KVLbdur", case, **b, **{"yield": 0.045})
            grid.run("KVLbcshflw", case, price=99.0, **b)
            maturity = b["dates"][-1]
            shape = {k: b[k] for k in ("dated_date", "first_coupon", "type") if k in b}
            grid.run("KVLbcpn", case, maturity=maturity, settlement=b["settlement"], k=-1, **shape)
            grid.run("KVLbncpn", case, maturity=maturity, settlement=b["settlement"], **shape)
            grid.run("KVLbexdiv", case, reference_coupon=maturity, settlement=b["settlement"], type=code,
                     holidays=b.get("holidays"))


def bond_measures(grid, codes):
    calls = [d(2027, 11, 15), d(2029, 11, 15)]
    for code in codes:
        for label, bond in BONDS.items():
            case = f"{code}:{label}"
            b = dict(bond, type=code)
            s = b["settlement"]
            grid.run("KVLbai1", case, **b)
            grid.run("KVLbhyld", case, price=98.5, horizon_date=s + 400, horizon_price=99.5, **b)
            grid.run("KVLbryld", case, price=98.5, reinvestment_rate=0.04, **b)
            grid.run("KVLbyldal", case, price=98.5, **b)
            grid.run("KVLbel", case, price_or_yield=98.5, **b)
            grid.run("KVLbyworst", case, price=101.5, call_dates=calls, call_prices=[101.0, 100.0], **b)
            for name in ("KVLbconv", "KVLbvalbp", "KVLbval32"):
                grid.run(name, case, **b, **{"yield": 0.05})
            grid.run("KVLbdur", case + ":macaulay", duration_kind=1, **b, **{"yield": 0.05})
            grid.run("KVLbcamt", case, **b)
            grid.run("KVLbal", case, maturity=b["dates"][-1], **{k: v for k, v in b.items() if k not in
                     ("coupons", "dates", "yield_method", "holidays")})
            fwd = s + 91
            grid.run("KVLbcarry", case, end_date=fwd, price=99.0, repo=0.035, **b)
            grid.run("KVLbcarry1", case, end_date=fwd, price=99.0, repo=0.035, date_rule=1, **b)
            grid.run("KVLbfwd", case, forward_date=fwd, price=99.0, repo=0.035, **b)
            grid.run("KVLbfwd1", case, forward_date=fwd, price=99.0, repo=0.035, mode=1, **b)
            grid.run("KVLbifutp", case, price=99.0, repo=0.035, conversion_factor=0.91, delivery=fwd, **b)
            grid.run("KVLbifutp1", case, price=99.0, repo=0.035, conversion_factor=0.91, delivery=fwd, **b)
            grid.run("KVLbnbasis", case, forward_date=fwd, price=99.0, repo=0.035, futures_price=108.0,
                     conversion_factor=0.91, **b)
            grid.run("KVLbnbasis1", case, forward_date=fwd, price=99.0, repo=0.035, futures_price=108.0,
                     conversion_factor=0.91, **b)
            grid.run("KVLbirepo", case, price=99.0, futures_price=108.0, conversion_factor=0.91, delivery=fwd, **b)
            grid.run("KVLbirepo1", case, price=99.0, futures_price=108.0, conversion_factor=0.91, delivery=fwd,
                     days=5, mode=4, basis=365.0, **b)
            brady = dict(guarantee_rate=0.05, collateral_yield=0.045, guaranteed=2, collateral=1)
            grid.run("KVLbradypr", case, stripped_yield=0.09, **brady, **b)
            grid.run("KVLbradyyld", case, price=80.0, **brady, **b)
            grid.run("KVLbradydur", case, stripped_yield=0.09, **brady, **b)


def odd_descriptions(grid):
    """Descriptions that only some set-ups accept: a redemption form refused
    unless overridden, explicit yield methods, an accrual substitute."""
    base = dict(dates=[d(2030, 6, 15)], settlement=d(2025, 3, 1))
    cases = {
        "absurd_form_overridden": dict(coupons=[0.05, 1e-300, 1.0], redemption=100.0, **base),
        "absurd_form": dict(coupons=[0.05, 1e-300, 1.0], **base),
        "form_and_override": dict(coupons=[0.05, 98.0], redemption=101.0, **base),
    }
    for method in (-1, -2, -3, -4, -5, -6, 2):
        cases[f"method{method}"] = dict(coupons=[0.05], yield_method=method, **base)
    brady = dict(guarantee_rate=0.05, collateral_yield=0.045, guaranteed=2, collateral=1)
    for code in (0, 16, 17, 22, 40, 200, 1000):
        for label, b in cases.items():
            case = f"{code}:{label}"
            b = dict(b, type=code)
            grid.run("KVLbpr", case, **b, **{"yield": 0.045})
            grid.run("KVLbai1", case, **b)
            grid.run("KVLbcshflw", case, price=99.0, **b)
            grid.run("KVLbradypr", case, stripped_yield=0.09, **brady, **b)
            grid.run("KVLbradyyld", case, price=80.0, **brady, **b)
            grid.run("KVLbradydur", case, stripped_yield=0.09, **brady, **b)


# ---------------------------------------------------------------- families
def futures(grid):
    bonds = [(0.06, d(2034, 2, 15)), (0.0425, d(2031, 11, 30)), (0.0125, d(2027, 8, 31)), (0.08, d(2049, 5, 15)),
             (0.03, d(2027, 3, 31)), (0.035, d(2030, 1, 15)), (0.05, d(2040, 11, 15)), (0.045, d(2035, 7, 4)),
             (0.0275, d(2029, 4, 30)), (0.04, d(2026, 12, 20))]
    for contract in range(0, 73):
        for coupon, maturity in bonds:
            for delivery in (d(2025, 3, 10), d(2025, 12, 1)):
                case = f"{contract}:{coupon}:{maturity}:{delivery}"
                grid.run("KVLbfact", case, coupon=coupon, maturity=maturity, delivery=delivery, contract=contract)
                grid.run("KVLbfact1", case, coupon=coupon, maturity=maturity, delivery=delivery, contract=contract,
                         check_eligibility=1)


def frn(grid):
    handles = [0]
    for base, extras in ((0, dict(frequency=4, day_count=1)), (0, dict(frequency=2, day_count=3, end_of_month=1)),
                         (0, dict(frequency=12, day_count=5, year_length=365.25))):
        error, handle = call("KVLfrntype", base=base, **extras)[:2]
        if error == 0:
            handles.append(handle)
    notes = {
        "plain": dict(rates=[0.05], rate_dates=[d(2025, 12, 15)], maturity=d(2030, 6, 15), settlement=d(2026, 3, 1)),
        "resets": dict(rates=[0.04, 0.045, 0.05], rate_dates=[d(2025, 9, 15), d(2025, 12, 15), d(2026, 3, 15)],
                       maturity=d(2029, 3, 15), settlement=d(2026, 1, 20), coupon_dates=[d(2026, 3, 15)],
                       frequency=4, day_count=0, redemption=100.5, income_tax=0.2, gain_tax=0.1, holding=12),
        "paydays": dict(rates=[0.03], rate_dates=[d(2025, 1, 31)], maturity=d(2028, 1, 31), settlement=d(2025, 3, 5),
                        previous_coupon=d(2025, 1, 31), frequency=2, pay_on_business_day=1, adjustment_code=1,
                        holidays=[d(2025, 7, 31)]),
    }
    margins = dict(current_coupon=0.051, price=99.2, index_rate=0.048, quoted_margin=0.004, stub_rate=0.047)
    for handle in handles:
        for label, note in notes.items():
            case = f"{handle}:{label}"
            for name in ("frnsm", "frndm"):
                shape = {k: note[k] for k in ("maturity", "settlement", "day_count", "frequency") if k in note}
                grid.run(("KVLt" if handle else "KVL") + name, case, type=handle, **margins, **shape)
            for name in ("frnai", "frncamt"):
                grid.run(("KVLt" if handle else "KVL") + name, case, type=handle, **note)
            for name in ("frnpr", "frndur", "frnconv", "frnvalbp", "frnval32"):
                grid.run(("KVLt" if handle else "KVL") + name, case, type=handle, **note, **{"yield": 0.052})
            grid.run(("KVLt" if handle else "KVL") + "frndur", case + ":macaulay", type=handle, macaulay=1,
                     **note, **{"yield": 0.052})
            grid.run(("KVLt" if handle else "KVL") + "frnyld", case, type=handle, price=99.4, **note)
            grid.run(("KVLt" if handle else "KVL") + "frncshflw", case, type=handle, price=99.4, **note)
    for handle in handles[1:]:
        grid.run("KVLfreefrntype", str(handle), handle=handle)


def perpetuals(grid, codes):
    bonds = {
        "plain": dict(coupons=[0.06], reference_date=d(2020, 6, 15), settlement=d(2025, 6, 20)),
        "steps": dict(coupons=[0.04, 0.06], step_dates=[d(2027, 6, 15)], reference_date=d(2020, 6, 15),
                      settlement=d(2025, 9, 1), frequency=4, withholding_tax=0.15),
        "exdiv": dict(coupons=[0.055], reference_date=d(2019, 3, 7), settlement=d(2025, 3, 3), ex_coupon_rule=1,
                      holidays=[d(2025, 3, 5)], dated_date=d(2019, 1, 10)),
    }
    for code in codes:
        for label, b in bonds.items():
            case = f"{code}:{label}"
            b = dict(b, type=code)
            s = b["settlement"]
            grid.run("KVLpbcpn", case, reference_date=b["reference_date"], settlement=s, k=2, type=code,
                     frequency=b.get("frequency"), step_date=(b.get("step_dates") or [None])[0])
            for name in ("KVLpbpr", "KVLpbdur", "KVLpbconv", "KVLpbvalbp", "KVLpbval32"):
                grid.run(name, case, **b, **{"yield": 0.058})
            grid.run("KVLpbyld", case, price=103.0, **b)
            grid.run("KVLpbai", case, **b)
            grid.run("KVLpbcamt", case, **b)
            grid.run("KVLpbcarry", case, end_date=s + 120, price=103.0, repo_rate=0.03, **b)
            grid.run("KVLpbfwd", case, forward_date=s + 120, price=103.0, repo_rate=0.03, reinvestment=0.02, **b)
            grid.run("KVLpbirepo", case, price=103.0, forward_price=102.5, forward_date=s + 120, mode=1, **b)


def inflation(grid):
    gilts = {
        "2016": dict(real_coupon=0.025, next_coupon_amount=2.8952, base_index=81.6, latest_index=188.9,
                     maturity=d(2016, 7, 26), settlement=d(2005, 3, 15), inflation=0.03),
        "exdiv": dict(real_coupon=0.0125, next_coupon_amount=1.65, base_index=193.725, latest_index=230.1,
                      maturity=d(2027, 11, 22), settlement=d(2011, 11, 15), inflation=0.025,
                      pay_on_business_day=1),
    }
    for label, g in gilts.items():
        for name in ("KVLilgpr", "KVLilgpr2"):
            grid.run(name, label, **g, extra_date=3, **{"yield": 0.011})
        for name in ("KVLilgyld", "KVLilgyld2"):
            grid.run(name, label, **g, extra_date=3, price=118.0)
        grid.run("KVLilgai", label, **g)
        for name in ("KVLilgcshflw", "KVLilgcshflw2"):
            redemption = ctypes.c_double(-1.0)
            grid.run(name, label, redemption_out=ctypes.byref(redemption), extra_date=3, **g)
            grid.lines[-1] += " " + redemption.value.hex()
    linkers = {
        "tips": dict(coupon=2.0, base_index=[198.47742], settlement_index=[231.28165], maturity=d(2016, 1, 15),
                     settlement=d(2013, 1, 2), inflation=0.03),
        "fixed_next": dict(coupon=0.625, base_index=[220.0, 221.0], settlement_index=[300.0, 301.5],
                           maturity=d(2032, 7, 15), settlement=d(2025, 4, 9), next_coupon_amount=0.45, option_b=1,
                           inflation=0.025),
    }
    for family in ("tips", "oati"):
        for label, b in linkers.items():
            for name in ("pr", "dur", "conv"):
                grid.run(f"KVL{family}{name}", label, **b, **{"yield": 0.012})
            grid.run(f"KVL{family}yld", label, price=101.0, **b)
            grid.run(f"KVL{family}ai", label, **b)
            grid.run(f"KVL{family}cshflw", label, **b)


def pik(grid):
    bonds = {
        "plain": dict(cash_rates=[0.08], pik_rates=[0.04], dates=[d(2030, 6, 15)], settlement=d(2025, 3, 20)),
        "steps": dict(cash_rates=[0.06, 0.07, 0.08], pik_rates=[0.05, 0.03, 0.0],
                      dates=[d(2026, 6, 15), d(2028, 6, 15), d(2031, 6, 15)], settlement=d(2025, 7, 1),
                      redemption=101.0, call_date=d(2029, 6, 15)),
        "odd": dict(cash_rates=[0.09], pik_rates=[0.02], dates=[d(2029, 12, 31)], settlement=d(2025, 2, 3),
                    dated_date=d(2024, 11, 18), first_coupon=d(2025, 6, 30), frequency=4, pay_on_business_day=1),
    }
    for code in (0, 3, 40, 500, 510, 530, 540, 999):
        for label, b in bonds.items():
            case = f"{code}:{label}"
            b = dict(b, type=code)
            for name in ("KVLpikpr", "KVLpikdur", "KVLpikvalbp", "KVLpikval32"):
                grid.run(name, case, **b, **{"yield": 0.095})
            grid.run("KVLpikyld", case, price=96.0, **b)
            grid.run("KVLpikai", case, **b)
            grid.run("KVLpikcshflw", case, **b)


def batch(grid, codes):
    rows = [(c, 0.02 + 0.005 * (k % 9), d(2027 + k % 20, 1 + k % 12, 15), d(2025, 1 + k % 12, 3 + k % 20))
            for k, c in enumerate(codes)]
    n = len(rows)
    outputs = [(ctypes.c_double * n)() for _ in range(7)]
    row_errors, failed = (ctypes.c_int32 * n)(), (ctypes.c_int32 * n)()
    kinds = [k % 2 for k in range(n)]
    market = [0.045 if k == 0 else 98.0 for k in kinds]
    error, result = grid.run("KVLbbatch", "rows", n=n, types=[r[0] for r in rows], coupons=[r[1] for r in rows],
                             maturities=[r[2] for r in rows], settlements=[r[3] for r in rows], market=market,
                             market_kinds=kinds, measures=127, threads=2, prices=outputs[0], yields=outputs[1],
                             accrued=outputs[2], modified_durations=outputs[3], macaulay_durations=outputs[4],
                             convexities=outputs[5], pvbps=outputs[6], row_errors=row_errors,
                             failed_measures=failed)
    for k in range(n):
        grid.lines.append(f"KVLbbatch row{k} {row_errors[k]} {failed[k]} " +
                          " ".join(out[k].hex() for out in outputs))


def catalogue(grid):
    codes_p = PI()
    count = LIB.KVLbtable(ctypes.byref(codes_p), None, None, None, None, None)
    codes = [codes_p[k] for k in range(count)]
    for code in codes + [-1, 5, 999, 1000, 1100]:
        freq, eom = ctypes.c_int32(-1), ctypes.c_int32(-1)
        dc, nm, err = ctypes.c_char_p(), ctypes.c_char_p(), ctypes.c_int32(-777)
        LIB.KVLbtype(code, ctypes.byref(freq), ctypes.byref(dc), ctypes.byref(eom), ctypes.byref(nm),
                     ctypes.byref(err))
        grid.lines.append(f"KVLbtype {code} {err.value} {freq.value} {eom.value} {dc.value!r} {nm.value!r}")
    # A custom Gilt-like type: actual/actual, semi-annual, seven business days ex-dividend.
    grid.run("KVLbcustom", "1000", code=1000, accrual_basis=0, exdiv_basis=0, eom=0, frequency=2, simple_final=1,
             yield_method=0, mm_basis=1, exdiv_days=7, yield_frequency=2)
    return codes + [1000]


def absent_arguments(grid):
    """Every export with nothing given: the documented refusals."""
    for name in PROTOTYPES:
        if name.endswith("_free") or name in ("KVLbond_initMT", "KVLbondver", "KVLbtable", "KVLbtype", "KVLbcustom",
                                              "KVLfrntype", "KVLfreefrntype"):
            continue
        grid.run(name, "absent")


def build():
    grid = Grid()
    codes = catalogue(grid)
    straight_bonds(grid, codes)
    bond_measures(grid, codes)
    odd_descriptions(grid)
    futures(grid)
    frn(grid)
    perpetuals(grid, [0, 3, 40, 60, 80, 200, 260, 280, 370, 500, 510, 1000])
    inflation(grid)
    pik(grid)
    batch(grid, codes)
    absent_arguments(grid)
    return grid.lines


def main(argv):
    lines = build()
    if "--write" in argv:
        with gzip.open(RECORD, "wt", encoding="utf-8") as f:
            f.write("\n".join(lines) + "\n")
        print(f"recorded {len(lines)} results in {RECORD}")
        return 0
    with gzip.open(RECORD, "rt", encoding="utf-8") as f:
        recorded = f.read().splitlines()
    changed = [(k, old, new) for k, (old, new) in enumerate(zip(recorded, lines)) if old != new]
    if len(recorded) != len(lines):
        print(f"{len(lines)} results now, {len(recorded)} recorded")
    for k, old, new in changed[:40]:
        print(f"line {k + 1}:\n  recorded {old}\n  now      {new}")
    if changed or len(recorded) != len(lines):
        print(f"{len(changed)} of {len(lines)} results differ from the record")
        return 1
    print(f"all {len(lines)} results as recorded")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
