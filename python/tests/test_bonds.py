"""Straight-bond functions through the Python module, against values worked
by hand."""

import datetime as dt
import unittest

import k_bond
from tests.support import TREASURY, street_price


class ByHand(unittest.TestCase):
    def test_prices_and_accrued_interest(self):
        gilt = dict(coupon=0.04, maturity=dt.date(2030, 3, 7), settlement=dt.date(2025, 3, 3),
                    bond_type="gilt")
        cases = [
            # Next coupon 15 May 2025: 120 days away in a 181-day period that
            # began 15 November 2024 (61 days accrued); 20 coupons remain.
            (k_bond.price, dict(TREASURY, yield_=0.045),
             street_price(0.0425, 0.045, None, 20, 120, 181, 61), 6),
            (k_bond.accrued, TREASURY, 2.125 * 61 / 181, 12),
            # At the coupon rate on a coupon date: par, nothing accrued.
            (k_bond.price, dict(TREASURY, yield_=0.0425, settlement=dt.date(2025, 5, 15)), 100.0, 6),
            (k_bond.accrued, dict(TREASURY, settlement=dt.date(2025, 5, 15)), 0.0, 12),
            # Corporates accrue 30/360: 60 days of 180 from 15 November.
            (k_bond.accrued, dict(TREASURY, coupon=0.05, bond_type="corporate"), 2.5 * 60 / 180, 12),
            # Gilts go ex-dividend seven business days before the coupon: on
            # 3 March 2025 a 7 March coupon is 4 days away.
            (k_bond.accrued, gilt, -2.0 * 4 / 181, 9),
            # Annual periods anchored on 15 November: 61 of 365 days of 4.25.
            (k_bond.accrued, dict(TREASURY, frequency=1), 4.25 * 61 / 365, 12),
        ]
        for fn, kwargs, expected, places in cases:
            with self.subTest(fn=fn.__name__, kwargs=kwargs):
                self.assertAlmostEqual(fn(**kwargs), expected, places=places)

    def test_stepped_coupons_lie_between_the_flat_ones(self):
        steps = [dt.date(2026, 11, 15), dt.date(2034, 11, 15)]
        stepped = k_bond.price(yield_=0.04, coupon=[0.03, 0.05], step_dates=steps,
                               settlement=TREASURY["settlement"])
        low = k_bond.price(yield_=0.04, **dict(TREASURY, coupon=0.03))
        high = k_bond.price(yield_=0.04, **dict(TREASURY, coupon=0.05))
        self.assertTrue(low < stepped < high)

    def test_serial_origin(self):
        # 1 = 1 January 1900; 1900 is not a leap year, so 1 March 1900 = 60
        # and later dates sit one below spreadsheet serials (which count a
        # 29 February 1900): 1 January 2000 is 36525, not 36526.
        for date, serial in [(dt.date(1900, 1, 1), 1), (dt.date(1900, 3, 1), 60),
                             (dt.date(2000, 1, 1), 36525), (dt.datetime(2025, 1, 15, 13, 30), 45671)]:
            self.assertEqual(k_bond.to_serial(date), serial)
        self.assertEqual(k_bond.from_serial(45671), dt.date(2025, 1, 15))

    def test_yield_and_risk_against_the_price_function(self):
        clean = k_bond.price(yield_=0.045, **TREASURY)
        self.assertAlmostEqual(k_bond.bond_yield(price=clean, **TREASURY), 0.045, places=7)
        self.assertIs(k_bond.yield_, k_bond.bond_yield)
        h = 1e-5
        slope = (k_bond.price(yield_=0.045 - h, **TREASURY)
                 - k_bond.price(yield_=0.045 + h, **TREASURY)) / (2 * h)
        dirty = clean + k_bond.accrued(**TREASURY)
        modified = k_bond.duration(yield_=0.045, **TREASURY)
        self.assertAlmostEqual(modified, slope / dirty, places=3)
        self.assertAlmostEqual(k_bond.pvbp(yield_=0.045, **TREASURY), slope / 1e4, places=4)
        self.assertAlmostEqual(k_bond.duration(yield_=0.045, macaulay=True, **TREASURY),
                               modified * (1 + 0.045 / 2), places=10)
        self.assertGreater(k_bond.convexity(yield_=0.045, **TREASURY), 0.0)


if __name__ == "__main__":
    unittest.main()
