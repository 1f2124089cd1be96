"""Brady bonds: principal backed by zero-coupon collateral, the next coupons
by a rolling interest guarantee.

    brady = k_bond.BradyBond(coupon=0.065, maturity=date(2030, 3, 31),
                             bond_type="eurobond", frequency=2)
    brady.price(0.10, date(2025, 1, 15), guarantee_rate=0.05,
                collateral_yield=0.045)

The value splits into three parts at three rates: the guaranteed coupons at
the guarantee rate, the other coupons at the stripped yield, and the
principal at the collateral yield (semi-annual) when it is collateralised.
Rates are decimal per year; prices clean, per 100 of face; results are not
rounded. Library errors raise KBondLibraryError (250 a negative or invalid
rate, 460 a negative number of guaranteed coupons, 350 a price not above 0,
21 no stripped yield found, 1 invalid description)."""

from typing import Optional, Sequence, Union

from . import _family
from ._arguments import BondArguments, as_float
from ._family import DateLike, Rates


class BradyBond:
    """A Brady bond.

    coupon, maturity, step_dates   as for k_bond.price (a list of rates with
                    step_dates for stepped coupons)
    guaranteed      number of coupons under the rolling guarantee (None: 2)
    collateralised  principal backed by collateral (default True)
    bond_type, frequency, dated_date, first_coupon, redemption, coupon_tax,
    yield_method, exdiv_days, holidays   the common bond overrides
    saturday_works, sunday_works   weekend days that are business days
    factor, sink_dates, sink_ends, sink_amounts, sink_premium   amortisation
    """

    def __init__(self, *, coupon: Rates, maturity: DateLike,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 guaranteed: Optional[int] = None, collateralised: bool = True,
                 bond_type: Union[int, str, None] = None, frequency: Optional[int] = None,
                 dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                 redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                 yield_method: Optional[int] = None, exdiv_days: Optional[int] = None,
                 holidays: Optional[Sequence[DateLike]] = None, saturday_works: bool = False,
                 sunday_works: bool = False, factor: Optional[float] = None,
                 sink_dates: Optional[Sequence[DateLike]] = None,
                 sink_ends: Optional[Sequence[DateLike]] = None,
                 sink_amounts: Optional[Sequence[float]] = None,
                 sink_premium: Optional[float] = None) -> None:
        self.coupon = coupon
        self.maturity = maturity
        self.step_dates = step_dates
        self.guaranteed = guaranteed
        self.collateralised = collateralised
        self.bond_type = bond_type
        self.frequency = frequency
        self.dated_date = dated_date
        self.first_coupon = first_coupon
        self.redemption = redemption
        self.coupon_tax = coupon_tax
        self.yield_method = yield_method
        self.exdiv_days = exdiv_days
        self.holidays = holidays
        self.saturday_works = saturday_works
        self.sunday_works = sunday_works
        self.factor = factor
        self.sink_dates = sink_dates
        self.sink_ends = sink_ends
        self.sink_amounts = sink_amounts
        self.sink_premium = sink_premium
        self._bond(1)  # refuses bad arguments at once (any settlement will do)

    def __repr__(self):
        return f"BradyBond(coupon={self.coupon!r}, maturity={self.maturity!r})"

    def _bond(self, settlement):
        return BondArguments(
            self.coupon, self.maturity, settlement, step_dates=self.step_dates,
            dated_date=self.dated_date, first_coupon=self.first_coupon,
            bond_type=self.bond_type, frequency=self.frequency, redemption=self.redemption,
            coupon_tax=self.coupon_tax, yield_method=self.yield_method,
            weekend_flags=_family.weekend_flags(self.saturday_works, self.sunday_works),
            holidays=self.holidays, factor=self.factor, sink_dates=self.sink_dates,
            sink_ends=self.sink_ends, sink_amounts=self.sink_amounts,
            sink_premium=self.sink_premium, exdiv_days=self.exdiv_days)

    def _call(self, name, settlement, rates):
        bond = self._bond(settlement)
        own = {arg: as_float(arg, value) for arg, value in rates.items()}
        own["guaranteed"] = _family.int_ref("guaranteed", self.guaranteed)
        own["collateral"] = _family.int_ref("collateralised", bool(self.collateralised))
        return _family.call(name, own, bond.values)

    def price(self, stripped_yield: float, settlement: DateLike, *, guarantee_rate: float,
              collateral_yield: float) -> float:
        """Clean price per 100 from the stripped yield (at the coupon
        frequency), the guarantee rate and the collateral yield."""
        return self._call("KVLbradypr", settlement, {
            "guarantee_rate": guarantee_rate, "collateral_yield": collateral_yield,
            "stripped_yield": stripped_yield})

    def yield_(self, price: float, settlement: DateLike, *, guarantee_rate: float,
               collateral_yield: float) -> float:
        """The stripped yield (decimal, at the coupon frequency) that gives a
        clean price per 100. Error 21 when no yield reaches the price (every
        coupon guaranteed and the principal collateralised, for one)."""
        return self._call("KVLbradyyld", settlement, {
            "price": price, "guarantee_rate": guarantee_rate,
            "collateral_yield": collateral_yield})

    stripped_yield = yield_

    def duration(self, stripped_yield: float, settlement: DateLike, *, guarantee_rate: float,
                 collateral_yield: float) -> float:
        """Duration in years: the flows' times weighted by their present
        values, each part at its own rate. Error 1 for a value not above 0."""
        return self._call("KVLbradydur", settlement, {
            "guarantee_rate": guarantee_rate, "collateral_yield": collateral_yield,
            "stripped_yield": stripped_yield})
