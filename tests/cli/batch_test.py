"""kbond batch: the sample portfolio, bad rows, bad files, output forms,
spreadsheet CSV, threads and JSON lines."""
import csv
import datetime
import io
import json
import os
import tempfile
import unittest

from cli_harness import SOURCE_DIR, run, street_price

PORTFOLIO = os.path.join(SOURCE_DIR, "examples", "portfolio.csv")
COLUMNS = ["id", "type", "price", "yield_pct", "accrued", "modified_duration", "convexity",
           "pvbp", "error_code", "error"]


def write_temp(text):
    f = tempfile.NamedTemporaryFile("w", suffix=".csv", delete=False)
    f.write(text)
    f.close()
    return f.name


class PortfolioTest(unittest.TestCase):
    def test_every_bond_of_the_sample_is_valued(self):
        rc, out, err = run("batch", PORTFOLIO)
        self.assertEqual(rc, 0, err)
        rows = list(csv.DictReader(io.StringIO(out)))
        with open(PORTFOLIO) as f:
            self.assertEqual(len(rows), sum(1 for _ in f) - 1)
        self.assertEqual(list(rows[0].keys()), COLUMNS)
        for row in rows:
            self.assertEqual(row["error"], "", row["id"])
            self.assertGreater(float(row["modified_duration"]), 0)
            self.assertGreater(float(row["pvbp"]), 0)
        # UST 3.875 % 30 Apr 2030 at 3.95 %: coupons 31 Oct / 30 Apr, ten left.
        price, accrued = street_price(3.875, 3.95, datetime.date(2025, 6, 16),
                                      datetime.date(2025, 4, 30), datetime.date(2025, 10, 31),
                                      10)
        row = next(r for r in rows if r["id"] == "UST 3.875 Apr30")
        self.assertAlmostEqual(float(row["price"]), price, places=6)
        self.assertAlmostEqual(float(row["accrued"]), accrued, places=6)


BAD_ROWS = """id,type,coupon,maturity,settlement,price,yield
good,ust,4.25,2034-11-15,2025-01-15,,4.5
bad date,ust,4.25,2034-13-15,2025-01-15,,4.5
bad coupon,ust,four,2034-11-15,2025-01-15,,4.5
short,ust,4.25,2034-11-15

both,ust,4.25,2034-11-15,2025-01-15,99,4.5
matured,ust,4.25,2020-11-15,2025-01-15,,4.5
alien,klingon,4.25,2034-11-15,2025-01-15,,4.5
quoted,"Canadian Gvmt. Bond, (US Gov equiv yld)",4.25,2034-11-15,2025-01-15,,4.5
"""


class BadRowsTest(unittest.TestCase):
    def test_bad_rows_are_reported_and_do_not_stop_the_batch(self):
        path = write_temp(BAD_ROWS)
        try:
            rc, out, err = run("batch", path)
        finally:
            os.unlink(path)
        self.assertEqual(rc, 1)
        rows = list(csv.DictReader(io.StringIO(out)))
        self.assertEqual([r["id"] for r in rows],
                         ["good", "bad date", "bad coupon", "short", "both", "matured", "alien",
                          "quoted"])
        codes = [r["error_code"] for r in rows]
        self.assertEqual(codes, ["", "input", "input", "input", "input", "1", "input", ""])
        self.assertEqual(rows[0]["price"], "98.026057")  # street formula, see single_bond_test
        self.assertEqual(rows[7]["type"], "20")
        self.assertEqual(rows[5]["price"], "")
        self.assertIn("KVL_ERR_INVALID", rows[5]["error"])
        # Line numbers count the header and the blank line.
        for expected in ["line 3: maturity '2034-13-15' is not a date",
                         "line 4: coupon 'four' is not a number",
                         "line 5: has 4 fields, the header has 7",
                         "line 7: give a price or a yield, not both",
                         "line 8: price: error 1 (KVL_ERR_INVALID)",
                         'line 9: unknown bond type "klingon"']:
            self.assertIn(expected, err)

    def test_bad_files(self):
        missing = write_temp("id,coupon,maturity,yield\nx,4,2030-01-01,4\n")
        empty = write_temp("")
        no_rate = write_temp("coupon,maturity,settlement\n4,2030-01-01,2025-01-01\n")
        try:
            for args, message in [
                ([missing], "has no 'settlement' column"),
                ([empty], "has no header line"),
                ([no_rate], "needs a 'price' or a 'yield' column"),
                (["/nonexistent/portfolio.csv"], "cannot open"),
                ([], "give one CSV file"),
            ]:
                with self.subTest(args=args):
                    rc, out, err = run("batch", *args)
                    self.assertEqual(rc, 2)
                    self.assertEqual(out, "")
                    self.assertIn(message, err)
        finally:
            for p in (missing, empty, no_rate):
                os.unlink(p)


