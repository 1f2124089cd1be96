"""Inflation-linked bonds: UK index-linked gilts (eight-month lag), U.S.
TIPS and French OATi.

    ilg = k_bond.IndexLinkedGilt(coupon=0.0125, maturity=date(2032, 11, 22),
                                 base_index=135.6)
    ilg.price(0.005, date(2025, 1, 15), latest_index=390.1,
              next_coupon_amount=1.79)

    tips = k_bond.Tips(coupon=0.01875, maturity=date(2034, 7, 15),
                       base_index=310.2)
    tips.price(0.02, date(2025, 1, 15), settlement_index=317.4)

Coupon rates are real and decimal (0.01875 for 1.875 %); yields are real,
decimal, compounded semi-annually (gilts, TIPS) or annually (OATi); prices
and amounts per 100 nominal; `inflation` is the assumed annual rate for
projected flows (default 0.03). Index values are one value (the reference
index) or the values of two consecutive months, interpolated by day.
Library errors raise KBondLibraryError (1 invalid argument or failed yield
search; for TIPS and OATi also 70 too many index values, 152/153 a bad
month or year in an index interpolation)."""

import ctypes
from typing import List, Optional, Sequence, Union

from . import _family
from ._arguments import as_float
from ._family import DateLike, Payment

Index = Union[float, Sequence[float]]


def _holiday_options(saturday_works, sunday_works):
    return _family.int_ref("holiday_options",
                           _family.weekend_flags(saturday_works, sunday_works))


