"""Runs the built kbond program for the CLI tests.

CTest passes the program's path in KBOND, the source tree in
KBOND_SOURCE_DIR and the C example program in KBOND_PRICE_BOND.
"""
import datetime
import os
import subprocess

KBOND = os.environ.get("KBOND", "kbond")
SOURCE_DIR = os.environ.get(
    "KBOND_SOURCE_DIR", os.path.abspath(os.path.join(os.path.dirname(__file__), "..", "..")))


def run(*args, stdin=None):
    """Runs kbond with the arguments; returns (exit code, stdout, stderr)."""
    proc = subprocess.run([KBOND, *args], input=stdin, capture_output=True, text=True,
                          timeout=600)
    return proc.returncode, proc.stdout, proc.stderr


def serial(y, m, d):
    """Library date serial: 1 = 1 January 1900."""
    return (datetime.date(y, m, d) - datetime.date(1899, 12, 31)).days


def street_price(coupon_pct, yield_pct, settle, prev_cpn, next_cpn, n_coupons, freq=2):
    """Clean price per 100 by the street (SIFMA) formula, act/act accrual:
    coupons and redemption discounted at (1 + y/f) per period, the first
    period fractional. An independent check of the library's price."""
    e = (next_cpn - prev_cpn).days
    a = (settle - prev_cpn).days
    dsc = (next_cpn - settle).days
    v = 1.0 / (1.0 + yield_pct / 100.0 / freq)
    dirty = sum(coupon_pct / freq * v ** (k + dsc / e) for k in range(n_coupons))
    dirty += 100.0 * v ** (n_coupons - 1 + dsc / e)
    accrued = coupon_pct / freq * a / e
    return dirty - accrued, accrued
