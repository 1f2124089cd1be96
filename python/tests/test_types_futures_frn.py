"""FRN margins, price and yield through the module."""

import datetime as dt
import unittest

import k_bond


class FloatingRateNotes(unittest.TestCase):
    def test_simple_margin_formula(self):
        # Default type: semi-annual actual/360. Next coupon 30 June 2025 is
        # 166 days away, maturity 1262 days away.
        t1, life = 166 / 360, 1262 / 360
        expected = 0.005 + (t1 * (0.05 - 0.045 - 0.005) + (1 - 99.5 / 100)) / life
        margin = k_bond.frn.simple_margin(
            maturity=dt.date(2028, 6, 30), settlement=dt.date(2025, 1, 15),
            current_coupon=0.05, price=99.5, index_rate=0.045, quoted_margin=0.005)
        self.assertAlmostEqual(margin, expected, places=12)

    def test_discount_margin_at_par_is_the_quoted_margin(self):
        # Settled on a coupon date at par, the coupon paying index + quoted
        # margin discounts back to par at exactly that margin; a price below
        # par needs a wider margin.
        note = dict(maturity=dt.date(2028, 6, 30), settlement=dt.date(2024, 12, 30),
                    current_coupon=0.05, period_rate=0.045, index_rate=0.045,
                    quoted_margin=0.005)
        self.assertAlmostEqual(k_bond.frn.discount_margin(price=100.0, **note), 0.005, places=9)
        self.assertGreater(k_bond.frn.discount_margin(price=99.0, **note), 0.005)

    def test_price_and_yield_invert(self):
        note = dict(rates=[0.05], rate_dates=[dt.date(2024, 12, 31)],
                    maturity=dt.date(2028, 6, 30), settlement=dt.date(2025, 1, 15))
        clean = k_bond.frn.price(yield_=0.052, **note)
        self.assertAlmostEqual(k_bond.frn.frn_yield(price=clean, **note), 0.052, places=6)
        # The period began 30 December 2024 (six-month steps back from 30 June
        # 2028, no end-of-month rule): 16 days at 5 % on actual/360.
        self.assertAlmostEqual(k_bond.frn.accrued(**note), 5.0 * 16 / 360, places=9)


if __name__ == "__main__":
    unittest.main()
