"""Bond types, conversion factors and FRN margins through the module."""

import datetime as dt
import unittest

import k_bond


class BondTypes(unittest.TestCase):
    def test_names_and_codes(self):
        self.assertEqual(k_bond.type_code("treasury"), 0)
        self.assertEqual(k_bond.type_code("Gilt"), 40)
        self.assertEqual(k_bond.type_code("corporate bond"), 3)
        self.assertEqual(k_bond.type_code("  Japanese   Government Bond "), 200)
        self.assertEqual(k_bond.type_code(41), 41)
        self.assertIsNone(k_bond.type_code(None))

    def test_conventions_from_the_catalogue(self):
        gilt = k_bond.bond_type("gilt")
        self.assertEqual((gilt.code, gilt.name, gilt.frequency, gilt.day_count),
                         (40, "Gilt", 2, "act/act"))
        self.assertEqual(k_bond.bond_type(3).day_count, "30/360")
        self.assertEqual(k_bond.bond_type("bund").frequency, 1)

    def test_catalogue_rows(self):
        rows = k_bond.catalogue()
        self.assertEqual(len(rows), 64)
        self.assertEqual(rows[0].name, "U.S. Treasury Bond")
        gilt = next(r for r in rows if r.code == 40)
        self.assertTrue(gilt.ex_dividend)
        self.assertFalse(next(r for r in rows if r.code == 3).ex_dividend)

    def test_version(self):
        self.assertEqual(k_bond.version(), "v2002.0p0nt")


class ConversionFactor(unittest.TestCase):
    def test_cbot_bond_contract_formula(self):
        # CME's published formula: 4.5 % bond maturing 15 February 2045,
        # March 2025 delivery: 19 years 11 months rounds down to 19 years
        # 9 months, n = 19, z = 9, v = 3.
        coupon, n, v = 0.045, 19, 3
        a = 1 / 1.03 ** (v / 6)
        b = coupon / 2 * (6 - v) / 6
        c = 1 / 1.03 ** (2 * n + 1)
        d = coupon / 0.06 * (1 - c)
        expected = round(a * (coupon / 2 + c + d) - b, 4)
        factor = k_bond.conversion_factor(coupon=coupon, maturity=dt.date(2045, 2, 15),
                                          delivery=dt.date(2025, 3, 1))
        self.assertAlmostEqual(factor, expected, places=10)


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
