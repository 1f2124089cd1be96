"""Bad arguments raise KBondError subclasses carrying the library's code."""

import datetime as dt
import math
import os
import subprocess
import sys
import unittest

import k_bond
from tests.support import TREASURY


class LibraryErrors(unittest.TestCase):
    def assertCode(self, expected, fn, **kwargs):
        with self.assertRaises(k_bond.KBondError) as caught:
            fn(**kwargs)
        self.assertEqual(caught.exception.code, expected, str(caught.exception))
        return caught.exception

    def test_settlement_after_maturity_is_an_invalid_description(self):
        exc = self.assertCode(1, k_bond.price, yield_=0.04,
                              **dict(TREASURY, settlement=dt.date(2035, 1, 1)))
        self.assertIsInstance(exc, k_bond.KBondLibraryError)
        self.assertIn("invalid bond description", str(exc))
        self.assertIn("(error 1)", str(exc))
        self.assertEqual(exc.function, "KVLbpr")

    def test_refusals_carry_the_library_code(self):
        frn = dict(maturity="2028-06-30", settlement="2025-01-15", current_coupon=0.05,
                   index_rate=0.045, quoted_margin=0.005)
        cases = (  # (code, function, keywords)
            (1, k_bond.price, dict(TREASURY, yield_=0.04, frequency=5)),
            (1, k_bond.accrued, dict(TREASURY, frequency=24)),
            (1, k_bond.price, dict(TREASURY, yield_=math.nan)),
            (1, k_bond.price, dict(TREASURY, yield_=math.inf)),
            (1, k_bond.accrued, dict(TREASURY, bond_type=9999)),
            (460, k_bond.type_info, dict(bond_type=9999)),
            (1, k_bond.price, dict(TREASURY, yield_=0.04, redemption=-1.0)),
            (350, k_bond.frn.simple_margin, dict(frn, price=0.0)),
            (300, k_bond.frn.simple_margin, dict(frn, price=99.0, day_count=9)),
            (350, k_bond.bond_yield, dict(TREASURY, price=-5.0)),
            (310, k_bond.pvbp, dict(TREASURY, yield_=0.04, scale=0.0)),
            (160, k_bond.horizon_yield, dict(TREASURY, price=99.0, horizon_date="2024-01-01",
                                             horizon_price=99.0)),
        )
        for code, fn, keywords in cases:
            with self.subTest(function=fn.__name__, keywords=keywords):
                exc = self.assertCode(code, fn, **keywords)
                self.assertIn(k_bond.message_for(code), str(exc))

    def test_every_documented_code_has_a_message(self):
        for code in (1, 50, 60, 150, 160, 250, 300, 350, 401, 460, 900, -50, -60):
            self.assertNotEqual(k_bond.message_for(code), "unknown error")
        self.assertEqual(k_bond.message_for(12345), "unknown error")


class LoadingErrors(unittest.TestCase):
    def test_a_missing_library_is_reported_with_the_paths_tried(self):
        env = dict(os.environ, KBOND_LIBRARY="/nonexistent/libk_bond.so")
        code = ("import k_bond\n"
                "try:\n"
                "    k_bond.library_version()\n"
                "except k_bond.KBondNotFoundError as e:\n"
                "    print('not found:', e)\n")
        package_root = os.path.dirname(os.path.dirname(os.path.abspath(k_bond.__file__)))
        out = subprocess.run([sys.executable, "-c", code], env=env, cwd=package_root,
                             capture_output=True, text=True, check=True).stdout
        self.assertIn("not found:", out)
        self.assertIn("/nonexistent/libk_bond.so", out)


if __name__ == "__main__":
    unittest.main()