class IndexLinkedGilt(_family.Described):
    """A UK index-linked gilt (eight-month indexation lag).

    coupon          real coupon rate before indexation, decimal (> 0)
    maturity        redemption date
    base_index      the bond's base RPI (> 0)
    inflation       assumed annual inflation for projected flows (default 0.03)
    pay_on_business_day   payments move to the following business day
    saturday_works, sunday_works, holidays   the calendar
    exdiv_days      ex-dividend rule: n >= 1 business days before the coupon,
                    n < 1 the coupon date plus n calendar days (default: the
                    gilt rule, seven business days)
    end_of_month    end-of-month rule of the schedule (None: from maturity)

    Market inputs of each measure: `latest_index` (the latest published RPI),
    `next_coupon_amount` (the next coupon in cash per 100, already fixed),
    `latest_index_date` (a date in the month of latest_index; None: the month
    two months before settlement), and optionally `previous_coupon` and
    `next_coupon` dates."""

    def __init__(self, *, coupon: float, maturity: DateLike, base_index: float,
                 inflation: Optional[float] = None, pay_on_business_day: Optional[bool] = None,
                 saturday_works: bool = False, sunday_works: bool = False,
                 holidays: Optional[Sequence[DateLike]] = None,
                 exdiv_days: Optional[int] = None, end_of_month: Optional[bool] = None) -> None:
        self.coupon = coupon
        self.maturity = maturity
        self.base_index = base_index
        self.inflation = inflation
        self.pay_on_business_day = pay_on_business_day
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.holidays = holidays
        self.exdiv_days = exdiv_days
        self.end_of_month = end_of_month
        self._cached("indexed", self._indexed_bond)  # refuses bad arguments at once

    def __repr__(self):
        return (f"IndexLinkedGilt(coupon={self.coupon!r}, maturity={self.maturity!r}, "
                f"base_index={self.base_index!r})")

    def _bond(self):
        holidays, n_holidays = _family.dates(self.holidays)
        return {"real_coupon": as_float("coupon", self.coupon),
                "maturity": _family.date_value("maturity", self.maturity),
                "holiday_options": _holiday_options(self.saturday_works, self.sunday_works),
                "holidays": holidays, "holiday_count": n_holidays,
                "ex_dividend_override": _family.int_ref("exdiv_days", self.exdiv_days),
                "end_of_month": _family.int_ref("end_of_month", self.end_of_month)}

    def _indexed_bond(self):
        own = self._bond()
        own.update({"base_index": as_float("base_index", self.base_index),
                    "inflation": _family.double_ref("inflation", self.inflation),
                    "pay_on_business_day": _family.int_ref("pay_on_business_day",
                                                           self.pay_on_business_day)})
        return own

    def _common(self, settlement, next_coupon_amount, previous_coupon, next_coupon,
                indexed=False):
        own = dict(self._cached("indexed", self._indexed_bond) if indexed
                   else self._cached("bond", self._bond))
        own.update({"next_coupon_amount": as_float("next_coupon_amount", next_coupon_amount),
                    "settlement": _family.date_value("settlement", settlement),
                    "previous_coupon": _family.date_ref(previous_coupon),
                    "next_coupon": _family.date_ref(next_coupon)})
        return own

    def _indexed(self, name, settlement, latest_index, next_coupon_amount, latest_index_date,
                 previous_coupon, next_coupon):
        """The export `name` (or its "2" variant when the month of the latest
        index is given) and its arguments."""
        own = self._common(settlement, next_coupon_amount, previous_coupon, next_coupon,
                           indexed=True)
        own["latest_index"] = as_float("latest_index", latest_index)
        if latest_index_date is not None:
            own["extra_date"] = _family.date_ref(latest_index_date)
            name += "2"
        return name, own

    def price(self, yield_: float, settlement: DateLike, *, latest_index: float,
              next_coupon_amount: float, latest_index_date: Optional[DateLike] = None,
              previous_coupon: Optional[DateLike] = None,
              next_coupon: Optional[DateLike] = None) -> float:
        """Cash clean price per 100 nominal at the real yield `yield_`
        (semi-annual), by the Debt Management Office's formula."""
        name, own = self._indexed("KVLilgpr", settlement, latest_index, next_coupon_amount,
                                  latest_index_date, previous_coupon, next_coupon)
        own["yield"] = as_float("yield_", yield_)
        return _family.call(name, own)

    def yield_(self, price: float, settlement: DateLike, *, latest_index: float,
               next_coupon_amount: float, latest_index_date: Optional[DateLike] = None,
               previous_coupon: Optional[DateLike] = None,
               next_coupon: Optional[DateLike] = None) -> float:
        """Real yield (decimal, semi-annual) from the cash clean price."""
        name, own = self._indexed("KVLilgyld", settlement, latest_index, next_coupon_amount,
                                  latest_index_date, previous_coupon, next_coupon)
        own["price"] = as_float("price", price)
        return _family.call(name, own)

    def accrued(self, settlement: DateLike, *, next_coupon_amount: float,
                previous_coupon: Optional[DateLike] = None,
                next_coupon: Optional[DateLike] = None) -> float:
        """Accrued interest per 100 nominal (6 decimals): the next coupon
        times the accrued share of the period, negative ex-dividend."""
        own = self._common(settlement, next_coupon_amount, previous_coupon, next_coupon)
        return _family.call("KVLilgai", own)

    def cashflows(self, settlement: DateLike, *, latest_index: float,
                  next_coupon_amount: float, latest_index_date: Optional[DateLike] = None,
                  previous_coupon: Optional[DateLike] = None,
                  next_coupon: Optional[DateLike] = None,
                  as_frame: bool = False) -> Union[List[Payment], "pandas.DataFrame"]:
        """Projected payments per 100 nominal as Payment(date, amount) rows
        or a DataFrame: the next coupon (0 when ex-dividend), the later
        coupons, and at maturity the final coupon plus the projected
        redemption."""
        name, own = self._indexed("KVLilgcshflw", settlement, latest_index,
                                  next_coupon_amount, latest_index_date, previous_coupon,
                                  next_coupon)
        redemption = ctypes.c_double(0.0)
        own["redemption_out"] = ctypes.byref(redemption)
        cols = _family.table(name, "KVLilgcshflw_free", ("dates_out", "amounts_out"), own)
        amounts = cols["amounts_out"]
        if amounts:
            amounts[-1] += redemption.value
        rows = zip(_family.to_dates(cols["dates_out"]), amounts)
        return _family.frame_or_rows(Payment, rows, as_frame)


