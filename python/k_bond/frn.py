"""Floating-rate notes: FRN types, margins, price, yield, risk and cash flows.

A note with no `frn_type` uses the library's default type: two resets a
year, actual/360 on a 360-day year, dates not adjusted, no end-of-month rule.
An FrnType registers other conventions and is released when closed:

    with k_bond.FrnType(frequency=4, day_count="act/365") as quarterly:
        note = k_bond.FloatingRateNote(maturity=..., frn_type=quarterly, ...)

A rate schedule is `rates` (decimals, >= 0) with `rate_dates` (ascending):
each rate applies from its date until the next one, and a period's coupon is
the day-weighted average of the rates in force over it. Prices are clean,
per 100; yields decimal per year compounded at the type's frequency; margins
decimal per year. Dates are datetime.date, datetime, numpy.datetime64,
pandas Timestamp, ISO strings or serials. Library errors raise
KBondLibraryError (300-306 invalid type field, 350 bad price, 901 unknown or
closed type, ...)."""

from typing import List, Optional, Sequence, Union

from . import _family
from ._arguments import as_float
from ._family import DateLike, Payment
from ._one_call import from_method
from .errors import KBondArgumentError

# FRN day-count codes.
DAY_COUNTS = {"act/360": 0, "act/365": 1, "act/365.25": 2, "30/360": 3, "30e/360": 4,
              "act/period": 5}
BUSINESS_DAY_RULES = {"following": 0, "preceding": 1, "modified_following": 2,
                      "unadjusted": 3}


def _holiday_options(saturday_works, sunday_works):
    # The FRN option is one value: 1 Saturday works, 2 Sunday works.
    return _family.weekend_flags(saturday_works, sunday_works)


class FrnType:
    """A registered FRN type (KVLfrntype), released by close(), at the end
    of a `with` block, or when the object is collected.

    frequency           resets a year: 1, 2, 3, 4, 6, 12, 26, 52 (default 2)
    day_count           "act/360", "act/365", "act/365.25", "30/360",
                        "30e/360", "act/period" or the code 0-5 (default act/360)
    business_day_rule   "following", "preceding", "modified_following",
                        "unadjusted" or 0-3 (default unadjusted)
    end_of_month        month-end dates stay at month end (default False)
    saturday_works, sunday_works   one of the weekend days is a business day
    pay_on_business_day coupons and redemption paid and discounted on
                        business days (default False)
    year_length         days per year (None or 0: from the day count)
    extra_accrual_days  days added to accrued interest (default 0)
    base                a type whose fields the None arguments keep
    Invalid fields raise KBondLibraryError with codes 300-306."""

    def __init__(self, *, frequency: Optional[int] = None,
                 day_count: Union[str, int, None] = None,
                 business_day_rule: Union[str, int, None] = None,
                 end_of_month: Optional[bool] = None, saturday_works: bool = False,
                 sunday_works: bool = False, pay_on_business_day: Optional[bool] = None,
                 year_length: Optional[float] = None,
                 extra_accrual_days: Optional[int] = None,
                 base: Optional["FrnType"] = None) -> None:
        self._handle = 0
        base_handle = 0 if base is None else base.handle
        self._handle = _family.call("KVLfrntype", {
            "base": base_handle,
            "frequency": _family.int_ref("frequency", frequency),
            "day_count": _family.int_ref(
                "day_count", _family.choice("day_count", day_count, DAY_COUNTS)),
            "business_day_rule": _family.int_ref(
                "business_day_rule",
                _family.choice("business_day_rule", business_day_rule, BUSINESS_DAY_RULES)),
            "end_of_month": _family.int_ref("end_of_month", end_of_month),
            "holiday_options": _family.int_ref(
                "holiday_options", _holiday_options(saturday_works, sunday_works)),
            "option_flag": _family.int_ref("pay_on_business_day", pay_on_business_day),
            "year_length": _family.double_ref("year_length", year_length),
            "extra_accrual_days": _family.int_ref("extra_accrual_days", extra_accrual_days)})

    @property
    def handle(self) -> int:
        """The library's handle of the type; KBondArgumentError once closed."""
        if not self._handle:
            raise KBondArgumentError("the FRN type has been closed", 901)
        return self._handle

    @property
    def closed(self) -> bool:
        """True once the type has been released."""
        return not self._handle

    def close(self) -> None:
        """Releases the type (KVLfreefrntype); closing twice is harmless."""
        handle, self._handle = self._handle, 0
        if handle:
            _family.call("KVLfreefrntype", {"handle": handle})

    def __enter__(self) -> "FrnType":
        return self

    def __exit__(self, *exc) -> None:
        self.close()

    def __del__(self):
        try:
            self.close()
        except Exception:  # interpreter shutting down: the process frees it
            pass

    def __repr__(self):
        return f"FrnType(handle={self._handle})" if self._handle else "FrnType(closed)"


