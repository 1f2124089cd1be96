"""The families' objects against the C exports called directly, and the
relations between their measures."""

import ctypes
import datetime as dt
import unittest
import unittest.mock

import k_bond
from k_bond import _library, futures, frn
from k_bond.dates import to_serial

D, I = ctypes.c_double, ctypes.c_int32
SETTLE = dt.date(2025, 1, 15)


def c_call(name, *args):
    """Calls an export with hand-written positional arguments; returns
    (result, error code)."""
    error = I(0)
    fn = k_bond._family.export(name)
    return fn(*args, ctypes.byref(error)), error.value


def ref(ctype, value):
    return ctypes.byref(ctype(value))


def doubles(*values):
    return (D * len(values))(*values)


def ints(*values):
    return (I * len(values))(*values)


class Codes(unittest.TestCase):
    def assertCode(self, code, fn, *args, **kwargs):
        with self.assertRaises(k_bond.KBondError) as caught:
            fn(*args, **kwargs)
        self.assertEqual(caught.exception.code, code, str(caught.exception))


# 4.5 % Treasury bond maturing 15 February 2045 against the March 2025 contract.
BOND = dict(coupon=0.045, maturity=dt.date(2045, 2, 15), bond_type="treasury")
DELIVERY = dt.date(2025, 3, 31)


class Futures(Codes):
    def future(self, **kw):
        return futures.Future(contract=0, delivery=DELIVERY, futures_price=112.5, **BOND, **kw)

    def test_cbot_conversion_factor_formula(self):
        # CME's published formula: 19 years 11 months rounds down to 19 years
        # 9 months, n = 19, z = 9, v = 3.
        c, n, v = 0.045, 19, 3
        a, b = 1 / 1.03 ** (v / 6), c / 2 * (6 - v) / 6
        cc = 1 / 1.03 ** (2 * n + 1)
        expected = round(a * (c / 2 + cc + c / 0.06 * (1 - cc)) - b, 4)
        self.assertAlmostEqual(self.future().conversion_factor(), expected, places=10)
        # The contract's own notional through the extended export: the same.
        self.assertEqual(futures.conversion_factor(coupon=c, maturity=BOND["maturity"],
                                                   delivery=DELIVERY, notional=0.06),
                         self.future().conversion_factor())

    def test_forward_against_the_export_and_the_carry_relations(self):
        f = self.future()
        cf = f.conversion_factor()
        maturity = ints(to_serial(BOND["maturity"]))
        raw, code = c_call("KVLbfwd", doubles(0.045), 1, maturity, 1, to_serial(SETTLE),
                           to_serial(DELIVERY), D(98.0), D(0.04), None, None, ref(I, 0),
                           None, 0, None, None, None, 0, None, 0, None, None, None,
                           None, None, None)
        forward = f.forward(98.0, SETTLE, 0.04)
        self.assertEqual((code, forward), (0, raw))
        self.assertAlmostEqual(f.carry(98.0, SETTLE, 0.04), 98.0 - forward, places=9)
        self.assertAlmostEqual(
            futures.Future(conversion_factor=1.0, contract=0, delivery=DELIVERY,
                           **BOND).implied_price(98.0, SETTLE, 0.04), forward, places=9)
        self.assertAlmostEqual(f.net_basis(98.0, SETTLE, 0.04), forward - 112.5 * cf, places=9)
        implied = f.implied_price(98.0, SETTLE, 0.04)
        self.assertAlmostEqual(f.implied_repo(98.0, SETTLE, futures_price=implied), 0.04,
                               places=5)

    def test_financing_and_calendar_options_reach_the_library(self):
        def carry(settlement=SETTLE, **kw):
            return futures.carry(**BOND, settlement=settlement, end_date=DELIVERY, price=98.0,
                                 repo=0.04, **kw)
        plain = carry()
        self.assertEqual(carry(date_rule="roll"), plain)  # both dates are business days
        # The 15 February coupon (2.25) earns 44 days of repo interest when
        # reinvested; financing without compounding at it costs less.
        self.assertAlmostEqual(carry(reinvest=True) - plain, 2.25 * 0.04 * 44 / 360, places=9)
        self.assertGreater(carry(financing="whole_period"), plain)
        self.assertCode(160, carry, settlement=dt.date(2025, 1, 18), date_rule="business_days")
        self.assertCode(460, carry, date_rule=3)
        self.assertCode(900, futures.Future(contract=99, delivery=DELIVERY,
                                            **BOND).conversion_factor)
        self.assertCode(460, futures.Future, contract=0, delivery=DELIVERY, **BOND,
                        financing="monthly")


