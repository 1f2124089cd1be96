"""`Bond`: one straight fixed-coupon bond, described once and valued at any
settlement date, price or yield.

    >>> from datetime import date
    >>> gilt = Bond(type="gilt", coupon=0.0425, maturity=date(2034, 12, 7))
    >>> gilt.price(0.045, settlement=date(2025, 1, 15))

The C arguments of the description are built once, in the constructor; each
call fills in only its settlement date and market input, so a call costs
little more than the library's own work.
"""

import ctypes
import datetime
from collections import namedtuple
from typing import TYPE_CHECKING, List, Optional, Sequence, Union

from . import _library
from ._arguments import BondArguments, as_float, double_array, date_array
from .dates import LAST_SERIAL, DateLike, from_serial, to_serial
from .errors import KBondArgumentError, KBondLibraryError
from .types import TypeLike

if TYPE_CHECKING:
    import pandas

Coupon = Union[float, Sequence[float]]

Cashflow = namedtuple("Cashflow", "date coupon principal periods")
Cashflow.__doc__ = """One row of a cash-flow table: payment date (datetime.date), coupon and
principal per 100 of initial face, time from settlement in coupon periods."""

CashflowTable = Union[List[Cashflow], "pandas.DataFrame"]

Risk = namedtuple("Risk", "yield_ price modified_duration macaulay_duration convexity pvbp")
Risk.__doc__ = """Risk measures at one yield: clean price per 100, modified and Macaulay
durations in years, convexity in years squared, price value of a basis point
per 100 of face."""

_I32 = ctypes.c_int32


_date = datetime.date
_DATE_ORIGIN = datetime.date(1899, 12, 31).toordinal()  # serial 0
_F64 = ctypes.c_double
_byref = ctypes.byref


def _market(name, value):
    """A market input as the C double the export takes by value."""
    if type(value) is float:  # the common case, checked first
        return _F64(value)
    return _F64(as_float(name, value))