class FloatingRateNote(_family.Described):
    """A floating-rate note.

    FloatingRateNote(maturity=date(2028, 6, 30), rates=[0.05],
                     rate_dates=[date(2024, 12, 31)])

    maturity            redemption date
    rates, rate_dates   the rate schedule (needed by every measure but the
                        margins)
    frn_type            an FrnType (None: the default type)
    coupon_dates        known coupon (reset) dates, ascending, none after
                        maturity (None: stepped back from maturity)
    previous_coupon     the coupon date before settlement, when known
    day_count, frequency   overrides of the type for this note
    redemption          per 100 (default 100)
    income_tax, gain_tax   tax rates (default 0)
    holding             months (or days when above 24) within which a gain
                        is taxed as income (default 12)
    pay_on_business_day coupons and redemption paid and discounted on the
                        following business day
    business_day_rule, end_of_month   adjustment of the schedule's dates
    saturday_works, sunday_works, holidays   the calendar"""

    def __init__(self, *, maturity: DateLike, rates: Optional[Sequence[float]] = None,
                 rate_dates: Optional[Sequence[DateLike]] = None,
                 frn_type: Optional[FrnType] = None,
                 coupon_dates: Optional[Sequence[DateLike]] = None,
                 previous_coupon: Optional[DateLike] = None,
                 day_count: Union[str, int, None] = None, frequency: Optional[int] = None,
                 redemption: Optional[float] = None, income_tax: Optional[float] = None,
                 gain_tax: Optional[float] = None, holding: Optional[int] = None,
                 pay_on_business_day: Optional[bool] = None,
                 business_day_rule: Union[str, int, None] = None,
                 end_of_month: Optional[bool] = None, saturday_works: bool = False,
                 sunday_works: bool = False,
                 holidays: Optional[Sequence[DateLike]] = None) -> None:
        if frn_type is not None and not isinstance(frn_type, FrnType):
            raise KBondArgumentError(
                f"frn_type must be an FrnType, not {type(frn_type).__name__}", 901)
        self.maturity = maturity
        self.rates = rates
        self.rate_dates = rate_dates
        self.frn_type = frn_type
        self.coupon_dates = coupon_dates
        self.previous_coupon = previous_coupon
        self.day_count = day_count
        self.frequency = frequency
        self.redemption = redemption
        self.income_tax = income_tax
        self.gain_tax = gain_tax
        self.holding = holding
        self.pay_on_business_day = pay_on_business_day
        self.business_day_rule = business_day_rule
        self.end_of_month = end_of_month
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.holidays = holidays
        self._cached("dates", self._note_dates)  # refuses bad arguments at once

    def __repr__(self):
        return f"FloatingRateNote(maturity={self.maturity!r}, rates={self.rates!r})"

    # -- argument building ------------------------------------------------

    def _dates(self, settlement):
        own = dict(self._cached("dates", self._note_dates))
        own["settlement"] = _family.date_value("settlement", settlement)
        return own

    def _note_dates(self):
        return {"maturity": _family.date_value("maturity", self.maturity),
                "previous_coupon": _family.date_ref(self.previous_coupon),
                "day_count": _family.int_ref(
                    "day_count", _family.choice("day_count", self.day_count, DAY_COUNTS)),
                "frequency": _family.int_ref("frequency", self.frequency)}

    def _adjustment(self):
        if self.business_day_rule is None and self.end_of_month is None:
            return None
        rule = _family.choice("business_day_rule", self.business_day_rule, BUSINESS_DAY_RULES)
        return 2 * (3 if rule is None else rule) + (1 if self.end_of_month else 0)

    def _note_schedule(self):
        if self.rates is None or self.rate_dates is None:
            raise KBondArgumentError("rates and rate_dates are required", 50)
        rate_buf, n_rates = _family.doubles("rates", self.rates)
        date_buf, n_dates = _family.dates(self.rate_dates)
        if n_rates != n_dates:
            raise KBondArgumentError("rates and rate_dates must have the same length", 60)
        holiday_buf, n_holidays = _family.dates(self.holidays)
        coupon_buf, n_coupon_dates = _family.dates(self.coupon_dates)
        own = self._note_dates()
        own.update({
            "rates": rate_buf, "rate_dates": date_buf, "rate_count": n_rates,
            "adjustment_code": _family.int_ref("adjustment_code", self._adjustment()),
            "holiday_options": _family.int_ref(
                "holiday_options", _holiday_options(self.saturday_works, self.sunday_works)),
            "holidays": holiday_buf, "holiday_count": n_holidays,
            "coupon_dates": coupon_buf, "coupon_count": n_coupon_dates})
        return own

    def _note_valuation(self):
        own = dict(self._note_schedule())
        own.update({
            "redemption": _family.double_ref("redemption", self.redemption),
            "income_tax": _family.double_ref("income_tax", self.income_tax),
            "gain_tax": _family.double_ref("gain_tax", self.gain_tax),
            "holding": _family.int_ref("holding", self.holding),
            "pay_on_business_day": _family.int_ref("pay_on_business_day",
                                                   self.pay_on_business_day)})
        return own

    def _schedule(self, settlement):
        """The rate schedule, dates and calendar at `settlement`."""
        own = dict(self._cached("schedule", self._note_schedule))
        own["settlement"] = _family.date_value("settlement", settlement)
        return own

    def _valuation(self, settlement):
        own = dict(self._cached("valuation", self._note_valuation))
        own["settlement"] = _family.date_value("settlement", settlement)
        return own

    def _export(self, measure, own):
        """Calls KVLfrn<measure>, or KVLtfrn<measure> with the note's type."""
        if self.frn_type is None:
            return "KVLfrn" + measure, own
        own["type"] = self.frn_type.handle
        return "KVLtfrn" + measure, own

    def _call(self, measure, own):
        return _family.call(*self._export(measure, own))

    # -- measures -----------------------------------------------------------

    def price(self, yield_: float, settlement: DateLike) -> float:
        """Clean price per 100 at `yield_`. Errors: 250 yield not a number,
        1 no price at that yield."""
        own = self._valuation(settlement)
        own["yield"] = as_float("yield_", yield_)
        return self._call("pr", own)

    def yield_(self, price: float, settlement: DateLike) -> float:
        """Yield (decimal) from a clean price per 100. Errors: 350 price not
        positive, 1 the solver failed."""
        own = self._valuation(settlement)
        own["price"] = as_float("price", price)
        return self._call("yld", own)

    def accrued(self, settlement: DateLike) -> float:
        """Accrued interest per 100 (with the type's extra accrual days)."""
        return self._call("ai", self._schedule(settlement))

    def coupon_amount(self, settlement: DateLike, *,
                      next_coupon: Optional[DateLike] = None) -> float:
        """Coupon of the current period per 100; `next_coupon` is a known
        reset date (the note's coupon_dates are not used here)."""
        own = self._schedule(settlement)
        del own["coupon_dates"], own["coupon_count"]
        own["next_coupon"] = _family.date_ref(next_coupon)
        return self._call("camt", own)

    def duration(self, yield_: float, settlement: DateLike, *,
                 macaulay: bool = False) -> float:
        """Modified duration in years at `yield_`; Macaulay when asked."""
        own = self._valuation(settlement)
        own.update({"yield": as_float("yield_", yield_),
                    "macaulay": _family.int_ref("macaulay", bool(macaulay))})
        return self._call("dur", own)

    def convexity(self, yield_: float, settlement: DateLike) -> float:
        """Convexity (d2P/dy2 over the dirty price) at `yield_`."""
        own = self._valuation(settlement)
        own["yield"] = as_float("yield_", yield_)
        return self._call("conv", own)

    def pvbp(self, yield_: float, settlement: DateLike, *,
             scale: Optional[float] = None) -> float:
        """Price change per 100 for one basis point of yield: dP/dy per
        percentage point over `scale` (default 100). Error 1 for a scale <= 0."""
        own = self._valuation(settlement)
        own.update({"yield": as_float("yield_", yield_),
                    "divisor": _family.double_ref("scale", scale)})
        return self._call("valbp", own)

    def value_of_32nd(self, yield_: float, settlement: DateLike, *,
                      ticks: Optional[float] = None) -> float:
        """dP/dy per percentage point over `ticks` (default 32): pvbp x 100 /
        ticks. Error 1 for ticks <= 0."""
        own = self._valuation(settlement)
        own.update({"yield": as_float("yield_", yield_),
                    "divisor": _family.double_ref("ticks", ticks)})
        return self._call("val32", own)

    def cashflows(self, settlement: DateLike, *, price: Optional[float] = None,
                  as_frame: bool = False) -> Union[List[Payment], "pandas.DataFrame"]:
        """The payments from the current period to maturity per 100, as
        Payment(date, amount) rows or a DataFrame: after-tax coupons, the
        last row with the redemption (less the gain tax on redemption -
        `price` when a clean price below it is given)."""
        own = self._valuation(settlement)
        own["price"] = _family.double_ref("price", price)
        name, own = self._export("cshflw", own)
        cols = _family.table(name, "KVLfrncshflw_free", ("dates_out", "amounts_out"), own)
        rows = zip(_family.to_dates(cols["dates_out"]), cols["amounts_out"])
        return _family.frame_or_rows(Payment, rows, as_frame)

    def _margin_arguments(self, price, settlement, next_coupon):
        own = self._dates(settlement)
        own.update({"price": as_float("price", price),
                    "next_coupon": _family.date_ref(next_coupon),
                    "end_of_month": _family.int_ref("end_of_month", self.end_of_month)})
        return own

    def simple_margin(self, price: float, settlement: DateLike, *, current_coupon: float,
                      index_rate: float, quoted_margin: float,
                      next_coupon: Optional[DateLike] = None) -> float:
        """Simple margin (decimal per year) at a clean price: the quoted
        margin plus the discount to par spread over the life, the current
        period at its fixed `current_coupon`, later ones at `index_rate`.
        Errors: 350 price not positive, 400 no life left."""
        own = self._margin_arguments(price, settlement, next_coupon)
        own.update({"current_coupon": as_float("current_coupon", current_coupon),
                    "index_rate": as_float("index_rate", index_rate),
                    "quoted_margin": as_float("quoted_margin", quoted_margin)})
        return self._call("sm", own)

    def discount_margin(self, price: float, settlement: DateLike, *, current_coupon: float,
                        stub_rate: float, index_rate: float, quoted_margin: float,
                        next_coupon: Optional[DateLike] = None) -> float:
        """Discount margin (decimal per year) at a clean price: the margin
        over the index at which the projected coupons and the redemption,
        discounted at `stub_rate` + margin to the next coupon date, give the
        dirty price. Error 400 when a discount denominator vanishes."""
        own = self._margin_arguments(price, settlement, next_coupon)
        own.update({"current_coupon": as_float("current_coupon", current_coupon),
                    "stub_rate": as_float("stub_rate", stub_rate),
                    "index_rate": as_float("index_rate", index_rate),
                    "quoted_margin": as_float("quoted_margin", quoted_margin)})
        return self._call("dm", own)