class Tips(_family.Described):
    """A U.S. Treasury inflation-protected security (semi-annual coupons).

    coupon          real coupon rate, decimal (0.01875 for 1.875 %)
    maturity        redemption date
    base_index      the reference CPI of the dated date, or the CPI values
                    of its month pair [I0, I1]
    dated_date      dated date of the base index (None: the maturity's day
                    of the month)
    inflation       assumed annual inflation for projected flows (default 0.03)
    pay_on_business_day   cash-flow dates move to the following business day
    saturday_works, sunday_works, holidays   the calendar
    end_of_month    end-of-month rule of the schedule

    Market inputs of each measure: `settlement_index` (the reference index
    at settlement, or the CPI values of its month pair), optionally
    `next_coupon_amount` (the next coupon, inflation-adjusted, per 100; None:
    projected), `previous_coupon` and `next_coupon` dates. `adjusted` True
    quotes prices inflation-adjusted rather than real."""

    _PREFIX = "KVLtips"

    def __init__(self, *, coupon: float, maturity: DateLike, base_index: Index,
                 dated_date: Optional[DateLike] = None, inflation: Optional[float] = None,
                 pay_on_business_day: Optional[bool] = None, saturday_works: bool = False,
                 sunday_works: bool = False, holidays: Optional[Sequence[DateLike]] = None,
                 end_of_month: Optional[bool] = None) -> None:
        self.coupon = coupon
        self.maturity = maturity
        self.base_index = base_index
        self.dated_date = dated_date
        self.inflation = inflation
        self.pay_on_business_day = pay_on_business_day
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.holidays = holidays
        self.end_of_month = end_of_month
        self._cached("bond", self._bond)  # refuses bad arguments at once

    def __repr__(self):
        return (f"{type(self).__name__}(coupon={self.coupon!r}, maturity={self.maturity!r}, "
                f"base_index={self.base_index!r})")

    def _bond(self):
        base, n_base = _family.doubles("base_index", self.base_index)
        holidays, n_holidays = _family.dates(self.holidays)
        # The library takes the real coupon in percent.
        return {"coupon": 100.0 * as_float("coupon", self.coupon),
                "base_index": base, "base_count": n_base,
                "maturity": _family.date_value("maturity", self.maturity),
                "holiday_options": _holiday_options(self.saturday_works, self.sunday_works),
                "holidays": holidays, "holiday_count": n_holidays,
                "end_of_month": _family.int_ref("end_of_month", self.end_of_month),
                "option_a": _family.int_ref("pay_on_business_day", self.pay_on_business_day),
                "inflation": _family.double_ref("inflation", self.inflation),
                "option_c": _family.date_ref(self.dated_date)}

    def _common(self, settlement, settlement_index, previous_coupon, next_coupon):
        own = dict(self._cached("bond", self._bond))
        index, n_index = _family.doubles("settlement_index", settlement_index)
        own.update({"settlement_index": index, "settlement_index_count": n_index,
                    "settlement": _family.date_value("settlement", settlement),
                    "previous_coupon": _family.date_ref(previous_coupon),
                    "next_coupon": _family.date_ref(next_coupon)})
        return own

    def _projected(self, settlement, settlement_index, next_coupon_amount, adjusted,
                   previous_coupon, next_coupon):
        own = self._common(settlement, settlement_index, previous_coupon, next_coupon)
        own.update({"next_coupon_amount": _family.double_ref("next_coupon_amount",
                                                             next_coupon_amount),
                    "option_b": 1 if adjusted else 0})
        return own

    def _at_yield(self, measure, yield_, settlement, settlement_index, next_coupon_amount,
                  adjusted, previous_coupon, next_coupon):
        own = self._projected(settlement, settlement_index, next_coupon_amount, adjusted,
                              previous_coupon, next_coupon)
        own["yield"] = as_float("yield_", yield_)
        return _family.call(self._PREFIX + measure, own)

    def price(self, yield_: float, settlement: DateLike, *, settlement_index: Index,
              next_coupon_amount: Optional[float] = None, adjusted: bool = False,
              previous_coupon: Optional[DateLike] = None,
              next_coupon: Optional[DateLike] = None) -> float:
        """Real clean price per 100 at the real yield `yield_` (3 decimals);
        inflation-adjusted when `adjusted`."""
        return self._at_yield("pr", yield_, settlement, settlement_index, next_coupon_amount,
                              adjusted, previous_coupon, next_coupon)

    def yield_(self, price: float, settlement: DateLike, *, settlement_index: Index,
               next_coupon_amount: Optional[float] = None, adjusted: bool = False,
               previous_coupon: Optional[DateLike] = None,
               next_coupon: Optional[DateLike] = None) -> float:
        """Real yield (decimal) from a clean price per 100, real or (when
        `adjusted`) inflation-adjusted."""
        own = self._projected(settlement, settlement_index, next_coupon_amount, adjusted,
                              previous_coupon, next_coupon)
        own["price"] = as_float("price", price)
        return _family.call(self._PREFIX + "yld", own)

    def duration(self, yield_: float, settlement: DateLike, *, settlement_index: Index,
                 next_coupon_amount: Optional[float] = None,
                 previous_coupon: Optional[DateLike] = None,
                 next_coupon: Optional[DateLike] = None) -> float:
        """Modified duration in years at the real yield `yield_`."""
        return self._at_yield("dur", yield_, settlement, settlement_index, next_coupon_amount,
                              False, previous_coupon, next_coupon)

    def convexity(self, yield_: float, settlement: DateLike, *, settlement_index: Index,
                  next_coupon_amount: Optional[float] = None,
                  previous_coupon: Optional[DateLike] = None,
                  next_coupon: Optional[DateLike] = None) -> float:
        """Convexity in years squared at the real yield `yield_`."""
        return self._at_yield("conv", yield_, settlement, settlement_index,
                              next_coupon_amount, False, previous_coupon, next_coupon)

    def accrued(self, settlement: DateLike, *, settlement_index: Index,
                previous_coupon: Optional[DateLike] = None,
                next_coupon: Optional[DateLike] = None) -> float:
        """Inflation-adjusted accrued interest per 100 (6 decimals): the
        accrued share of the coupon times the index ratio."""
        own = self._common(settlement, settlement_index, previous_coupon, next_coupon)
        # The accrual takes neither the projection's options nor the inflation.
        return _family.call(self._PREFIX + "ai", {}, own)

    def cashflows(self, settlement: DateLike, *, settlement_index: Index,
                  next_coupon_amount: Optional[float] = None,
                  previous_coupon: Optional[DateLike] = None,
                  next_coupon: Optional[DateLike] = None,
                  as_frame: bool = False) -> Union[List[Payment], "pandas.DataFrame"]:
        """Projected inflation-adjusted payments per 100 as Payment(date,
        amount) rows or a DataFrame, the redemption (never below par) on the
        last row."""
        own = self._projected(settlement, settlement_index, next_coupon_amount, False,
                              previous_coupon, next_coupon)
        cols = _family.table(self._PREFIX + "cshflw", self._PREFIX + "cshflw_free",
                             ("dates_out", "amounts_out"), own)
        rows = zip(_family.to_dates(cols["dates_out"]), cols["amounts_out"])
        return _family.frame_or_rows(Payment, rows, as_frame)


class Oati(Tips):
    """A French inflation-indexed OAT (annual coupons, French CPI): the
    arguments and measures of Tips; yields are annual. The clean price is
    the inflation-adjusted dirty value cut at 6 decimals, less accrued
    interest, over the index ratio."""

    _PREFIX = "KVLoati"
