"""kbond price, accrued, type and types: values, units, date forms, JSON and
error reporting."""
import datetime
import json
import unittest

from cli_harness import run, serial, street_price

# A 10-year U.S. Treasury note: 4.25 % 15 Nov 2034, settling 15 Jan 2025.
UST = ["--type", "ust", "--coupon", "4.25", "--maturity", "2034-11-15",
       "--settlement", "2025-01-15"]


def json_of(*args):
    rc, out, err = run(*args, "--json")
    assert rc == 0, err
    return json.loads(out)


class PriceTest(unittest.TestCase):
    def test_treasury_price_matches_street_formula(self):
        expected_price, expected_accrued = street_price(
            4.25, 4.5, datetime.date(2025, 1, 15), datetime.date(2024, 11, 15),
            datetime.date(2025, 5, 15), 20)
        r = json_of("price", *UST, "--yield", "4.5")
        # Treasuries are rounded to 6 decimals.
        self.assertAlmostEqual(r["clean_price"], expected_price, places=6)
        self.assertAlmostEqual(r["accrued"], expected_accrued, places=9)
        self.assertAlmostEqual(r["dirty_price"], r["clean_price"] + r["accrued"], places=9)
        self.assertEqual(r["type_name"], "U.S. Treasury Bond")

    def test_type_names_in_any_case_describe_the_same_bond(self):
        # Percent and decimal units, serials and ISO dates: the user guide's
        # first two examples, run by docs_test. A type by code, name or
        # nickname in any case: the same result.
        results = {json.dumps(json_of("accrued", "--type", t, "--coupon", "4", "--maturity",
                                      "2030-03-07", "--settlement", "2025-01-15"))
                   for t in ["40", "Gilt", "gilt", "GILT"]}
        self.assertEqual(len(results), 1)

    def test_serial_60_is_1_march_1900(self):
        # 1900 was not a leap year: serial 60 is 1 March 1900, not a 29 February.
        # Accrual from a dated date of serial 60 to 1 June 1900, act/act: 92 of
        # the 184 days to 1 September, half of the 2.5 semi-annual coupon.
        self.assertEqual(serial(1900, 3, 1), 60)
        r = json_of("accrued", "--coupon", "5", "--maturity", "1905-03-01", "--dated", "60",
                    "--first-coupon", "1900-09-01", "--settlement", "1900-06-01")
        self.assertAlmostEqual(r["accrued"], 2.5 * 92 / 184, places=12)
        for bad in ["1900-02-29", "2023-02-29", "2025-00-10", "0", "-3", "2025/01/15"]:
            with self.subTest(date=bad):
                rc, _, err = run("accrued", "--coupon", "5", "--maturity", "2030-01-01",
                                 "--settlement", bad)
                self.assertEqual(rc, 2)
                self.assertIn("is not a date", err)
        r = json_of("accrued", "--coupon", "5", "--maturity", "2030-01-01",
                    "--settlement", "2024-02-29")
        self.assertEqual(r["settlement"], "2024-02-29")


class ErrorTest(unittest.TestCase):
    def test_library_errors_are_sentences_with_their_code(self):
        # The program must not print the failure value -1.0 as a result.
        cases = [
            # Settlement after maturity is the user guide's example (docs_test).
            # 5 coupons a year is a whole number, so the library itself refuses it.
            (["price", *UST, "--yield", "4", "--frequency", "5"], "error 1 (KVL_ERR_INVALID)"),
            (["yield", *UST, "--price", "-5"],
             "error 350 (KVL_ERR_BAD_PRICE): the price must be positive"),
            (["cashflows", "--coupon", "4", "--maturity", "2020-01-01", "--settlement",
              "2025-01-01"], "error 1 (KVL_ERR_INVALID)"),
        ]
        for args, message in cases:
            with self.subTest(args=args):
                rc, out, err = run(*args)
                self.assertEqual((rc, out), (1, ""))
                self.assertIn(message, err)
                self.assertNotIn("-1.0", err)
        rc, out, _ = run("price", "--coupon", "4", "--maturity", "2024-01-01",
                         "--settlement", "2025-01-01", "--yield", "3", "--json")
        self.assertEqual(rc, 1)
        self.assertEqual(json.loads(out)["error"]["code"], 1)

    def test_bad_arguments(self):
        cases = [
            (["price", *UST], "missing --yield"),
            (["price", *UST, "--yield", "abc"], "--yield 'abc' is not a number"),
            (["price", "--coupon", "4", "--maturity", "2031-02-30", "--settlement",
              "2025-01-01", "--yield", "4"], "--maturity '2031-02-30' is not a date"),
            (["price", *UST, "--yield", "4", "--frequency", "2.5"], "must be a whole number"),
            (["price", *UST, "--yeild", "4"], "unknown option '--yeild'"),
            (["price", *UST, "--yield"], "option --yield needs a value"),
            (["accrued", *UST, "extra"], "unexpected argument 'extra'"),
            (["frobnicate"], "unknown command 'frobnicate'"),
            (["risk", *UST, "--yield", "4", "--price", "99"], "exactly one of --yield and --price"),
            (["price", *UST, "--yield", "4", "--price", "99"], "exactly one of --yield and --price"),
            (["yield", *UST, "--price", "99-32"], "--price '99-32' is not a price"),
            (["type", "999"], "999 is not in the catalogue"),
            (["price", *UST[2:], "--type", "klingon", "--yield", "4"],
             'unknown bond type "klingon"'),
        ]
        for args, message in cases:
            with self.subTest(args=args):
                rc, out, err = run(*args)
                self.assertEqual((rc, out), (2, ""))
                self.assertIn(message, err)


    def test_unit_warnings_and_treasury_32nds(self):
        rc, _, err = run("price", *UST[:3], "0.0425", *UST[4:], "--yield", "4.5")
        self.assertEqual(rc, 0)
        self.assertIn("--coupon 0.0425 looks like a decimal fraction", err)
        rc, _, err = run("price", *UST, "--yield", "0.045", "--decimal")
        self.assertIn("--coupon 4.25 looks like a percentage", err)
        for quote, decimal in [("98-01", 98 + 1 / 32), ("98-01+", 98 + 1.5 / 32),
                               ("98-012", 98 + 1.25 / 32), ("101-317", 101 + 31.875 / 32)]:
            with self.subTest(quote=quote):
                self.assertEqual(json_of("yield", *UST, "--price", quote)["yield"],
                                 json_of("yield", *UST, "--price", repr(decimal))["yield"])


class HelpTest(unittest.TestCase):
    def test_help_lists_every_command_and_states_units(self):
        rc, out, _ = run("--help")
        self.assertEqual(rc, 0)
        for command in ["price", "yield", "accrued", "risk", "schedule", "cashflows", "type",
                        "types", "batch"]:
            self.assertIn("  " + command, out)
        self.assertEqual(run()[0], 2)
        for args in (["price", "--help"], ["help", "price"]):
            rc, out, _ = run(*args)
            self.assertEqual(rc, 0)
            self.assertIn("--decimal", out)
            self.assertIn("in percent (4.25)", out)
            self.assertIn("serial 1 = 1900-01-01", out)
        self.assertIn("error_code", run("batch", "--help")[1])


if __name__ == "__main__":
    unittest.main()
