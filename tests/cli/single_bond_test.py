"""kbond price, accrued, type and types: values, units, date forms, JSON and
error reporting."""
import datetime
import json
import unittest

from cli_harness import run, serial, street_price

# A 10-year U.S. Treasury note: 4.25 % 15 Nov 2034, settling 15 Jan 2025.
UST = ["--type", "ust", "--coupon", "4.25", "--maturity", "2034-11-15",
       "--settlement", "2025-01-15"]


class PriceTest(unittest.TestCase):
    def test_treasury_price_matches_street_formula(self):
        expected_price, expected_accrued = street_price(
            4.25, 4.5, datetime.date(2025, 1, 15), datetime.date(2024, 11, 15),
            datetime.date(2025, 5, 15), 20)
        rc, out, err = run("price", *UST, "--yield", "4.5", "--json")
        self.assertEqual(rc, 0, err)
        r = json.loads(out)
        # Treasuries are rounded to 6 decimals.
        self.assertAlmostEqual(r["clean_price"], expected_price, places=6)
        self.assertAlmostEqual(r["accrued"], expected_accrued, places=9)
        self.assertAlmostEqual(r["dirty_price"], r["clean_price"] + r["accrued"], places=9)
        self.assertEqual(r["type_name"], "U.S. Treasury Bond")

    def test_table_output_is_aligned_label_value_lines(self):
        rc, out, _ = run("price", *UST, "--yield", "4.5")
        self.assertEqual(rc, 0)
        self.assertIn("Clean price       98.026057", out)
        self.assertIn("Accrued interest  0.716160", out)

    def test_percent_and_decimal_inputs_agree(self):
        _, pct, _ = run("price", *UST, "--yield", "4.5", "--json")
        dec_args = [a if a != "4.25" else "0.0425" for a in UST]
        _, dec, _ = run("price", *dec_args, "--yield", "0.045", "--decimal", "--json")
        self.assertEqual(json.loads(pct)["clean_price"], json.loads(dec)["clean_price"])
        self.assertEqual(json.loads(dec)["yield"], 0.045)

    def test_serials_and_iso_dates_describe_the_same_bond(self):
        # 1 March 1900 is serial 60 (1 January 1900 is 1, no 29 February 1900).
        self.assertEqual(serial(1900, 3, 1), 60)
        args = ["--type", "0", "--coupon", "4.25", "--maturity", str(serial(2034, 11, 15)),
                "--settlement", str(serial(2025, 1, 15)), "--yield", "4.5", "--json"]
        _, by_serial, _ = run("price", *args)
        _, by_iso, _ = run("price", *UST, "--yield", "4.5", "--json")
        self.assertEqual(json.loads(by_serial), json.loads(by_iso))

    def test_serial_60_is_1_march_1900(self):
        # 1900 was not a leap year: serial 60 is 1 March 1900, not a 29 February.
        # Accrual from a dated date of serial 60 to 1 June 1900, act/act: 92 of
        # the 184 days to 1 September, half of the 2.5 semi-annual coupon.
        rc, out, err = run("accrued", "--coupon", "5", "--maturity", "1905-03-01",
                           "--dated", "60", "--first-coupon", "1900-09-01",
                           "--settlement", "1900-06-01", "--json")
        self.assertEqual(rc, 0, err)
        self.assertAlmostEqual(json.loads(out)["accrued"], 2.5 * 92 / 184, places=12)
        for bad in ["1900-02-29", "2023-02-29", "2025-00-10", "0", "-3", "2025/01/15"]:
            with self.subTest(date=bad):
                rc, _, err = run("accrued", "--coupon", "5", "--maturity", "2030-01-01",
                                 "--settlement", bad)
                self.assertEqual(rc, 2)
                self.assertIn("is not a date", err)
        rc, out, _ = run("accrued", "--coupon", "5", "--maturity", "2030-01-01",
                         "--settlement", "2024-02-29", "--json")
        self.assertEqual(json.loads(out)["settlement"], "2024-02-29")

    def test_type_by_code_name_and_nickname(self):
        results = set()
        for t in ["40", "Gilt", "gilt", "GILT"]:
            rc, out, err = run("accrued", "--type", t, "--coupon", "4", "--maturity",
                               "2030-03-07", "--settlement", "2025-01-15", "--json")
            self.assertEqual(rc, 0, err)
            results.add(out)
        self.assertEqual(len(results), 1)


