"""Vectorised helpers give exactly the scalar results, row by row."""

import datetime as dt
import math
import unittest

import k_bond
from tests.support import TREASURY

try:
    import numpy as np
except ImportError:
    np = None

YIELDS = [0.03, 0.045, 0.06, 0.0725]
MATURITIES = [dt.date(2027, 2, 15), dt.date(2030, 8, 31), dt.date(2034, 11, 15),
              dt.date(2054, 5, 15)]
COUPONS = [0.0175, 0.04, 0.0425, 0.05]
SETTLEMENTS = [k_bond.to_serial(dt.date(2025, 1, 15)) + 30 * i for i in range(4)]
STEPPED = dict(coupon=[0.03, 0.05], step_dates=[dt.date(2026, 11, 15), dt.date(2034, 11, 15)],
               settlement=TREASURY["settlement"])


class Vectorised(unittest.TestCase):
    def test_columns_give_the_scalar_results(self):
        clean = [k_bond.price(yield_=y, **TREASURY) for y in YIELDS]
        rows = [dict(TREASURY, coupon=c, maturity=m) for c, m in zip(COUPONS, MATURITIES)]
        cases = [  # (array function, its keywords, the scalar results)
            (k_bond.prices, dict(TREASURY, yield_=YIELDS), clean),
            (k_bond.prices, dict(TREASURY, yield_=YIELDS, coupon=COUPONS, maturity=MATURITIES),
             [k_bond.price(yield_=y, **r) for y, r in zip(YIELDS, rows)]),
            (k_bond.accrued_interest, dict(TREASURY, settlement=SETTLEMENTS),
             [k_bond.accrued(**dict(TREASURY, settlement=s)) for s in SETTLEMENTS]),
            # A stepped coupon is one bond, not a column.
            (k_bond.prices, dict(STEPPED, yield_=YIELDS),
             [k_bond.price(yield_=y, **STEPPED) for y in YIELDS]),
            (k_bond.yields, dict(TREASURY, price=clean),
             [k_bond.bond_yield(price=p, **TREASURY) for p in clean]),
            (k_bond.durations, dict(TREASURY, yield_=YIELDS, macaulay=True),
             [k_bond.duration(yield_=y, macaulay=True, **TREASURY) for y in YIELDS]),
            (k_bond.convexities, dict(TREASURY, yield_=YIELDS),
             [k_bond.convexity(yield_=y, **TREASURY) for y in YIELDS]),
            (k_bond.prices, dict(TREASURY, yield_=[]), []),
        ]
        for fn, kwargs, expected in cases:
            with self.subTest(fn=fn.__name__, kwargs=sorted(kwargs)):
                self.assertEqual(fn(**kwargs), expected)

    def test_failing_rows_and_mismatched_columns(self):
        maturities = [dt.date(2030, 1, 15), dt.date(2020, 1, 15), dt.date(2031, 1, 15)]
        with self.assertRaises(k_bond.KBondLibraryError) as caught:
            k_bond.prices(yield_=0.04, **dict(TREASURY, maturity=maturities))
        self.assertEqual((caught.exception.code, caught.exception.row), (1, 1))
        got = k_bond.prices(yield_=0.04, errors="nan", **dict(TREASURY, maturity=maturities))
        self.assertTrue(math.isnan(got[1]))
        self.assertEqual(got[2], k_bond.price(yield_=0.04, **dict(TREASURY, maturity=maturities[2])))
        with self.assertRaises(k_bond.KBondArgumentError):
            k_bond.prices(yield_=YIELDS[:2], **dict(TREASURY, coupon=COUPONS))

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
