"""Perpetual bonds: coupons for ever, no redemption.

    consol = k_bond.Perpetual(coupon=0.04, reference_date=date(2024, 12, 15),
                              bond_type="gilt")
    consol.price(0.045, date(2025, 1, 15))

Prices are clean, per 100 of face; yields decimal per year compounded at
the coupon frequency; repo rates decimal per year. Dates are datetime.date,
datetime, numpy.datetime64, pandas Timestamp, ISO strings or serials.
Library errors raise KBondLibraryError (1 inconsistent description, 401 zero
yield, 460 a yield method with no perpetual form, 160 an end date not after
settlement, -60 custom-type lock)."""

import datetime as _dt
from typing import Optional, Sequence, Union

from . import _family
from ._arguments import as_float
from ._family import DateLike, Rates
from .dates import from_serial
from .types import type_code

# How coupons are reckoned; a positive code pays on the following business day.
YIELD_METHODS = {"type": 0, "compound": -1, "simple": -2, "braess": -3, "moosmueller": -4,
                 "compound_actual": -6, "business_days": 1}
_FINANCING = {"simple": 0, "whole_period": 2, "continuous": 4}


def _mode(financing, reinvest):
    code = _family.choice("financing", financing, _FINANCING)
    return _family.int_ref("mode", code | (1 if reinvest else 0))


