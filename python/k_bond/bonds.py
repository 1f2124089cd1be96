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

import inspect

from .bond import Bond

_KW = inspect.Parameter.KEYWORD_ONLY
# Bond's description as keyword-only parameters, `type` spelled `bond_type`
# so that it does not shadow the built-in.
_BOND_PARAMETERS = tuple(
    p.replace(name="bond_type" if p.name == "type" else p.name, kind=_KW)
    for p in inspect.signature(Bond.__init__).parameters.values() if p.name != "self")
_BOND_NAMES = frozenset(p.name for p in _BOND_PARAMETERS)


def _from_method(public_name, method_name):
    """The one-call function for Bond.<method_name>: builds the Bond from its
    keywords and calls the method with the rest."""
    method = getattr(Bond, method_name)
    own = tuple(p.replace(kind=_KW) for p in inspect.signature(method).parameters.values()
                if p.name != "self")
    signature = inspect.Signature(own + _BOND_PARAMETERS,
                                  return_annotation=inspect.signature(method).return_annotation)

    def function(**arguments):
        bound = signature.bind(**arguments)  # TypeError for unknown or missing names
        bond = {("type" if k == "bond_type" else k): v
                for k, v in bound.arguments.items() if k in _BOND_NAMES}
        call = {k: v for k, v in bound.arguments.items() if k not in _BOND_NAMES}
        return getattr(Bond(**bond), method_name)(**call)

    function.__name__ = function.__qualname__ = public_name
    function.__module__ = __name__
    function.__signature__ = signature
    function.__doc__ = (inspect.getdoc(method) + "\n\nThe bond arguments are Bond's (bond_type "
                        f"for its `type`); see help(k_bond.Bond).")
    return function


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
