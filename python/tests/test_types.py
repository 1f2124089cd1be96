"""Bond types: names, nicknames shared with the kbond program, the
catalogue's conventions and custom types."""

import json
import os
import subprocess
import unittest

import k_bond

KBOND = os.environ.get("KBOND")  # the built kbond program (set by CTest)


class Names(unittest.TestCase):
    def test_codes_names_and_nicknames(self):
        for given, code in [("treasury", 0), ("Gilt", 40), ("corporate bond", 3),
                            ("  Japanese   Government Bond ", 200), ("acgb", 220), ("DSL", 160),
                            ("New Zealand", 350), ("generic-act365", 510), ("41", 41), (41, 41)]:
            self.assertEqual(k_bond.type_code(given), code, given)
        self.assertIsNone(k_bond.type_code(None))

    def test_every_nickname_names_a_catalogue_row(self):
        rows = {r.code: r for r in k_bond.types()}
        listed = {n: r.code for r in rows.values() for n in r.nicknames}
        self.assertEqual(listed, k_bond.NICKNAMES)
        self.assertEqual(rows[220].nicknames, ("australia", "acgb"))

    @unittest.skipUnless(KBOND, "KBOND (the kbond program) not given")
    def test_the_command_line_reads_the_same_table(self):
        out = subprocess.run([KBOND, "types", "--nicknames", "--json"], capture_output=True,
                             text=True, check=True).stdout
        cli = {row["nickname"]: row["code"] for row in json.loads(out)["nicknames"]}
        self.assertEqual(cli, k_bond.NICKNAMES)
        # Resolution, not only the listing: each nickname typed as users
        # might type it gives the same code in both.
        for nickname, code in k_bond.NICKNAMES.items():
            typed = nickname.upper().replace("-", " ")
            out = subprocess.run([KBOND, "type", typed, "--json"], capture_output=True,
                                 text=True, check=True).stdout
            self.assertEqual(json.loads(out)["code"], code, typed)
            self.assertEqual(k_bond.type_code(typed), code, typed)


class Conventions(unittest.TestCase):
    def test_type_info(self):
        gilt = k_bond.type_info("gilt")
        self.assertEqual((gilt.code, gilt.eom_code, gilt.name, gilt.frequency, gilt.day_count,
                          gilt.ex_dividend, gilt.own_conventions),
                         (40, 41, "Gilt", 2, "act/act", True, True))
        self.assertTrue(k_bond.type_info(41).end_of_month)
        self.assertEqual(k_bond.type_info(3).day_count, "30/360")
        self.assertFalse(k_bond.type_info("corporate").ex_dividend)

    def test_a_type_without_conventions_of_its_own_is_flagged(self):
        yankee = k_bond.type_info("yankee")
        self.assertEqual((yankee.code, yankee.frequency, yankee.day_count, yankee.own_conventions),
                         (810, None, None, False))
        if KBOND:
            out = subprocess.run([KBOND, "type", "810"], capture_output=True, text=True,
                                 check=True).stdout
            self.assertIn("none of its own", out)
            self.assertNotIn("-1", out)

    def test_the_catalogue_beyond_the_table(self):
        codes = [r.code for r in k_bond.types()]
        self.assertEqual(codes[:3], [0, 1, 2])
        self.assertEqual(codes[-5:], [700, 701, 810, 820, 830])
        self.assertEqual(k_bond.types()[0].eom_code, 0)


class CustomTypes(unittest.TestCase):
    def test_define_use_and_remove(self):
        info = k_bond.define_type(1042, accrual_basis=5, frequency=1, end_of_month=False)
        self.assertEqual((info.code, info.name, info.frequency, info.day_count),
                         (1042, "User-customized bond", 1, "act/365"))
        self.assertIn(1042, [r.code for r in k_bond.types()])
        custom = k_bond.Bond(type=1042, coupon=0.05, maturity="2030-06-15")
        # Annual act/365: 214 days from 15 June 2024 to 15 January 2025.
        self.assertAlmostEqual(custom.accrued("2025-01-15"), 5.0 * 214 / 365, 12)
        k_bond.remove_type(1042)
        self.assertNotIn(1042, [r.code for r in k_bond.types()])
        with self.assertRaises(k_bond.KBondArgumentError):
            k_bond.Bond(type=1042, coupon=0.05, maturity="2030-06-15")

    def test_refused_values_leave_the_type_untouched(self):
        k_bond.define_type(1043, frequency=4)
        for kwargs, named in [(dict(frequency=5), "frequency"), (dict(accrual_basis=7),
                              "accrual_basis"), (dict(mm_basis=0), "mm_basis"),
                              (dict(yield_method="simple"), "yield_method")]:
            with self.assertRaises(k_bond.KBondArgumentError) as caught:
                k_bond.define_type(1043, **kwargs)
            self.assertIn(named, str(caught.exception))
        self.assertEqual(k_bond.type_info(1043).frequency, 4)
        for code in (999, 1100):
            with self.assertRaises(k_bond.KBondArgumentError):
                k_bond.define_type(code)


if __name__ == "__main__":
    unittest.main()
