"""Bond types through the module: names, codes and the catalogue."""

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


if __name__ == "__main__":
    unittest.main()
