"""Bond futures and the cash-and-carry trade: conversion factors, carry,
forward prices, implied futures prices, net basis and implied repo rates.

Units: prices and futures prices per 100 of face; repo and reinvestment
rates decimal per year (0.04 for 4 %); conversion factors plain numbers
near 1; carry in percent of face. Dates are datetime.date, datetime,
numpy.datetime64, pandas Timestamp, ISO strings or date serials.

The bond is described as for k_bond.price: `coupon` (decimal, or a list of
rates with `step_dates`), `maturity`, `bond_type` (code or name) and the
optional overrides `frequency`, `dated_date`, `first_coupon`, `coupon_tax`
(withholding on coupons) and `exdiv_days`.

Contract codes (the exchange's conversion-factor rule):
   0 CBOT Treasury bond / 10-year note     1 CBOT 2- and 5-year notes
  60, 61 CBOT 10-year, 5-year notes; 70, 71 the same at a 6.5 % notional
   2, 22 LIFFE long, medium gilt           34, 35 the same priced as gilts
   3, 31, 32, 33, 36, 37 MATIF OAT contracts
   4 TSE JGB    7 Montreal CGB    5, 15-18, 20 Eurex Bund, Bobl, Schatz, Buxl
   6, 45-47 BTP contracts    8, 9, 10, 11 MEFF bono contracts
  25, 26 Belfox    40 7th-of-month 7 % contract    41, 42 OM Swedish contracts
  50, 51 third-Wednesday annual contracts    55 Porto Portuguese contract

Financing terms:
  financing     "simple" (interest compounding at coupon dates), "whole_period"
                (simple interest on the start amount over the whole period) or
                "continuous" (rates re-expressed from the coupon frequency)
  reinvest      coupons received earn interest until the end date (default
                False: they earn nothing)
  basis         day basis of repo interest, 360 or 365 (None: the bond type's
                money-market basis)
  days          the carry period ends this many days before the end date
  date_rule     None or "as_given": dates as given; "roll": settlement and end
                date rolled to the next business day; "business_days": both
                must be business days (else error 160)
  holidays, saturday_works, sunday_works   the calendar of the date rule,
                also used by the bond's own schedule
"""

from typing import Optional, Sequence, Union

from . import _family
from ._family import DateLike, Rates
from ._arguments import BondArguments, as_float
from ._one_call import from_method
from .errors import KBondArgumentError


_FINANCING = {"simple": 0, "whole_period": 2, "continuous": 4}
_DATE_RULES = {"as_given": 0, "roll": 1, "business_days": 2}