NOTE = dict(rates=[0.05], rate_dates=[dt.date(2024, 12, 31)], maturity=dt.date(2028, 6, 30))


class FloatingRateNotes(Codes):
    def test_simple_margin_formula(self):
        # Default type: semi-annual actual/360. Next coupon 30 June 2025 is
        # 166 days away, maturity 1262 days away.
        t1, life = 166 / 360, 1262 / 360
        expected = 0.005 + (t1 * (0.05 - 0.045 - 0.005) + (1 - 99.5 / 100)) / life
        margin = frn.simple_margin(maturity=dt.date(2028, 6, 30), settlement=SETTLE,
                                   current_coupon=0.05, price=99.5, index_rate=0.045,
                                   quoted_margin=0.005)
        self.assertAlmostEqual(margin, expected, places=12)

    def test_discount_margin_at_par_is_the_quoted_margin(self):
        note = frn.FloatingRateNote(maturity=dt.date(2028, 6, 30))
        terms = dict(current_coupon=0.05, stub_rate=0.045, index_rate=0.045,
                     quoted_margin=0.005)
        on_coupon = dt.date(2024, 12, 30)
        self.assertAlmostEqual(note.discount_margin(100.0, on_coupon, **terms), 0.005, places=9)
        self.assertGreater(note.discount_margin(99.0, on_coupon, **terms), 0.005)

    def test_price_yield_accrued_and_risk(self):
        note = frn.FloatingRateNote(**NOTE)
        clean = note.price(0.052, SETTLE)
        self.assertAlmostEqual(note.yield_(clean, SETTLE), 0.052, places=6)
        # The period began 30 December 2024: 16 days at 5 % on actual/360.
        self.assertAlmostEqual(note.accrued(SETTLE), 5.0 * 16 / 360, places=9)
        self.assertAlmostEqual(note.coupon_amount(SETTLE), 5.0 * 182 / 360, places=9)
        h = 1e-4
        slope = (note.price(0.052 - h, SETTLE) - note.price(0.052 + h, SETTLE)) / (2 * h)
        self.assertAlmostEqual(note.pvbp(0.052, SETTLE), slope / 1e4, places=7)
        self.assertAlmostEqual(note.value_of_32nd(0.052, SETTLE), slope / 1e4 * 100 / 32,
                               places=7)
        dirty = clean + note.accrued(SETTLE)
        self.assertAlmostEqual(note.duration(0.052, SETTLE), slope / dirty, places=5)
        self.assertAlmostEqual(note.duration(0.052, SETTLE, macaulay=True),
                               slope / dirty * 1.026, places=5)
        rows = note.cashflows(SETTLE)
        self.assertEqual(rows[0].date, dt.date(2025, 6, 30))
        self.assertEqual(rows[-1].date, dt.date(2028, 6, 30))
        self.assertGreater(rows[-1].amount, 100.0)
        frame = note.cashflows(SETTLE, as_frame=True)
        self.assertEqual(list(frame.columns), ["date", "amount"])
        self.assertEqual(len(frame), len(rows))

    def test_types_against_the_typed_exports(self):
        with frn.FrnType() as default, frn.FrnType(frequency=4, day_count="act/365") as qtr:
            plain = frn.FloatingRateNote(**NOTE).price(0.052, SETTLE)
            self.assertEqual(frn.FloatingRateNote(**NOTE, frn_type=default).price(0.052, SETTLE),
                             plain)
            raw, code = c_call("KVLtfrnpr", qtr.handle, doubles(0.05),
                               ints(to_serial(NOTE["rate_dates"][0])), 1,
                               to_serial(NOTE["maturity"]), to_serial(SETTLE), D(0.052),
                               None, None, 0, None, None, None, None, None, None, None, None,
                               None, None, 0)
            self.assertEqual(code, 0)
            self.assertEqual(frn.FloatingRateNote(**NOTE, frn_type=qtr).price(0.052, SETTLE), raw)
            self.assertNotEqual(raw, plain)
        self.assertTrue(qtr.closed)
        self.assertCode(901, frn.FloatingRateNote(**NOTE, frn_type=qtr).price, 0.05, SETTLE)
        self.assertCode(301, frn.FrnType, frequency=5)
        self.assertCode(300, frn.FrnType, day_count=9)
        self.assertCode(350, frn.FloatingRateNote(**NOTE).yield_, 0.0, SETTLE)


CONSOL = dict(coupon=0.04, reference_date=dt.date(2024, 12, 15), bond_type="gilt")


