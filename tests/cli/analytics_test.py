"""kbond yield, risk, schedule and cashflows, checked against independent
computations: the street price formula, finite differences of the
program's own prices, and discounting the cash-flow table."""
import datetime
import json
import unittest

from cli_harness import run, street_price

UST = ["--type", "ust", "--coupon", "4.25", "--maturity", "2034-11-15",
       "--settlement", "2025-01-15"]


def price_at(yield_pct):
    rc, out, err = run("price", *UST, "--yield", repr(yield_pct), "--json")
    assert rc == 0, err
    r = json.loads(out)
    return r["clean_price"], r["accrued"]


class YieldTest(unittest.TestCase):
    def test_yield_inverts_the_street_price(self):
        price, _ = street_price(4.25, 4.5, datetime.date(2025, 1, 15),
                                datetime.date(2024, 11, 15), datetime.date(2025, 5, 15), 20)
        rc, out, err = run("yield", *UST, "--price", "%.6f" % price, "--json")
        self.assertEqual(rc, 0, err)
        self.assertAlmostEqual(json.loads(out)["yield"], 4.5, places=5)
        dec = [a if a != "4.25" else "0.0425" for a in UST]
        rc, out, _ = run("yield", *dec, "--price", "98.026057", "--decimal", "--json")
        self.assertEqual(rc, 0)
        self.assertAlmostEqual(json.loads(out)["yield"], 0.045, places=7)


class RiskTest(unittest.TestCase):
    def test_risk_measures_match_finite_differences(self):
        rc, out, err = run("risk", *UST, "--yield", "4.5", "--json")
        self.assertEqual(rc, 0, err)
        r = json.loads(out)
        p0, ai = price_at(4.5)
        up, _ = price_at(4.51)
        down, _ = price_at(4.49)
        dirty = p0 + ai
        # dP/dy by central difference over +-1 bp (yields as fractions).
        slope = (up - down) / 0.0002
        self.assertAlmostEqual(r["modified_duration"], -slope / dirty, delta=1e-4)
        self.assertAlmostEqual(r["pvbp"], -slope / 10000, delta=1e-6)
        self.assertAlmostEqual(r["macaulay_duration"],
                               r["modified_duration"] * (1 + 0.045 / 2), places=9)
        up10, _ = price_at(4.6)
        down10, _ = price_at(4.4)
        convexity = (up10 + down10 - 2 * p0) / 0.001 ** 2 / dirty
        self.assertAlmostEqual(r["convexity"], convexity, delta=0.05)
        # A 32nd of a point divided by the PVBP, in basis points.
        self.assertAlmostEqual(r["yield_value_32nd"], 1 / (32 * r["pvbp"]), places=6)


class ScheduleTest(unittest.TestCase):
    def test_treasury_coupon_dates(self):
        rc, out, err = run("schedule", *UST, "--json")
        self.assertEqual(rc, 0, err)
        r = json.loads(out)
        self.assertEqual(r["previous_coupon"], "2024-11-15")
        self.assertEqual(r["next_coupon"], "2025-05-15")
        self.assertEqual(r["ex_dividend"], "2025-05-15")  # no ex-dividend period
        expected = ["%d-%s-15" % (y, m) for y in range(2025, 2035) for m in ("05", "11")]
        self.assertEqual([c["date"] for c in r["coupons"]], expected)
        self.assertEqual(r["coupons_remaining"], 20)
        # A Gilt's ex-dividend date: the user guide's schedule example (docs_test).

    def test_cash_flows_discount_to_the_dirty_price(self):
        rc, out, err = run("cashflows", *UST, "--json")
        self.assertEqual(rc, 0, err)
        rows = json.loads(out)["cashflows"]
        self.assertEqual(len(rows), 20)
        self.assertEqual(rows[-1]["principal"], 100.0)
        self.assertTrue(all(row["coupon"] == 2.125 for row in rows))
        price, accrued = price_at(4.5)
        pv = sum(row["total"] / (1 + 0.045 / 2) ** row["periods"] for row in rows)
        # periods are printed to 6 decimals: a 1e-6 period error is ~4e-7 of value
        self.assertAlmostEqual(pv, price + accrued, delta=2e-5)


if __name__ == "__main__":
    unittest.main()