class _CashAndCarry:
    """A bond held from settlement to an end date, financed at a repo rate."""

    def __init__(self, coupon: Rates, maturity: DateLike, *,
                 bond_type: Union[int, str, None] = None, frequency: Optional[int] = None,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                 coupon_tax: Optional[float] = None, exdiv_days: Optional[int] = None,
                 holidays: Optional[Sequence[DateLike]] = None, saturday_works: bool = False,
                 sunday_works: bool = False, date_rule: Union[str, int, None] = None,
                 basis: Optional[float] = None, days: Optional[int] = None,
                 financing: str = "simple", reinvest: bool = False) -> None:
        self.coupon = coupon
        self.maturity = maturity
        self.bond_type = bond_type
        self.frequency = frequency
        self.step_dates = step_dates
        self.dated_date = dated_date
        self.first_coupon = first_coupon
        self.coupon_tax = coupon_tax
        self.exdiv_days = exdiv_days
        self.holidays = holidays
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.date_rule = date_rule
        self.basis = basis
        self.days = days
        if not isinstance(financing, str) or financing.lower() not in _FINANCING:
            raise KBondArgumentError(
                f"financing must be one of {', '.join(_FINANCING)}, not {financing!r}", 460)
        self.financing = financing.lower()
        self.reinvest = bool(reinvest)
        self._terms(1)  # refuses bad arguments at once (any settlement will do)

    def _terms(self, settlement):
        """The bond's common arguments at `settlement`, and the financing
        arguments; the business-day block only when a calendar is asked for."""
        bond = BondArguments(self.coupon, self.maturity, settlement, step_dates=self.step_dates,
                             dated_date=self.dated_date, first_coupon=self.first_coupon,
                             bond_type=self.bond_type, frequency=self.frequency,
                             coupon_tax=self.coupon_tax, exdiv_days=self.exdiv_days,
                             holidays=self.holidays)
        flags = _family.weekend_flags(self.saturday_works, self.sunday_works)
        own = {"basis": _family.double_ref("basis", self.basis),
               "days": _family.int_ref("days", self.days),
               "mode": _family.int_ref("mode", _FINANCING[self.financing] | int(self.reinvest))}
        with_calendar = (self.date_rule is not None or self.holidays is not None
                         or flags is not None)
        if with_calendar:
            own["date_rule"] = _family.int_ref(
                "date_rule", _family.choice("date_rule", self.date_rule, _DATE_RULES))
            own["calendar_flags"] = _family.int_ref("calendar_flags", flags)
        return bond.values, own, with_calendar

    def _call(self, short, settlement, market):
        common, own, with_calendar = self._terms(settlement)
        own.update(market)
        return _family.call(short + "1" if with_calendar else short, own, common)

    def _carry(self, price: float, settlement: DateLike, repo: float,
               end_date: DateLike) -> float:
        """Carry in percent of face of holding the bond from settlement to
        `end_date` financed at `repo`: accrued interest gained plus coupons
        received less the financing of price plus accrued interest. Errors: 160
        end date after maturity or not after settlement."""
        return self._call("KVLbcarry", settlement, {
            "end_date": _family.date_value("end_date", end_date),
            "price": as_float("price", price), "repo": as_float("repo", repo)})

    def _forward(self, price: float, settlement: DateLike, repo: float,
                 forward_date: DateLike) -> float:
        """Forward clean price per 100 at `forward_date`: the clean price less
        the carry, coupons reinvested at the repo rate when `reinvest`."""
        return self._call("KVLbfwd", settlement, {
            "forward_date": _family.date_value("forward_date", forward_date),
            "price": as_float("price", price), "repo": as_float("repo", repo)})

    def _implied_price(self, price: float, settlement: DateLike, repo: float,
                       conversion_factor: float, delivery: DateLike,
                       reinvestment: Optional[float] = None) -> float:
        """Futures price per 100 implied by the bond's clean price: (price -
        carry to delivery) / conversion_factor, coupons reinvested at
        `reinvestment` (None: the repo rate). Error 401 for a zero factor."""
        return self._call("KVLbifutp", settlement, {
            "price": as_float("price", price), "repo": as_float("repo", repo),
            "conversion_factor": as_float("conversion_factor", conversion_factor),
            "delivery": _family.date_value("delivery", delivery),
            "reinvest": _family.double_ref("reinvestment", reinvestment)})

    def _net_basis(self, price: float, settlement: DateLike, repo: float,
                   futures_price: float, conversion_factor: float, delivery: DateLike) -> float:
        """Net basis per 100: the forward price at delivery less futures_price
        x conversion_factor."""
        return self._call("KVLbnbasis", settlement, {
            "forward_date": _family.date_value("delivery", delivery),
            "price": as_float("price", price), "repo": as_float("repo", repo),
            "futures_price": as_float("futures_price", futures_price),
            "conversion_factor": as_float("conversion_factor", conversion_factor)})

    def _implied_repo(self, price: float, settlement: DateLike, futures_price: float,
                      conversion_factor: float, delivery: DateLike,
                      reinvestment: Optional[float] = None) -> float:
        """Implied repo rate (decimal per year): the rate at which the carry to
        delivery equals price - futures_price x conversion_factor, coupons
        reinvested at `reinvestment` (None: the rate sought). Error 1 when no
        rate in [-4, 15] fits."""
        return self._call("KVLbirepo", settlement, {
            "price": as_float("price", price),
            "futures_price": as_float("futures_price", futures_price),
            "conversion_factor": as_float("conversion_factor", conversion_factor),
            "delivery": _family.date_value("delivery", delivery),
            "reinvest": _family.double_ref("reinvestment", reinvestment)})