class Perpetuals(Codes):
    def test_price_against_the_export_and_the_perpetuity_formula(self):
        consol = k_bond.Perpetual(**CONSOL)
        raw, code = c_call("KVLpbpr", doubles(0.04), 1, to_serial(dt.date(2024, 12, 15)),
                           to_serial(SETTLE), D(0.045), None, 0, ref(I, 40), None, None, None,
                           None, None, 0, None)
        self.assertEqual((code, consol.price(0.045, SETTLE)), (0, raw))
        simple = k_bond.Perpetual(**CONSOL, yield_method="simple", withholding_tax=0.2)
        self.assertEqual(simple.price(0.05, SETTLE), 100 * 0.04 * 0.8 / 0.05)
        simple.coupon = 0.05  # the cached description follows the attribute
        self.assertAlmostEqual(simple.price(0.05, SETTLE), 80.0, places=9)
        self.assertAlmostEqual(consol.yield_(raw, SETTLE), 0.045, places=7)
        self.assertEqual((consol.coupon_date(SETTLE), consol.coupon_date(SETTLE, 1)),
                         (dt.date(2024, 12, 15), dt.date(2025, 6, 15)))
        self.assertEqual(consol.coupon_amount(SETTLE), 2.0)

    def test_risk_and_carry_relations(self):
        consol = k_bond.Perpetual(**CONSOL)
        dirty = consol.price(0.045, SETTLE) + consol.accrued(SETTLE)
        duration = consol.duration(0.045, SETTLE)
        self.assertAlmostEqual(consol.duration(0.045, SETTLE, macaulay=True),
                               duration * 1.0225, places=9)
        self.assertAlmostEqual(consol.pvbp(0.045, SETTLE), duration * dirty / 1e4, places=9)
        self.assertAlmostEqual(consol.value_of_32nd(0.045, SETTLE),
                               1 / (32 * consol.pvbp(0.045, SETTLE)), places=9)
        self.assertGreater(consol.convexity(0.045, SETTLE), duration ** 2)
        end = dt.date(2025, 3, 14)
        forward = consol.forward(88.0, SETTLE, 0.04, end)
        self.assertAlmostEqual(consol.carry(88.0, SETTLE, 0.04, end), 88.0 - forward, places=9)
        self.assertAlmostEqual(consol.implied_repo(88.0, SETTLE, forward, end), 0.04, places=6)

    def test_errors(self):
        stepped = dict(CONSOL, coupon=[0.03, 0.05])
        self.assertCode(1, k_bond.Perpetual(**stepped, step_dates=[dt.date(2030, 12, 15)])
                        .price, 0.05, SETTLE)
        self.assertCode(460, k_bond.Perpetual(**CONSOL, yield_method="braess").price, 0.05,
                        SETTLE)
        self.assertCode(460, k_bond.Perpetual, **CONSOL, yield_method="annuity")
        self.assertCode(160, k_bond.Perpetual(**CONSOL).carry, 88.0, SETTLE, 0.04, SETTLE)


RATES = dict(guarantee_rate=0.05, collateral_yield=0.045)


class BradyBonds(Codes):
    def test_without_guarantee_or_collateral_it_is_a_straight_bond(self):
        terms = dict(coupon=0.065, maturity=dt.date(2030, 3, 31), bond_type="eurobond")
        brady = k_bond.BradyBond(**terms, guaranteed=0, collateralised=False)
        self.assertAlmostEqual(brady.price(0.08, SETTLE, **RATES),
                               k_bond.price(yield_=0.08, settlement=SETTLE, **terms), places=9)

    def test_against_the_export(self):
        brady = k_bond.BradyBond(coupon=0.065, maturity=dt.date(2030, 3, 31), frequency=2)
        raw, code = c_call("KVLbradypr", doubles(0.065), 1, ints(to_serial(brady.maturity)), 1,
                           to_serial(SETTLE), D(0.05), D(0.045), D(0.10), None, ref(I, 1),
                           None, None, None, ref(I, 2), 1, None, None, None, None, None, 0,
                           None, None, 0, None, 0, None, None, None)
        self.assertEqual((code, brady.price(0.10, SETTLE, **RATES)), (0, raw))
        self.assertAlmostEqual(brady.yield_(raw, SETTLE, **RATES), 0.10, places=9)
        self.assertGreater(brady.duration(0.10, SETTLE, **RATES), 0.0)
        self.assertCode(21, k_bond.BradyBond(coupon=0.065, maturity=brady.maturity,
                                             guaranteed=100).yield_, 100.0, SETTLE, **RATES)
        self.assertCode(460, k_bond.BradyBond(coupon=0.065, maturity=brady.maturity,
                                              guaranteed=-1).price, 0.1, SETTLE, **RATES)
        self.assertCode(250, brady.price, 0.1, SETTLE, guarantee_rate=-0.05,
                        collateral_yield=0.045)


