"""k_bond.batch and k_bond.dask give what `kbond batch` writes for the same
file, and the array functions agree across thread counts."""

import io
import os
import subprocess
import sys
import tempfile
import unittest

import k_bond
from tests.support import TREASURY

try:
    import numpy as np
    import pandas as pd
except ImportError:
    np = pd = None

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
MIXED = """id,type,coupon,maturity,settlement,price,yield,frequency,redemption
ust,0,4.25,2034-11-15,2025-01-15,,4.5,,
gilt,Gilt,3.75,2031-01-29,2025-02-03,97-16+,,,
bund,60,2.5,45823,45000,98.4,,1,
called,3,5.25,2027-09-15,2025-06-16,,4.9,,101.5
matured,0,4.25,2020-11-15,2025-01-15,,4.5,,
free,0,4.25,2030-11-15,2025-01-15,0,,,
both,0,4.25,2030-11-15,2025-01-15,99,4.5,,
bad date,0,4.25,2030-13-15,2025-01-15,,4.5,,
odd frequency,0,4.25,2030-11-15,2025-01-15,,4.5,5,
"""
NUMBERS = ["price", "yield_pct", "accrued", "modified_duration", "convexity", "pvbp"]


def kbond_program():
    """The kbond program of the build tree that holds the library, or None."""
    here = os.path.dirname(k_bond.library_path())
    for folder in (here, os.path.dirname(here)):
        path = os.path.join(folder, "kbond")
        if os.access(path, os.X_OK):
            return path
    return None


def cli_batch(path):
    proc = subprocess.run([kbond_program(), "batch", path], capture_output=True, text=True,
                          timeout=600)
    return pd.read_csv(io.StringIO(proc.stdout), dtype=str, keep_default_na=False)


def as_cli_text(frame):
    """The valued frame formatted as `kbond batch` prints it."""
    text = pd.DataFrame({"id": frame["id"].astype(str), "type": frame["type"].astype(str),
                         "error_code": frame["error_code"]})
    for name in NUMBERS:
        text[name] = [f"{v:.6f}" if v == v else "" for v in frame[name]]
    return text.reset_index(drop=True)


def write_temp(text):
    f = tempfile.NamedTemporaryFile("w", suffix=".csv", delete=False)
    f.write(text)
    f.close()
    return f.name


@unittest.skipIf(pd is None, "pandas not installed")
class FrameTest(unittest.TestCase):
    def test_frame_equals_the_command_row_for_row(self):
        if kbond_program() is None:
            self.skipTest("kbond program not built next to the library")
        path = write_temp(MIXED)
        try:
            expected = cli_batch(path)
            frame = pd.read_csv(path, float_precision="round_trip")
        finally:
            os.unlink(path)
        got = k_bond.batch(frame, threads=2)
        self.assertEqual(list(got.columns), list(expected.columns))
        pd.testing.assert_frame_equal(as_cli_text(got), expected[as_cli_text(got).columns])
        self.assertEqual(list(got["error_code"]),
                         ["", "", "", "", "1", "350", "input", "input", "1"])
        self.assertTrue(got["error"].iloc[4].startswith("price: error 1"))

    def test_array_functions_agree_across_thread_counts(self):
        n = 5000
        yields = np.linspace(0.01, 0.09, n)
        maturities = np.datetime64("2027-01-15") + np.arange(n) * 3
        bond = dict(TREASURY, maturity=maturities)
        one = k_bond.prices(yield_=yields, threads=1, **bond)
        self.assertEqual(one.tobytes(), k_bond.prices(yield_=yields, threads=2, **bond).tobytes())
        self.assertEqual(one[17], k_bond.price(yield_=yields[17],
                                               **dict(TREASURY, maturity=maturities[17].item())))
        with self.assertRaises(k_bond.KBondArgumentError) as refused:
            k_bond.value_columns([0], [0.04], [50000], [45000], [0.04], threads=-1)
        self.assertEqual(refused.exception.code, 60)


@unittest.skipIf(pd is None, "pandas not installed")
class DaskTest(unittest.TestCase):
    ROWS = 200_000

    def test_a_book_on_two_worker_processes_equals_the_command(self):
        try:
            import dask.dataframe as dd
            from distributed import Client, LocalCluster
        except ImportError:
            self.skipTest("dask or distributed not installed")
        if kbond_program() is None:
            self.skipTest("kbond program not built next to the library")
        import k_bond.dask as kd
        path = write_temp("")
        try:
            subprocess.run([sys.executable, os.path.join(ROOT, "bench", "make_portfolio.py"),
                            str(self.ROWS), path], check=True)
            expected = cli_batch(path)
            with LocalCluster(n_workers=2, threads_per_worker=1, processes=True,
                              dashboard_address=None) as cluster, Client(cluster):
                book = dd.read_csv(path, blocksize=2_000_000, dtype=kd.CSV_DTYPES,
                                   float_precision="round_trip")
                self.assertGreater(book.npartitions, 2)
                valued = kd.value(book, threads=1)
                self.assertEqual(list(valued.columns), list(expected.columns))
                got = valued.compute()
        finally:
            os.unlink(path)
        self.assertEqual(len(got), self.ROWS)
        text = as_cli_text(got)
        pd.testing.assert_frame_equal(text, expected[text.columns])


if __name__ == "__main__":
    unittest.main()
