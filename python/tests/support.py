"""Bonds shared by the Python tests and an independent price formula."""

import datetime as dt

# 4.25 % U.S. Treasury maturing 15 November 2034, settled mid-period.
TREASURY = dict(coupon=0.0425, maturity=dt.date(2034, 11, 15),
                settlement=dt.date(2025, 1, 15), bond_type="treasury")


def street_price(coupon, yield_, first_next, periods, days_to_next, days_in_period,
                 days_accrued, frequency=2):
    """Clean price of a regular bond by the textbook (street) formula:
    n coupons c = 100 coupon / f, the first one w = days_to_next /
    days_in_period periods away, discounted at 1 + y/f per period, less
    accrued interest c * days_accrued / days_in_period."""
    c = 100.0 * coupon / frequency
    v = 1.0 / (1.0 + yield_ / frequency)
    w = days_to_next / days_in_period
    dirty = sum(c * v ** (k + w) for k in range(periods)) + 100.0 * v ** (periods - 1 + w)
    return dirty - c * days_accrued / days_in_period