LINKER = dict(coupon=0.0125, maturity=dt.date(2032, 11, 22), base_index=135.6)
FIXINGS = dict(latest_index=390.1, next_coupon_amount=1.79)


class InflationLinked(Codes):
    def test_index_linked_gilt_against_the_export(self):
        gilt = k_bond.IndexLinkedGilt(**LINKER)
        raw, code = c_call("KVLilgpr", D(0.0125), D(1.79), D(135.6), D(390.1),
                           to_serial(LINKER["maturity"]), to_serial(SETTLE), D(0.005), None,
                           None, None, None, None, None, 0, None, None, 0)
        self.assertEqual((code, gilt.price(0.005, SETTLE, **FIXINGS)), (0, raw))
        self.assertAlmostEqual(gilt.yield_(raw, SETTLE, **FIXINGS), 0.005, places=6)
        # The latest index is November's unless told otherwise.
        self.assertEqual(gilt.price(0.005, SETTLE, latest_index_date=dt.date(2024, 11, 1),
                                    **FIXINGS), raw)
        self.assertNotEqual(gilt.price(0.005, SETTLE, latest_index_date=dt.date(2024, 9, 1),
                                       **FIXINGS), raw)
        # 54 of the 181 days from 22 November to 22 May.
        self.assertEqual(gilt.accrued(SETTLE, next_coupon_amount=1.79),
                         round(1.79 * 54 / 181, 6))
        rows = gilt.cashflows(SETTLE, **FIXINGS)
        self.assertEqual(rows[0], (dt.date(2025, 5, 22), 1.79))
        self.assertEqual(rows[-1].date, LINKER["maturity"])
        self.assertGreater(rows[-1].amount, 100 * 390.1 / 135.6)

    def test_tips_against_the_export_in_percent(self):
        tips = k_bond.Tips(coupon=0.01875, maturity=dt.date(2034, 7, 15), base_index=310.2)
        raw, code = c_call("KVLtipspr", D(1.875), doubles(310.2), 1, doubles(317.4), 1,
                           to_serial(tips.maturity), to_serial(SETTLE), D(0.02), None, None, 0,
                           None, None, None, None, None, None, 0, None, 0)
        self.assertEqual((code, tips.price(0.02, SETTLE, settlement_index=317.4)), (0, raw))
        ratio = 317.4 / 310.2  # index ratios are not rounded
        self.assertAlmostEqual(tips.price(0.02, SETTLE, settlement_index=317.4, adjusted=True),
                               raw * ratio, places=2)
        self.assertAlmostEqual(tips.yield_(raw, SETTLE, settlement_index=317.4), 0.02, places=4)
        # 30 of the 181 days from 15 January to 15 July.
        self.assertAlmostEqual(tips.accrued(dt.date(2025, 2, 14), settlement_index=317.4),
                               30 / 181 * 1.875 / 2 * ratio, places=6)
        rows = tips.cashflows(SETTLE, settlement_index=317.4, as_frame=True)
        self.assertEqual(len(rows), 19)
        self.assertEqual(rows["date"].iloc[-1], tips.maturity)
        self.assertGreater(tips.duration(0.02, SETTLE, settlement_index=317.4), 8.0)
        self.assertCode(70, k_bond.Tips(coupon=0.01875, maturity=tips.maturity,
                                        base_index=[1, 2, 3]).price, 0.02, SETTLE,
                        settlement_index=317.4)

    def test_oati_interpolates_month_pairs(self):
        oati = k_bond.Oati(coupon=0.001, maturity=dt.date(2032, 3, 1), base_index=[100.5, 100.9])
        index = [118.2, 118.6]
        # The base falls on the 1st (I0); settlement on 15 January is 14/31
        # of the way to February's value. The ratio is not rounded; the
        # accrued interest is, to six decimals.
        ratio = (118.2 + 14 / 31 * 0.4) / 100.5
        self.assertEqual(oati.accrued(SETTLE, settlement_index=index),
                         round(320 / 365 * 0.1 * ratio, 6))
        clean = oati.price(0.012, SETTLE, settlement_index=index)
        self.assertAlmostEqual(oati.yield_(clean, SETTLE, settlement_index=index), 0.012,
                               places=4)
        duration = oati.duration(0.012, SETTLE, settlement_index=index)
        self.assertTrue(6.5 < duration < 7.2)  # a near-zero coupon: close to its life / 1.012
        self.assertGreater(oati.convexity(0.012, SETTLE, settlement_index=index), duration ** 2)
        rows = oati.cashflows(SETTLE, settlement_index=index)
        self.assertEqual([r.date.month for r in rows], [3] * len(rows))