# -- functions ------------------------------------------------------------------

def simple_margin(*, maturity: DateLike, settlement: DateLike, current_coupon: float,
                  price: float, index_rate: float, quoted_margin: float,
                  previous_coupon: Optional[DateLike] = None,
                  next_coupon: Optional[DateLike] = None,
                  day_count: Union[str, int, None] = None, frequency: Optional[int] = None,
                  end_of_month: Optional[bool] = None,
                  frn_type: Optional[FrnType] = None) -> float:
    """Simple margin (decimal per year) of an FRN at a clean price per 100;
    see FloatingRateNote.simple_margin."""
    note = FloatingRateNote(maturity=maturity, previous_coupon=previous_coupon,
                            day_count=day_count, frequency=frequency,
                            end_of_month=end_of_month, frn_type=frn_type)
    return note.simple_margin(price, settlement, current_coupon=current_coupon,
                              index_rate=index_rate, quoted_margin=quoted_margin,
                              next_coupon=next_coupon)


def discount_margin(*, maturity: DateLike, settlement: DateLike, current_coupon: float,
                    price: float, period_rate: float, index_rate: float, quoted_margin: float,
                    previous_coupon: Optional[DateLike] = None,
                    next_coupon: Optional[DateLike] = None,
                    day_count: Union[str, int, None] = None, frequency: Optional[int] = None,
                    end_of_month: Optional[bool] = None,
                    frn_type: Optional[FrnType] = None) -> float:
    """Discount margin (decimal per year) of an FRN at a clean price per 100;
    `period_rate` is the money-market rate from settlement to the next
    coupon date. See FloatingRateNote.discount_margin."""
    note = FloatingRateNote(maturity=maturity, previous_coupon=previous_coupon,
                            day_count=day_count, frequency=frequency,
                            end_of_month=end_of_month, frn_type=frn_type)
    return note.discount_margin(price, settlement, current_coupon=current_coupon,
                                stub_rate=period_rate, index_rate=index_rate,
                                quoted_margin=quoted_margin, next_coupon=next_coupon)


price = from_method(FloatingRateNote, "price", "price", __name__)
frn_yield = from_method(FloatingRateNote, "yield_", "frn_yield", __name__)
accrued = from_method(FloatingRateNote, "accrued", "accrued", __name__)
