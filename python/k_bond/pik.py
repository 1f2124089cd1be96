"""PIK (payment-in-kind) bonds: each coupon is paid partly in cash and
partly in kind, the in-kind part being added to the principal.

    pik = k_bond.PikBond(cash_rate=0.06, pik_rate=0.04,
                         maturity=date(2029, 6, 15), bond_type="corporate")
    pik.price(0.09, date(2025, 1, 15))

Rates and yields are decimal per year (yields compounded at the coupon
frequency); prices, accrued interest and cash flows per 100 of ORIGINAL
face. Library errors raise KBondLibraryError (1 invalid description, 401 a
vanishing discount denominator, 460 a price not above 0, 310 a scale or
tick size not above 0, -60 custom-type lock)."""

from collections import namedtuple
from typing import List, Optional, Sequence, Union

from . import _family
from ._arguments import as_float
from ._family import DateLike, Rates
from .errors import KBondArgumentError
from .types import type_code

Cashflow = namedtuple("Cashflow", "date coupon principal periods")


class PikBond(_family.Described):
    """A PIK bond.

    cash_rate, pik_rate   cash and in-kind coupon rates (decimal per year),
                    each a single rate or one per step date
    maturity        the last step date (with step_dates, maturity must be
                    their last element or None)
    step_dates      ascending dates up to which each rate is in force
    bond_type       0 (Treasury), 3 (corporate), 500, 510, 530, 540 (generic
                    act/act, act/365, 30/360, 30E/360) or their end-of-month
                    variants, by code or name; others: error 1
    frequency       coupons per year 1, 2, 3, 4, 6, 12 (None: the type's)
    dated_date, first_coupon   coupon schedule overrides
    redemption      per 100 of face (default 100)
    call_date       redemption date (None: maturity)
    pay_on_business_day   payments move to the following business day
    saturday_works, sunday_works, holidays   the calendar"""

    def __init__(self, *, cash_rate: Rates, pik_rate: Rates,
                 maturity: Optional[DateLike] = None,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 bond_type: Union[int, str, None] = None, frequency: Optional[int] = None,
                 dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                 redemption: Optional[float] = None, call_date: Optional[DateLike] = None,
                 pay_on_business_day: Optional[bool] = None, saturday_works: bool = False,
                 sunday_works: bool = False,
                 holidays: Optional[Sequence[DateLike]] = None) -> None:
        if step_dates is None:
            if maturity is None:
                raise KBondArgumentError("maturity or step_dates is required", 1)
            step_dates = [maturity]
        elif maturity is not None and (_family.date_value("maturity", maturity)
                                       != _family.date_value("step_dates", step_dates[-1])):
            raise KBondArgumentError("maturity must be the last of step_dates", 1)
        self.cash_rate = cash_rate
        self.pik_rate = pik_rate
        self.maturity = step_dates[-1]
        self.step_dates = step_dates
        self.bond_type = bond_type
        self.frequency = frequency
        self.dated_date = dated_date
        self.first_coupon = first_coupon
        self.redemption = redemption
        self.call_date = call_date
        self.pay_on_business_day = pay_on_business_day
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.holidays = holidays
        self._cached("bond", self._bond)  # refuses bad arguments at once

    def __repr__(self):
        return (f"PikBond(cash_rate={self.cash_rate!r}, pik_rate={self.pik_rate!r}, "
                f"maturity={self.maturity!r})")

    def _arguments(self, settlement):
        own = dict(self._cached("bond", self._bond))
        own["settlement"] = _family.date_value("settlement", settlement)
        return own

    def _bond(self):
        cash, n_cash = _family.doubles("cash_rate", self.cash_rate)
        pik, n_pik = _family.doubles("pik_rate", self.pik_rate)
        steps, n_steps = _family.dates(self.step_dates)
        holidays, n_holidays = _family.dates(self.holidays)
        return {"cash_rates": cash, "n_cash": n_cash, "pik_rates": pik, "n_pik": n_pik,
                "dates": steps, "n_dates": n_steps,
                "dated_date": _family.date_ref(self.dated_date),
                "first_coupon": _family.date_ref(self.first_coupon),
                "type": _family.int_ref("bond_type", type_code(self.bond_type)),
                "frequency": _family.int_ref("frequency", self.frequency),
                "redemption": _family.double_ref("redemption", self.redemption),
                "call_date": _family.date_ref(self.call_date),
                "pay_on_business_day": _family.int_ref("pay_on_business_day",
                                                       self.pay_on_business_day),
                "holiday_options": _family.int_ref(
                    "holiday_options",
                    _family.weekend_flags(self.saturday_works, self.sunday_works)),
                "holidays": holidays, "n_holidays": n_holidays}

    def price(self, yield_: float, settlement: DateLike) -> float:
        """Clean price per 100 of original face at `yield_`."""
        return _family.call("KVLpikpr", {"yield": as_float("yield_", yield_)},
                            self._arguments(settlement))

    def yield_(self, price: float, settlement: DateLike) -> float:
        """Yield (decimal) from a clean price per 100 of original face.
        Errors: 460 price not above 0, 1 no yield found."""
        return _family.call("KVLpikyld", {"price": as_float("price", price)},
                            self._arguments(settlement))

    def accrued(self, settlement: DateLike) -> float:
        """Accrued cash interest per 100 of original face (the in-kind part
        is capitalised, not accrued)."""
        return _family.call("KVLpikai", {}, self._arguments(settlement))

    def duration(self, yield_: float, settlement: DateLike, *,
                 macaulay: bool = False) -> float:
        """Modified duration in years at `yield_`; Macaulay when asked."""
        return _family.call("KVLpikdur", {"yield": as_float("yield_", yield_),
                                          "duration_kind": _family.int_ref("macaulay",
                                                                           macaulay)},
                            self._arguments(settlement))

    def pvbp(self, yield_: float, settlement: DateLike, *,
             scale: Optional[float] = None) -> float:
        """Price value of a basis point per 100 of face: -dP/dy / `scale`
        (default 100)."""
        return _family.call("KVLpikvalbp", {"yield": as_float("yield_", yield_),
                                            "scale": _family.double_ref("scale", scale)},
                            self._arguments(settlement))

    def value_of_32nd(self, yield_: float, settlement: DateLike, *,
                      ticks: Optional[float] = None) -> float:
        """Yield value of one tick in basis points, 1 / (pvbp x `ticks`)
        (default 32)."""
        return _family.call("KVLpikval32", {"yield": as_float("yield_", yield_),
                                            "ticks": _family.double_ref("ticks", ticks)},
                            self._arguments(settlement))

    def cashflows(self, settlement: DateLike, *, as_frame: bool = False
                  ) -> Union[List[Cashflow], "pandas.DataFrame"]:
        """The remaining flows per 100 of original face as Cashflow(date,
        coupon, principal, periods) rows or a DataFrame: cash coupons on the
        grown principal, the capitalised principal repaid on the last row,
        and the discounting time from settlement in coupon periods."""
        columns = ("dates_out", "coupons_out", "principal_out", "periods_out")
        cols = _family.table("KVLpikcshflw", "KVLpikcshflw_free", columns, {},
                             self._arguments(settlement))
        rows = zip(_family.to_dates(cols["dates_out"]), cols["coupons_out"],
                   cols["principal_out"], cols["periods_out"])
        return _family.frame_or_rows(Cashflow, rows, as_frame)