PIK = dict(cash_rate=0.06, pik_rate=0.04, maturity=dt.date(2029, 6, 15))


class PikBonds(Codes):
    def test_against_the_export_and_its_cash_flows(self):
        generic = k_bond.PikBond(**PIK, bond_type=500)
        raw, code = c_call("KVLpikpr", doubles(0.06), 1, doubles(0.04), 1,
                           ints(to_serial(PIK["maturity"])), 1, to_serial(SETTLE), D(0.09),
                           None, None, ref(I, 500), None, None, None, None, None, None, 0)
        self.assertEqual((code, generic.price(0.09, SETTLE)), (0, raw))
        self.assertAlmostEqual(generic.yield_(raw, SETTLE), 0.09, places=7)
        # Discounting the rows and taking off the accrued gives the price.
        frame = generic.cashflows(SETTLE, as_frame=True)
        value = ((frame.coupon + frame.principal) / 1.045 ** frame.periods).sum()
        self.assertAlmostEqual(value - generic.accrued(SETTLE), raw, places=9)
        # Nine semi-annual in-kind coupons of 2 % grow the principal.
        self.assertAlmostEqual(frame.principal.iloc[-1], 100 * 1.02 ** 9, places=9)
        self.assertEqual(frame.date.iloc[0], dt.date(2025, 6, 15))

    def test_accrued_and_risk(self):
        corporate = k_bond.PikBond(**PIK, bond_type="corporate")
        self.assertAlmostEqual(corporate.accrued(SETTLE), 3.0 * 30 / 180, places=12)
        dirty = corporate.price(0.09, SETTLE) + corporate.accrued(SETTLE)
        duration = corporate.duration(0.09, SETTLE)
        self.assertAlmostEqual(corporate.duration(0.09, SETTLE, macaulay=True),
                               duration * 1.045, places=9)
        # The price is truncated to 3 decimals, the derivative is not.
        self.assertAlmostEqual(corporate.pvbp(0.09, SETTLE), duration * dirty / 1e4, places=5)
        self.assertAlmostEqual(corporate.value_of_32nd(0.09, SETTLE),
                               1 / (32 * corporate.pvbp(0.09, SETTLE)), places=9)
        self.assertCode(460, corporate.yield_, 0.0, SETTLE)
        self.assertCode(310, corporate.pvbp, 0.09, SETTLE, scale=0.0)
        self.assertCode(1, k_bond.PikBond(**PIK, bond_type="gilt").price, 0.09, SETTLE)


class CashFlowTables(Codes):
    def test_every_table_is_released_by_its_family_export(self):
        calls = []
        export = k_bond._family.export

        def recording(name):
            calls.append(name)
            return export(name)

        bad = dict(PIK, bond_type="gilt")
        with unittest.mock.patch.object(k_bond._family, "export", recording):
            k_bond.PikBond(**PIK).cashflows(SETTLE)
            self.assertCode(1, k_bond.PikBond(**bad).cashflows, SETTLE)
            k_bond.FloatingRateNote(**NOTE).cashflows(SETTLE)
            k_bond.Oati(coupon=0.001, maturity=dt.date(2032, 3, 1),
                        base_index=100.5).cashflows(SETTLE, settlement_index=118.3)
            k_bond.IndexLinkedGilt(**LINKER).cashflows(SETTLE, **FIXINGS)
        self.assertEqual([c for c in calls if c.endswith("_free")],
                         ["KVLpikcshflw_free", "KVLpikcshflw_free", "KVLfrncshflw_free",
                          "KVLoaticshflw_free", "KVLilgcshflw_free"])

    def test_arguments_refused_before_the_library(self):
        with unittest.mock.patch.object(k_bond._family, "export", side_effect=AssertionError):
            for code, call in (
                    (1, lambda: k_bond.Perpetual(**dict(CONSOL, coupon="4%")).price(0.05, SETTLE)),
                    (60, lambda: k_bond.FloatingRateNote(**dict(NOTE, rates=[0.05, 0.06]))
                     .accrued(SETTLE)),
                    (150, lambda: k_bond.PikBond(**PIK).price(0.09, "15/01/2025")),
                    (460, lambda: k_bond.Perpetual(**dict(CONSOL, bond_type="consol"))
                     .price(0.05, SETTLE))):
                with self.assertRaises(k_bond.KBondArgumentError) as caught:
                    call()
                self.assertEqual(caught.exception.code, code)


if __name__ == "__main__":
    unittest.main()
