"""Vectorised helpers give exactly the scalar results, row by row."""

import datetime as dt
import math
import unittest

import k_bond
from tests.support import TREASURY, has

try:
    import numpy as np
except ImportError:
    np = None

YIELDS = [0.03, 0.045, 0.06, 0.0725]
MATURITIES = [dt.date(2027, 2, 15), dt.date(2030, 8, 31), dt.date(2034, 11, 15),
              dt.date(2054, 5, 15)]
COUPONS = [0.0175, 0.04, 0.0425, 0.05]


class Vectorised(unittest.TestCase):
    def test_prices_over_yields(self):
        got = k_bond.prices(yield_=YIELDS, **TREASURY)
        self.assertEqual(got, [k_bond.price(yield_=y, **TREASURY) for y in YIELDS])

    def test_prices_over_a_portfolio(self):
        bonds = dict(TREASURY, coupon=COUPONS, maturity=MATURITIES)
        got = k_bond.prices(yield_=YIELDS, **bonds)
        expected = [k_bond.price(yield_=y, **dict(TREASURY, coupon=c, maturity=m))
                    for y, c, m in zip(YIELDS, COUPONS, MATURITIES)]
        self.assertEqual(got, expected)

    def test_settlement_column_with_serials(self):
        settlements = [k_bond.to_serial(dt.date(2025, 1, 15)) + 30 * i for i in range(4)]
        got = k_bond.accrued_interest(**dict(TREASURY, settlement=settlements))
        expected = [k_bond.accrued(**dict(TREASURY, settlement=s)) for s in settlements]
        self.assertEqual(got, expected)

    def test_stepped_coupon_is_one_bond_not_a_column(self):
        steps = [dt.date(2026, 11, 15), dt.date(2034, 11, 15)]
        bond = dict(coupon=[0.03, 0.05], step_dates=steps, settlement=TREASURY["settlement"])
        self.assertEqual(k_bond.prices(yield_=YIELDS, **bond),
                         [k_bond.price(yield_=y, **bond) for y in YIELDS])

    def test_failing_rows(self):
        maturities = [dt.date(2030, 1, 15), dt.date(2020, 1, 15), dt.date(2031, 1, 15)]
        with self.assertRaises(k_bond.KBondLibraryError) as caught:
            k_bond.prices(yield_=0.04, **dict(TREASURY, maturity=maturities))
        self.assertEqual((caught.exception.code, caught.exception.row), (1, 1))
        got = k_bond.prices(yield_=0.04, errors="nan", **dict(TREASURY, maturity=maturities))
        self.assertTrue(math.isnan(got[1]))
        self.assertEqual(got[2], k_bond.price(yield_=0.04, **dict(TREASURY, maturity=maturities[2])))

    def test_columns_of_different_lengths(self):
        with self.assertRaises(k_bond.KBondArgumentError):
            k_bond.prices(yield_=YIELDS[:2], **dict(TREASURY, coupon=COUPONS))

    def test_empty_columns(self):
        self.assertEqual(k_bond.prices(yield_=[], **TREASURY), [])

    @unittest.skipUnless(has("KVLbyld"), "library built without the yield family")
    def test_yields_durations_and_convexities(self):
        clean = k_bond.prices(yield_=YIELDS, **TREASURY)
        self.assertEqual(k_bond.yields(price=clean, **TREASURY),
                         [k_bond.bond_yield(price=p, **TREASURY) for p in clean])
        self.assertEqual(k_bond.durations(yield_=YIELDS, macaulay=True, **TREASURY),
                         [k_bond.duration(yield_=y, macaulay=True, **TREASURY) for y in YIELDS])
        self.assertEqual(k_bond.convexities(yield_=YIELDS, **TREASURY),
                         [k_bond.convexity(yield_=y, **TREASURY) for y in YIELDS])

    @unittest.skipIf(np is None, "numpy not installed")
    def test_numpy_arrays_in_and_out(self):
        days = np.array(MATURITIES, dtype="datetime64[D]")
        got = k_bond.prices(yield_=np.array(YIELDS),
                            **dict(TREASURY, coupon=np.array(COUPONS), maturity=days))
        self.assertIsInstance(got, np.ndarray)
        expected = k_bond.prices(yield_=YIELDS, **dict(TREASURY, coupon=COUPONS,
                                                       maturity=MATURITIES))
        self.assertEqual(got.tolist(), expected)


if __name__ == "__main__":
    unittest.main()