class Perpetual(_family.Described):
    """A perpetual bond.

    coupon          annual rate (decimal), or one rate per step date with
                    `step_dates` (rate i holds until step_dates[i], and the
                    last rate for ever after)
    reference_date  any coupon date: the cycle runs through it every
                    12/frequency months
    bond_type       code or name (None: U.S. Treasury conventions)
    frequency       coupons per year 1, 2, 3, 4, 6, 12 (None: the type's)
    withholding_tax fraction withheld from every coupon (default 0)
    yield_method    "type" (the type's conventions, default), "compound",
                    "simple" (perpetuity formula), "moosmueller",
                    "compound_actual", "business_days" (coupons paid on the
                    following business day), or the library's code
    saturday_works, sunday_works, holidays   the calendar
    dated_date      start of accrual of a new issue (None: every period
                    is regular)"""

    def __init__(self, *, coupon: Rates, reference_date: DateLike,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 bond_type: Union[int, str, None] = None, frequency: Optional[int] = None,
                 withholding_tax: Optional[float] = None,
                 yield_method: Union[str, int, None] = None, saturday_works: bool = False,
                 sunday_works: bool = False, holidays: Optional[Sequence[DateLike]] = None,
                 dated_date: Optional[DateLike] = None) -> None:
        self.coupon = coupon
        self.reference_date = reference_date
        self.step_dates = step_dates
        self.bond_type = bond_type
        self.frequency = frequency
        self.withholding_tax = withholding_tax
        self.yield_method = yield_method
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.holidays = holidays
        self.dated_date = dated_date
        self._cached("bond", self._bond)  # refuses bad arguments at once

    def __repr__(self):
        return (f"Perpetual(coupon={self.coupon!r}, reference_date={self.reference_date!r}, "
                f"bond_type={self.bond_type!r})")

    def _arguments(self, settlement):
        own = dict(self._cached("bond", self._bond))
        own["settlement"] = _family.date_value("settlement", settlement)
        return own

    def _bond(self):
        coupons, n_coupons = _family.doubles("coupon", self.coupon)
        steps, n_steps = _family.dates(self.step_dates)
        holidays, n_holidays = _family.dates(self.holidays)
        return {
            "coupons": coupons, "n_coupons": n_coupons,
            "reference_date": _family.date_value("reference_date", self.reference_date),
            "step_dates": steps, "n_steps": n_steps,
            "type": _family.int_ref("bond_type", type_code(self.bond_type)),
            "frequency": _family.int_ref("frequency", self.frequency),
            "withholding_tax": _family.double_ref("withholding_tax", self.withholding_tax),
            "ex_coupon_rule": _family.int_ref(
                "yield_method", _family.choice("yield_method", self.yield_method,
                                               YIELD_METHODS)),
            "calendar_flags": _family.int_ref(
                "calendar_flags", _family.weekend_flags(self.saturday_works, self.sunday_works)),
            "holidays": holidays, "n_holidays": n_holidays,
            "dated_date": _family.date_ref(self.dated_date)}

    def coupon_date(self, settlement: DateLike, k: int = 0) -> _dt.date:
        """A coupon date of the cycle counted from settlement: 0 the last on
        or before it, 1 the next, -1 the one before the last."""
        serial = _family.call("KVLpbcpn", {
            "reference_date": _family.date_value("reference_date", self.reference_date),
            "settlement": _family.date_value("settlement", settlement),
            "k": _family.int_ref("k", k),
            "type": _family.int_ref("bond_type", type_code(self.bond_type)),
            "frequency": _family.int_ref("frequency", self.frequency)})
        return from_serial(serial)

    def price(self, yield_: float, settlement: DateLike) -> float:
        """Clean price per 100 at `yield_`, rounded as the type's bonds are."""
        return _family.call("KVLpbpr", {"yield": as_float("yield_", yield_)},
                            self._arguments(settlement))

    def yield_(self, price: float, settlement: DateLike) -> float:
        """Yield (decimal) from a clean price per 100. Errors: 350 price not
        positive, 1 no yield found."""
        return _family.call("KVLpbyld", {"price": as_float("price", price)},
                            self._arguments(settlement))

    def accrued(self, settlement: DateLike) -> float:
        """Accrued interest per 100 net of withholding tax, negative in the
        type's ex-dividend period."""
        return _family.call("KVLpbai", {}, self._arguments(settlement))

    def coupon_amount(self, settlement: DateLike) -> float:
        """The current period's coupon per 100, net of withholding tax."""
        return _family.call("KVLpbcamt", {}, self._arguments(settlement))

    def duration(self, yield_: float, settlement: DateLike, *,
                 macaulay: bool = False) -> float:
        """Modified duration in years at `yield_`; Macaulay when asked."""
        return _family.call("KVLpbdur", {"yield": as_float("yield_", yield_),
                                         "duration_kind": _family.int_ref("macaulay", macaulay)},
                            self._arguments(settlement))

    def convexity(self, yield_: float, settlement: DateLike) -> float:
        """Convexity (d2P/dy2 over the dirty price) at `yield_`."""
        return _family.call("KVLpbconv", {"yield": as_float("yield_", yield_)},
                            self._arguments(settlement))

    def pvbp(self, yield_: float, settlement: DateLike, *,
             scale: Optional[float] = None) -> float:
        """Price value of a basis point per 100: -dP/dy / `scale` (default
        100). Error 310 for a scale not above 0."""
        return _family.call("KVLpbvalbp", {"yield": as_float("yield_", yield_),
                                           "scale": _family.double_ref("scale", scale)},
                            self._arguments(settlement))

    def value_of_32nd(self, yield_: float, settlement: DateLike, *,
                      ticks: Optional[float] = None) -> float:
        """Yield value of one tick in basis points, 1 / (pvbp x `ticks`)
        (default 32). Error 310 for ticks not above 0, 401 no price move."""
        return _family.call("KVLpbval32", {"yield": as_float("yield_", yield_),
                                           "ticks": _family.double_ref("ticks", ticks)},
                            self._arguments(settlement))

    def carry(self, price: float, settlement: DateLike, repo: float, end_date: DateLike, *,
              financing: str = "simple", reinvest: bool = False) -> float:
        """Carry per 100 to `end_date` financed at `repo`: accrued interest
        gained plus coupons (reinvested at the repo rate when `reinvest`)
        less the financing of price plus accrued. `financing` is "simple",
        "whole_period" or "continuous"."""
        return _family.call("KVLpbcarry", {
            "end_date": _family.date_value("end_date", end_date),
            "price": as_float("price", price), "repo_rate": as_float("repo", repo),
            "mode": _mode(financing, reinvest)}, self._arguments(settlement))

    def forward(self, price: float, settlement: DateLike, repo: float,
                forward_date: DateLike, *, reinvestment: Optional[float] = None,
                financing: str = "simple", reinvest: bool = False) -> float:
        """Forward clean price per 100 at `forward_date`: price less carry,
        coupons reinvested at `reinvestment` (None: the repo rate)."""
        return _family.call("KVLpbfwd", {
            "forward_date": _family.date_value("forward_date", forward_date),
            "price": as_float("price", price), "repo_rate": as_float("repo", repo),
            "reinvestment": _family.double_ref("reinvestment", reinvestment),
            "mode": _mode(financing, reinvest)}, self._arguments(settlement))

    def implied_repo(self, price: float, settlement: DateLike, forward_price: float,
                     forward_date: DateLike, *, reinvestment: Optional[float] = None,
                     financing: str = "simple", reinvest: bool = False) -> float:
        """Repo rate (decimal) at which the forward price for `forward_date`
        is `forward_price`. Error 1 when no rate in [-4, 15] fits."""
        return _family.call("KVLpbirepo", {
            "price": as_float("price", price),
            "forward_price": as_float("forward_price", forward_price),
            "forward_date": _family.date_value("forward_date", forward_date),
            "reinvestment": _family.double_ref("reinvestment", reinvestment),
            "mode": _mode(financing, reinvest)}, self._arguments(settlement))