class OutputFormsTest(unittest.TestCase):
    def test_output_file_stdin_and_decimal_units(self):
        with open(PORTFOLIO) as f:
            text = f.read()
        rc, from_stdin, _ = run("batch", "-", stdin=text)
        rc2, from_file, _ = run("batch", PORTFOLIO)
        self.assertEqual((rc, from_stdin), (rc2, from_file))
        out_path = write_temp("")
        try:
            run("batch", PORTFOLIO, "-o", out_path)
            with open(out_path) as f:
                self.assertEqual(f.read(), from_file)
        finally:
            os.unlink(out_path)
        text = "coupon,maturity,settlement,yield\n0.0425,2034-11-15,2025-01-15,0.045\n"
        rc, out, _ = run("batch", "-", "--decimal", stdin=text)
        self.assertEqual(rc, 0)
        row = next(csv.DictReader(io.StringIO(out)))
        self.assertEqual((row["price"], row["yield"]), ("98.026057", "0.04500000"))


class SpreadsheetFilesTest(unittest.TestCase):
    ROWS = ("id,type,coupon,maturity,settlement,price,yield\n"
            "a,ust,4.25,2034-11-15,2025-01-15,,4.5\n"
            "b,gilt,3.75,2031-01-29,2025-02-03,97.5,\n")

    def batch(self, text, *args):
        path = write_temp(text)
        try:
            return run("batch", path, *args)
        finally:
            os.unlink(path)

    def test_bom_semicolons_and_decimal_commas_read_as_the_plain_file(self):
        rc, plain, _ = self.batch(self.ROWS)
        self.assertEqual(rc, 0)
        self.assertEqual(plain.splitlines()[1].split(",")[0], "a")
        semicolons = self.ROWS.replace(",", ";").replace("4.25", "4,25").replace("97.5", "97,5")
        for text, args in [("\ufeff" + self.ROWS, ()), (semicolons, ()),
                           ("\ufeff" + semicolons, ("--separator", ";")),
                           (self.ROWS.replace(",", "\t"), ("--separator", "tab"))]:
            with self.subTest(text=text[:12], args=args):
                self.assertEqual(self.batch(text, *args), (0, plain, ""))
        rc, out, err = self.batch(self.ROWS.replace("settlement", "settle"))
        self.assertEqual(rc, 2)
        self.assertIn("has no 'settlement' column", err)

    def test_jobs_json_lines_and_no_progress_off_a_terminal(self):
        with open(PORTFOLIO) as f:
            portfolio = f.read()
        text = portfolio + "".join(BAD_ROWS.splitlines(True)[1:]) * 300
        one = run("batch", "-", "--jobs", "1", stdin=text)
        self.assertEqual(run("batch", "-", "--jobs", "2", stdin=text), one)
        self.assertEqual(one[0], 1)
        rc, out, err = run("batch", "-", "--json", stdin=text)
        rows = list(csv.DictReader(io.StringIO(one[1])))
        lines = [json.loads(line) for line in out.splitlines()]
        self.assertEqual((rc, err), one[::2])
        self.assertEqual(len(lines), len(rows))
        for row, obj in zip(rows, lines):
            self.assertEqual(obj["id"], row["id"])
            self.assertEqual("" if obj["price"] is None else f"{obj['price']:.6f}", row["price"])
            self.assertEqual(str(obj["error_code"] or ""), row["error_code"])
        self.assertEqual(run("batch", "-", "--jobs", "-1", stdin=text)[0], 2)

    def test_unit_warnings_and_treasury_32nds(self):
        fractions = self.ROWS.replace("4.25", "0.0425").replace("3.75", "0.0375")
        rc, out, err = self.batch(fractions.replace("4.5", "0.045"))
        self.assertEqual(rc, 0)
        self.assertIn("line 2: coupon 0.0425 looks like a decimal fraction", err)
        self.assertIn("--decimal", err)
        # A percent file may hold a real 0.125 % coupon: no warning then.
        self.assertEqual(self.batch(fractions)[2], "")
        rc, out, err = self.batch(self.ROWS, "--decimal")
        self.assertIn("coupon 4.25 looks like a percentage", err)
        self.assertEqual(err.count("warning"), 1)
        rc, out, _ = self.batch(self.ROWS.replace("97.5", "97-16+"))
        self.assertEqual(rc, 0)
        self.assertEqual(out.splitlines()[2].split(",")[2], "97.515625")


if __name__ == "__main__":
    unittest.main()