class Future(_CashAndCarry):
    """A bond futures contract with one deliverable bond.

    Future(contract=0, delivery=date(2025, 3, 31), futures_price=112.5,
           coupon=0.045, maturity=date(2045, 2, 15), bond_type="treasury")

    contract          exchange contract code (0 CBOT bond / 10-year note, 1
                      CBOT 2- and 5-year notes, 2 LIFFE long gilt, 5 Bund, ...:
                      the module's help lists them); unknown codes: error 900
    delivery          a date in the delivery month, also the end date of the
                      carry, implied price and implied repo
    futures_price     the contract's price per 100 (needed by net_basis and
                      implied_repo unless passed to them)
    conversion_factor the bond's factor; None: computed for the contract
    notional          override of the contract's notional coupon (decimal)
    check_eligibility error 910 when the bond is not deliverable (default True)
    gilt_exdiv_days   gilt contracts 2 and 22: the gilt's ex-dividend period
    The bond and the financing terms are described in the module's help.
    """

    def __init__(self, *, coupon: Rates, maturity: DateLike, delivery: DateLike,
                 contract: int = 0, futures_price: Optional[float] = None,
                 conversion_factor: Optional[float] = None, notional: Optional[float] = None,
                 check_eligibility: bool = True, gilt_exdiv_days: Optional[int] = None,
                 bond_type: Union[int, str, None] = None, frequency: Optional[int] = None,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                 coupon_tax: Optional[float] = None, exdiv_days: Optional[int] = None,
                 holidays: Optional[Sequence[DateLike]] = None, saturday_works: bool = False,
                 sunday_works: bool = False, date_rule: Union[str, int, None] = None,
                 basis: Optional[float] = None, days: Optional[int] = None,
                 financing: str = "simple", reinvest: bool = False) -> None:
        super().__init__(coupon, maturity, bond_type=bond_type, frequency=frequency,
                         step_dates=step_dates, dated_date=dated_date,
                         first_coupon=first_coupon, coupon_tax=coupon_tax,
                         exdiv_days=exdiv_days, holidays=holidays,
                         saturday_works=saturday_works, sunday_works=sunday_works,
                         date_rule=date_rule, basis=basis, days=days, financing=financing,
                         reinvest=reinvest)
        self.contract = contract
        self.delivery = delivery
        self.futures_price = futures_price
        self.notional = notional
        self.check_eligibility = check_eligibility
        self.gilt_exdiv_days = gilt_exdiv_days
        self._factor = conversion_factor

    def __repr__(self):
        return (f"Future(contract={self.contract}, delivery={self.delivery!r}, "
                f"coupon={self.coupon!r}, maturity={self.maturity!r})")

    def conversion_factor(self) -> float:
        """The bond's conversion factor for the contract (the one given to
        the constructor, else the exchange's rule). Errors: 900 unknown
        contract, 910 bond not deliverable, 920 notional out of range."""
        if self._factor is not None:
            return as_float("conversion_factor", self._factor)
        if not isinstance(self.coupon, (int, float)) or isinstance(self.coupon, bool):
            raise KBondArgumentError("a conversion factor needs a single coupon rate", 1)
        return conversion_factor(
            coupon=self.coupon, maturity=self.maturity, delivery=self.delivery,
            contract=self.contract, notional=self.notional,
            check_eligibility=self.check_eligibility, holidays=self.holidays,
            saturday_works=self.saturday_works, sunday_works=self.sunday_works,
            gilt_exdiv_days=self.gilt_exdiv_days, dated_date=self.dated_date,
            first_coupon=self.first_coupon)

    def _futures_price(self, futures_price):
        value = self.futures_price if futures_price is None else futures_price
        if value is None:
            raise KBondArgumentError("futures_price is required", 1)
        return value

    def implied_price(self, price: float, settlement: DateLike, repo: float, *,
                      reinvestment: Optional[float] = None) -> float:
        """Futures price per 100 implied by the bond's clean `price`:
        (price - carry to delivery) / conversion factor, coupons reinvested
        at `reinvestment` (None: the repo rate)."""
        return self._implied_price(price, settlement, repo, self.conversion_factor(),
                                   self.delivery, reinvestment)

    def implied_repo(self, price: float, settlement: DateLike, *,
                     futures_price: Optional[float] = None,
                     reinvestment: Optional[float] = None) -> float:
        """Repo rate (decimal per year) at which buying the bond at `price`
        and delivering it into the futures breaks even; -999.0 is never
        returned: an unsolvable rate raises KBondLibraryError (code 1)."""
        return self._implied_repo(price, settlement, self._futures_price(futures_price),
                                  self.conversion_factor(), self.delivery, reinvestment)

    def net_basis(self, price: float, settlement: DateLike, repo: float, *,
                  futures_price: Optional[float] = None) -> float:
        """Net basis per 100: forward price to delivery less futures price x
        conversion factor."""
        return self._net_basis(price, settlement, repo, self._futures_price(futures_price),
                               self.conversion_factor(), self.delivery)

    def carry(self, price: float, settlement: DateLike, repo: float, *,
              end_date: Optional[DateLike] = None) -> float:
        """Carry in percent of face from settlement to `end_date` (None: the
        delivery date)."""
        return self._carry(price, settlement, repo, self.delivery if end_date is None else end_date)

    def forward(self, price: float, settlement: DateLike, repo: float, *,
                forward_date: Optional[DateLike] = None) -> float:
        """Forward clean price per 100 at `forward_date` (None: delivery)."""
        return self._forward(price, settlement, repo,
                             self.delivery if forward_date is None else forward_date)