class AccruedTest(unittest.TestCase):
    def test_gilt_ex_dividend_accrued_is_negative(self):
        # DMO: 4 % Gilt paying 7 Mar/7 Sep, settling 3 Mar 2025 (ex-dividend):
        # -(4 days to the coupon) / 181 days x 2.0 = -0.0441989
        rc, out, err = run("accrued", "--type", "gilt", "--coupon", "4",
                           "--maturity", "2030-03-07", "--settlement", "2025-03-03", "--json")
        self.assertEqual(rc, 0, err)
        self.assertAlmostEqual(json.loads(out)["accrued"], -4 / 181 * 2.0, places=9)

    def test_corporate_30_360_accrued(self):
        # 30/360: 15 Mar to 15 Jun 2025 is 90 days; 6 % x 90/360 = 1.5
        rc, out, err = run("accrued", "--type", "corporate", "--coupon", "6",
                           "--maturity", "2031-09-15", "--settlement", "2025-06-15", "--json")
        self.assertEqual(rc, 0, err)
        self.assertAlmostEqual(json.loads(out)["accrued"], 1.5, places=12)


class TypeTest(unittest.TestCase):
    def test_type_by_name_shows_conventions(self):
        rc, out, _ = run("type", "U.S. Treasury Bond", "--json")
        self.assertEqual(rc, 0)
        r = json.loads(out)
        self.assertEqual((r["code"], r["frequency"], r["day_count"], r["end_of_month"]),
                         (0, 2, "act/act", 1))

    def test_types_lists_the_catalogue(self):
        rc, out, _ = run("types", "--json")
        self.assertEqual(rc, 0)
        rows = json.loads(out)["types"]
        self.assertEqual(len(rows), 64)
        gilt = next(r for r in rows if r["code"] == 40)
        self.assertEqual((gilt["name"], gilt["eom_code"], gilt["ex_dividend"]),
                         ("Gilt", 41, "yes"))
        treasury = next(r for r in rows if r["eom_code"] == 0)
        self.assertIsNone(treasury["code"])  # code 0 has the end-of-month rule on

    def test_unknown_type_is_a_usage_error(self):
        rc, _, err = run("type", "999")
        self.assertEqual(rc, 2)
        self.assertIn("999 is not in the catalogue", err)
        rc, _, err = run("price", *UST[2:], "--type", "klingon", "--yield", "4")
        self.assertEqual(rc, 2)
        self.assertIn('unknown bond type "klingon"', err)


class ErrorTest(unittest.TestCase):
    def test_library_error_is_a_sentence_with_its_code(self):
        # Settlement after maturity: the library refuses the bond (error 1);
        # the program must not print the failure value -1.0 as a price.
        rc, out, err = run("price", "--coupon", "4", "--maturity", "2020-01-01",
                           "--settlement", "2025-01-01", "--yield", "3")
        self.assertEqual(rc, 1)
        self.assertEqual(out, "")
        self.assertIn("error 1 (KVL_ERR_INVALID): the bond description is invalid", err)
        self.assertNotIn("-1.0", err)

    def test_library_error_in_json_mode(self):
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
            (["price", "--coupon", "4", "--settlement", "2025-01-01", "--yield", "4"],
             "missing --maturity"),
            (["price", *UST, "--yield", "4", "--frequency", "2.5"], "must be a whole number"),
            (["price", *UST, "--yeild", "4"], "unknown option '--yeild'"),
            (["price", *UST, "--yield"], "option --yield needs a value"),
            (["accrued", *UST, "extra"], "unexpected argument 'extra'"),
            (["frobnicate"], "unknown command 'frobnicate'"),
        ]
        for args, message in cases:
            with self.subTest(args=args):
                rc, out, err = run(*args)
                self.assertEqual(rc, 2)
                self.assertEqual(out, "")
                self.assertIn(message, err)

    def test_frequency_the_library_refuses(self):
        # 5 coupons a year is a whole number, so the library itself refuses it.
        rc, out, err = run("price", *UST, "--yield", "4", "--frequency", "5")
        self.assertEqual(rc, 1)
        self.assertEqual(out, "")
        self.assertIn("error 1 (KVL_ERR_INVALID)", err)


class HelpTest(unittest.TestCase):
    def test_main_help_lists_every_command(self):
        rc, out, _ = run("--help")
        self.assertEqual(rc, 0)
        for command in ["price", "yield", "accrued", "risk", "schedule", "cashflows", "type",
                        "types", "batch"]:
            self.assertIn("  " + command, out)
        self.assertEqual(run()[0], 2)

    def test_command_help_states_units(self):
        for args in (["price", "--help"], ["help", "price"]):
            rc, out, _ = run(*args)
            self.assertEqual(rc, 0)
            self.assertIn("--decimal", out)
            self.assertIn("in percent (4.25)", out)
            self.assertIn("serial 1 = 1900-01-01", out)
        rc, out, _ = run("batch", "--help")
        self.assertIn("error_code", out)


if __name__ == "__main__":
    unittest.main()