class Bond:
    """A straight bond.

    type           bond type: a code (40), a catalogue name ("Gilt") or a
                   nickname ("gilt", "ust", "bund", "jgb", ...; see
                   k_bond.types()); None: U.S. Treasury
    coupon         coupon rate per year as a decimal (0.0425), or a list of
                   rates with `step_dates` (rate i in force up to
                   step_dates[i], the last step date being the maturity)
    maturity       maturity date (any accepted date form)
    frequency      coupons per year, 1, 2, 3, 4, 6 or 12 (None: the type's)
    dated_date, first_coupon   start of accrual and first coupon date
                   (None: derived from the maturity)
    redemption     redemption value per 100 (None: 100)
    coupon_tax     withholding tax on coupons, a fraction (None: 0)
    discount_tax   tax on the issue discount or gain, a fraction (None: 0)
    horizon        tax horizon: up to 24 counts months, more counts days
    issue_price    issue price per 100 (None: 100)
    yield_method   -1..-6 choose a yield method; other nonzero values pay
                   on business days (None: the type's convention)
    weekend_flags  bit 0: Saturday is a business day; bit 1: Sunday
    holidays       holiday dates for business-day rules
    exdiv_days     ex-dividend period: n >= 1 business days before the
                   coupon, n < 1 calendar days added to it (None: the type's)
    factor, sink_dates, sink_ends, sink_amounts, sink_premium,
    amortisation_frequency   a sinking fund (None: no sinking fund)

    Dates may be datetime.date, datetime.datetime, pandas.Timestamp,
    numpy.datetime64, ISO strings or serials. Yields are decimals per year
    compounded as the type quotes them; prices and accrued interest are per
    100 of face. Bad arguments raise KBondArgumentError (naming the
    argument) before the library is called; library refusals raise
    KBondLibraryError with the library's code and sentence.
    """

    def __init__(self, *, coupon: Coupon, maturity: Optional[DateLike] = None,
                 type: TypeLike = None, frequency: Optional[int] = None,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                 redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                 discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                 issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                 weekend_flags: Optional[int] = None,
                 holidays: Optional[Sequence[DateLike]] = None,
                 exdiv_days: Optional[int] = None, factor: Optional[float] = None,
                 sink_dates: Optional[Sequence[DateLike]] = None,
                 sink_ends: Optional[Sequence[DateLike]] = None,
                 sink_amounts: Optional[Sequence[float]] = None,
                 sink_premium: Optional[float] = None,
                 amortisation_frequency: Optional[int] = None) -> None:
        self.description = dict(
            coupon=coupon, maturity=maturity, bond_type=type, frequency=frequency,
            step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
            redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
            horizon=horizon, issue_price=issue_price, yield_method=yield_method,
            weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
            factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
            sink_amounts=sink_amounts, sink_premium=sink_premium,
            amortisation_frequency=amortisation_frequency)
        self._args = BondArguments(settlement_required=False, **self.description)
        self.type = type
        self.coupon = coupon
        self.maturity = from_serial(self._args.values["maturity"])
        self._lib = _library.library()
        self._templates = {}

    def __repr__(self):
        shown = ", ".join(f"{k if k != 'bond_type' else 'type'}={v!r}"
                          for k, v in self.description.items() if v is not None)
        return f"Bond({shown})"

    # -- the call machinery -------------------------------------------------

    def _template(self, export, own_names):
        """(function, argument list, settlement slot, slots of own arguments,
        error slot), built on first use of each export."""
        names = _library.argument_names(export)
        values = self._args.values
        call = [None if n in own_names or n == "error" else values[n] for n in names]
        template = (_library.unchecked_function(export), call, names.index("settlement"),
                    tuple(names.index(n) for n in own_names), names.index("error"))
        self._templates[export] = template
        return template

    def _call(self, export, settlement, own_names=(), own_values=()):
        """Calls `export` on this bond. Every argument is already of its C
        type (the description's buffers, int serials, c_double market
        inputs), so the export is called without ctypes' per-argument
        conversion; a fresh argument list and error cell per call keep
        concurrent calls on one Bond apart."""
        fn, template, settle_at, own_at, error_at = (self._templates.get(export)
                                                     or self._template(export, own_names))
        call = template.copy()
        if type(settlement) is _date:  # the common case, without a function call
            serial = settlement.toordinal() - _DATE_ORIGIN
            if not 0 < serial <= LAST_SERIAL:
                serial = to_serial(settlement, "settlement")  # raises, naming the argument
        else:
            serial = to_serial(settlement, "settlement")
            if serial is None:
                raise KBondArgumentError("settlement is required", 150)
        call[settle_at] = serial
        for at, value in zip(own_at, own_values):
            call[at] = value
        error = _I32(0)
        call[error_at] = _byref(error)
        result = fn(*call)
        if error.value:
            raise KBondLibraryError(error.value, export)
        return result

    # -- price and yields ---------------------------------------------------

    def price(self, yield_: float, settlement: DateLike) -> float:
        """Clean price per 100 at a yield (decimal, compounded as the type
        quotes yields) for settlement on `settlement` (KVLbpr)."""
        return self._call("KVLbpr", settlement, ("yield",), (_market("yield_", yield_),))

    def yield_(self, price: float, settlement: DateLike) -> float:
        """Yield to maturity (decimal per year) at a clean price per 100
        (KVLbyld). Error 350 for a price that is not positive."""
        return self._call("KVLbyld", settlement, ("price",), (_market("price", price),))

    def accrued(self, settlement: DateLike) -> float:
        """Accrued interest per 100 at settlement; negative when the bond
        trades ex-dividend (KVLbai1)."""
        return self._call("KVLbai1", settlement)

    def horizon_yield(self, price: float, settlement: DateLike, horizon_date: DateLike,
                      horizon_price: float) -> float:
        """Yield earned from buying at `price` on settlement and selling at
        `horizon_price` on `horizon_date` (after settlement, not after
        maturity; else error 160), at the coupon frequency (KVLbhyld)."""
        sale = to_serial(horizon_date, "horizon_date")
        if sale is None:
            raise KBondArgumentError("horizon_date is required", 150)
        return self._call("KVLbhyld", settlement, ("price", "horizon_date", "horizon_price"),
                          (_market("price", price), sale, _market("horizon_price", horizon_price)))

    def realized_yield(self, price: float, settlement: DateLike,
                       reinvestment_rate: float) -> float:
        """Realized compound yield to maturity with coupons reinvested at
        `reinvestment_rate` (decimal, compounded at the coupon frequency)
        (KVLbryld). Error 250 for a rate of -100 % a period or below."""
        return self._call("KVLbryld", settlement, ("price", "reinvestment_rate"),
                          (_market("price", price),
                           _market("reinvestment_rate", reinvestment_rate)))

    def average_life_yield(self, price: float, settlement: DateLike) -> float:
        """Yield to the average-life date of a sinking-fund bond; the yield to
        maturity without a sinking fund (KVLbyldal)."""
        return self._call("KVLbyldal", settlement, ("price",), (_market("price", price),))

    def yield_to_worst(self, price: float, settlement: DateLike, *,
                       call_dates: Sequence[DateLike] = (),
                       call_prices: Sequence[float] = ()) -> float:
        """The lowest of the yield to maturity and the yields to each call date
        after settlement (KVLbyworst). `call_prices` (per 100) belong to the
        call dates in order; a date without its own price takes the next
        one's, and the last price given is also the redemption at maturity
        (100 when none). At most len(call_dates) + 1 prices (error 70)."""
        dates, n_dates = date_array(list(call_dates), "call_dates")
        prices, n_prices = double_array("call_prices", list(call_prices))
        return self._call("KVLbyworst", settlement,
                          ("price", "call_dates", "n_call_dates", "call_prices", "n_call_prices"),
                          (_market("price", price), dates, n_dates, prices, n_prices))

    def remaining_life(self, settlement: DateLike, *, yield_: Optional[float] = None,
                       price: Optional[float] = None) -> float:
        """Remaining life in years as the bond's conventions measure time: the
        Macaulay duration of a zero-coupon bond with the same schedule, at a
        yield, or at the yield of a clean price (give one of the two)
        (KVLbel)."""
        if (yield_ is None) == (price is None):
            raise KBondArgumentError("remaining_life: give either yield_ or price", 1)
        if price is not None:
            value = _market("price", price)
            if not value.value >= 10.0:
                raise KBondArgumentError(f"price: {price!r} is below 10 per 100, which the "
                                         "library would read as a yield", 350)
        else:
            value = _market("yield_", yield_)
            if not value.value < 10.0:
                raise KBondArgumentError(f"yield_: {yield_!r} is 10 or more, which the "
                                         "library would read as a price", 1)
        return self._call("KVLbel", settlement, ("price_or_yield",), (value,))

    # -- risk -----------------------------------------------------------------

    def duration(self, yield_: float, settlement: DateLike, *, macaulay: bool = False) -> float:
        """Modified duration in years at a yield; Macaulay with macaulay=True
        (KVLbdur)."""
        kind = ctypes.byref(_I32(1 if macaulay else 0))
        return self._call("KVLbdur", settlement, ("yield", "duration_kind"),
                          (_market("yield_", yield_), kind))

    def convexity(self, yield_: float, settlement: DateLike) -> float:
        """Convexity in years squared at a yield (KVLbconv)."""
        return self._call("KVLbconv", settlement, ("yield",), (_market("yield_", yield_),))

    def pvbp(self, yield_: float, settlement: DateLike, *, scale: Optional[float] = None) -> float:
        """Price value of a basis point per 100 of face: the fall in price for
        a one basis point rise in yield (KVLbvalbp). `scale` (None: 100)
        divides -dP/dy; error 310 when it is not positive."""
        scale_ptr = None if scale is None else ctypes.byref(_market("scale", scale))
        return self._call("KVLbvalbp", settlement, ("yield", "scale"),
                          (_market("yield_", yield_), scale_ptr))

    def value_of_32nd(self, yield_: float, settlement: DateLike, *,
                      ticks_per_point: Optional[float] = None) -> float:
        """Yield value of a tick in basis points: the yield change that moves
        the price by one tick, a 32nd unless `ticks_per_point` says otherwise
        (KVLbval32; error 310 for a tick size that is not positive)."""
        ticks = None if ticks_per_point is None else ctypes.byref(
            _market("ticks_per_point", ticks_per_point))
        return self._call("KVLbval32", settlement, ("yield", "ticks_per_point"),
                          (_market("yield_", yield_), ticks))

    def risk(self, yield_: float, settlement: DateLike) -> Risk:
        """Price, modified and Macaulay duration, convexity and PVBP at one
        yield, as a Risk record."""
        return Risk(yield_, self.price(yield_, settlement), self.duration(yield_, settlement),
                    self.duration(yield_, settlement, macaulay=True),
                    self.convexity(yield_, settlement), self.pvbp(yield_, settlement))

    # -- schedule -------------------------------------------------------------

    def coupon_amount(self, settlement: DateLike) -> float:
        """The coupon of the current period per 100, net of coupon tax (the
        odd amount in an odd first period) (KVLbcamt)."""
        return self._call("KVLbcamt", settlement)

    def coupon_date(self, settlement: DateLike, k: int = 1) -> datetime.date:
        """A coupon date counted from settlement: 1 the next, 0 the last on or
        before settlement, -1 the one before that, ... (KVLbcpn). Error 1 for
        a date before the first coupon or after maturity."""
        if isinstance(k, bool) or not isinstance(k, int):
            raise KBondArgumentError(f"k must be an integer, not {type(k).__name__}", 1)
        return from_serial(self._call("KVLbcpn", settlement, ("k",), (ctypes.byref(_I32(k)),)))

    def next_coupon(self, settlement: DateLike) -> datetime.date:
        """The first coupon date after settlement."""
        return self.coupon_date(settlement, 1)

    def coupons_remaining(self, settlement: DateLike) -> int:
        """The number of coupons still to be paid after settlement, a broken
        last one included (KVLbncpn)."""
        return self._call("KVLbncpn", settlement)

    def ex_dividend_date(self, settlement: DateLike) -> datetime.date:
        """The ex-dividend date of the first coupon after settlement, by the
        type's rule or `exdiv_days`; the coupon date itself for types without
        an ex-dividend period (KVLbexdiv)."""
        return from_serial(self._call("KVLbexdiv", settlement))

    def average_life(self, settlement: DateLike) -> float:
        """Average life in years: the time to each repayment of principal,
        weighted by the fraction repaid; the time to maturity without a
        sinking fund (KVLbal)."""
        return self._call("KVLbal", settlement)

    def cashflows(self, settlement: DateLike, *, price: Optional[float] = None,
                  frame: bool = False) -> CashflowTable:
        """The remaining cash flows (KVLbcshflw): a list of Cashflow(date,
        coupon, principal, periods), or with frame=True a pandas DataFrame
        with those columns. Coupons and principal are per 100 of initial
        face, net of taxes; `price` (clean, per 100; None: 100) only matters
        for the tax on the gain. Rows discounted at (1 + y/f) ** -periods sum
        to the dirty price."""
        out_dates = ctypes.POINTER(ctypes.c_int32)()
        out_coupons, out_principal, out_periods = (ctypes.POINTER(ctypes.c_double)()
                                                   for _ in range(3))
        price_ptr = None if price is None else ctypes.byref(_market("price", price))
        outs = (ctypes.byref(out_dates), ctypes.byref(out_coupons),
                ctypes.byref(out_principal), ctypes.byref(out_periods), price_ptr)
        try:
            rows = self._call("KVLbcshflw", settlement,
                              ("out_dates", "out_coupons", "out_principal", "out_periods",
                               "price"), outs)
            flows = [Cashflow(from_serial(out_dates[i]), out_coupons[i], out_principal[i],
                              out_periods[i]) for i in range(rows)]
        finally:
            self._lib.KVLbcshflw_free(out_dates, out_coupons, out_principal, out_periods)
        if not frame:
            return flows
        import pandas
        return pandas.DataFrame(flows, columns=list(Cashflow._fields))

    # -- plots ----------------------------------------------------------------

    def plot_price_yield(self, settlement: DateLike, *, yield_: Optional[float] = None,
                         yields: Optional[Sequence[float]] = None, ax=None):
        """The price-yield curve with the duration tangent at `yield_` (None:
        the coupon rate), on a matplotlib Axes (a new figure when `ax` is
        None). Returns the Axes. Needs matplotlib (pip install k_bond[plot])."""
        from .plots import plot_price_yield
        return plot_price_yield(self, settlement, yield_=yield_, yields=yields, ax=ax)

    def plot_cashflows(self, settlement: DateLike, *, yield_: Optional[float] = None, ax=None):
        """Coupon and principal bars by payment date, with their values
        discounted at `yield_` (None: the coupon rate) overlaid. Returns the
        Axes. Needs matplotlib."""
        from .plots import plot_cashflows
        return plot_cashflows(self, settlement, yield_=yield_, ax=ax)