def conversion_factor(*, coupon: float, maturity: DateLike, delivery: DateLike,
                      contract: int = 0, notional: Optional[float] = None,
                      check_eligibility: bool = True,
                      holidays: Optional[Sequence[DateLike]] = None,
                      saturday_works: bool = False, sunday_works: bool = False,
                      gilt_exdiv_days: Optional[int] = None,
                      dated_date: Optional[DateLike] = None,
                      first_coupon: Optional[DateLike] = None) -> float:
    """Conversion factor (a number near 1) of a bond for a futures contract.

    coupon is the bond's annual rate (decimal); delivery a date in the
    delivery month; contract the exchange's code (default 0, CBOT bond).
    notional overrides the contract's notional coupon; check_eligibility
    False gives a factor for a bond outside the deliverable range.
    Errors (KBondLibraryError): 150 bad date, 160 delivery after maturity,
    900 unknown contract, 910 not deliverable, 920 notional out of range."""
    holiday_buf, n_holidays = _family.dates(holidays)
    own = {"coupon": as_float("coupon", coupon),
           "maturity": _family.date_value("maturity", maturity),
           "delivery": _family.date_value("delivery", delivery),
           "contract": _family.int_ref("contract", contract),
           "holidays": holiday_buf, "n_holidays": n_holidays,
           "weekend_flag": _family.int_ref("saturday_works", int(bool(saturday_works))),
           "adjust_flag": _family.int_ref("sunday_works", int(bool(sunday_works))),
           "extra_option": _family.int_ref("gilt_exdiv_days", gilt_exdiv_days),
           "dated_date": _family.date_ref(dated_date),
           "first_coupon": _family.date_ref(first_coupon)}
    if notional is None and check_eligibility:
        return _family.call("KVLbfact", own)
    own["notional"] = _family.double_ref("notional", notional)
    own["check_eligibility"] = _family.int_ref("check_eligibility", bool(check_eligibility))
    return _family.call("KVLbfact1", own)


def _from_position(method_name, public_name):
    return from_method(_CashAndCarry, method_name, public_name, __name__,
                       about="those of the bond held (as Future's)")


carry = _from_position("_carry", "carry")
forward_price = _from_position("_forward", "forward_price")
implied_futures_price = _from_position("_implied_price", "implied_futures_price")
net_basis = _from_position("_net_basis", "net_basis")
implied_repo = _from_position("_implied_repo", "implied_repo")
