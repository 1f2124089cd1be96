"""Straight fixed-coupon bonds, one call at a time: price, yields, accrued
interest, risk, coupon dates and cash flows.

Each function takes keyword arguments only: its own market inputs, the
settlement date, and the description of the bond with the same names and
defaults as `Bond` (where the bond type is `bond_type`). It builds a Bond
and asks it, so a loop over many calls on one bond is faster with a Bond.

    >>> k_bond.price(yield_=0.045, coupon=0.0425, maturity="2034-11-15",
    ...              settlement="2025-01-15", bond_type="treasury")

Every function is made from the Bond method of the same measure: its
signature (what `inspect.signature` and editors show) is the method's own
arguments followed by Bond's, all keyword-only, so the two can never drift.
"""

from ._one_call import from_method
from .bond import Bond


def _from_method(public_name, method_name):
    return from_method(Bond, method_name, public_name, __name__, renamed={"type": "bond_type"})


price = _from_method("price", "price")
bond_yield = _from_method("bond_yield", "yield_")
accrued = _from_method("accrued", "accrued")
horizon_yield = _from_method("horizon_yield", "horizon_yield")
realized_yield = _from_method("realized_yield", "realized_yield")
average_life_yield = _from_method("average_life_yield", "average_life_yield")
yield_to_worst = _from_method("yield_to_worst", "yield_to_worst")
remaining_life = _from_method("remaining_life", "remaining_life")
duration = _from_method("duration", "duration")
convexity = _from_method("convexity", "convexity")
pvbp = _from_method("pvbp", "pvbp")
value_of_32nd = _from_method("value_of_32nd", "value_of_32nd")
risk = _from_method("risk", "risk")
coupon_amount = _from_method("coupon_amount", "coupon_amount")
coupon_date = _from_method("coupon_date", "coupon_date")
coupons_remaining = _from_method("coupons_remaining", "coupons_remaining")
ex_dividend_date = _from_method("ex_dividend_date", "ex_dividend_date")
average_life = _from_method("average_life", "average_life")
cashflows = _from_method("cashflows", "cashflows")
