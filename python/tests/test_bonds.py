"""Straight-bond functions through the Python module."""

import datetime as dt
import unittest

import k_bond
from tests.support import TREASURY, has, street_price


class PriceAndAccrued(unittest.TestCase):
    def test_treasury_price_matches_the_street_formula(self):
        # Next coupon 15 May 2025: 120 days away in a 181-day period that
        # began 15 November 2024 (61 days accrued); 20 coupons remain.
        expected = street_price(0.0425, 0.045, None, 20, 120, 181, 61)
        self.assertAlmostEqual(k_bond.price(yield_=0.045, **TREASURY), expected, places=6)

    def test_treasury_accrued_is_actual_over_actual(self):
        # 2.125 per period x 61 / 181 days.
        self.assertAlmostEqual(k_bond.accrued(**TREASURY), 2.125 * 61 / 181, places=12)

    def test_price_at_the_coupon_rate_on_a_coupon_date_is_par(self):
        bond = dict(TREASURY, settlement=dt.date(2025, 5, 15))
        self.assertAlmostEqual(k_bond.price(yield_=0.0425, **bond), 100.0, places=6)
        self.assertEqual(k_bond.accrued(**bond), 0.0)

    def test_corporate_accrues_on_30_360(self):
        # 15 November to 15 January is 60 days on 30/360: 5 % / 2 x 60 / 180.
        bond = dict(TREASURY, coupon=0.05, bond_type="corporate")
        self.assertAlmostEqual(k_bond.accrued(**bond), 2.5 * 60 / 180, places=12)

    def test_gilt_ex_dividend_accrued_is_negative(self):
        # Gilts go ex-dividend seven business days before the coupon: on
        # 3 March 2025 a 7 March coupon is 4 days away, accrued -4/181 x 2.
        gilt = dict(coupon=0.04, maturity=dt.date(2030, 3, 7),
                    settlement=dt.date(2025, 3, 3), bond_type="gilt")
        self.assertAlmostEqual(k_bond.accrued(**gilt), -2.0 * 4 / 181, places=9)

    def test_frequency_override_changes_the_schedule(self):
        annual = k_bond.accrued(**TREASURY, frequency=1)
        # Annual periods anchored on 15 November: 61 of 365 days of 4.25.
        self.assertAlmostEqual(annual, 4.25 * 61 / 365, places=12)

    def test_stepped_coupons(self):
        # 3 % to 15 November 2026, then 5 %: the price lies between the two
        # flat-coupon prices.
        steps = [dt.date(2026, 11, 15), dt.date(2034, 11, 15)]
        stepped = k_bond.price(yield_=0.04, coupon=[0.03, 0.05], step_dates=steps,
                               settlement=TREASURY["settlement"])
        low = k_bond.price(yield_=0.04, **dict(TREASURY, coupon=0.03))
        high = k_bond.price(yield_=0.04, **dict(TREASURY, coupon=0.05))
        self.assertLess(low, stepped)
        self.assertLess(stepped, high)


class DatesAndSerials(unittest.TestCase):
    def test_serial_origin(self):
        # 1 = 1 January 1900; 1900 is not a leap year, so 1 March 1900 = 60
        # and later dates sit one below spreadsheet serials (which count a
        # 29 February 1900): 1 January 2000 is 36525, not 36526.
        self.assertEqual(k_bond.to_serial(dt.date(1900, 1, 1)), 1)
        self.assertEqual(k_bond.to_serial(dt.date(1900, 3, 1)), 60)
        self.assertEqual(k_bond.to_serial(dt.date(2000, 1, 1)), 36525)
        self.assertEqual(k_bond.from_serial(45671), dt.date(2025, 1, 15))
        self.assertEqual(k_bond.to_serial(dt.datetime(2025, 1, 15, 13, 30)), 45671)


@unittest.skipUnless(has("KVLbyld"), "library built without the yield family")
class YieldAndRisk(unittest.TestCase):
    def test_yield_inverts_price(self):
        clean = k_bond.price(yield_=0.045, **TREASURY)
        self.assertAlmostEqual(k_bond.bond_yield(price=clean, **TREASURY), 0.045, places=7)
        self.assertIs(k_bond.yield_, k_bond.bond_yield)

    def test_duration_and_pvbp_agree_with_a_finite_difference(self):
        h = 1e-5
        up = k_bond.price(yield_=0.045 + h, **TREASURY)
        down = k_bond.price(yield_=0.045 - h, **TREASURY)
        dirty = k_bond.price(yield_=0.045, **TREASURY) + k_bond.accrued(**TREASURY)
        slope = (down - up) / (2 * h)
        self.assertAlmostEqual(k_bond.duration(yield_=0.045, **TREASURY), slope / dirty, places=3)
        self.assertAlmostEqual(k_bond.pvbp(yield_=0.045, **TREASURY), slope / 1e4, places=4)
        macaulay = k_bond.duration(yield_=0.045, macaulay=True, **TREASURY)
        modified = k_bond.duration(yield_=0.045, **TREASURY)
        self.assertAlmostEqual(macaulay, modified * (1 + 0.045 / 2), places=10)
        self.assertGreater(k_bond.convexity(yield_=0.045, **TREASURY), 0.0)


if __name__ == "__main__":
    unittest.main()
