"""Straight fixed-coupon bonds, one call at a time: price, yields, accrued
interest, risk, coupon dates and cash flows.

Each function takes keyword arguments only: its own market inputs, the
settlement date, and the description of the bond with the same names and
defaults as `Bond` (where the bond type is `bond_type`). It builds a Bond
and asks it, so a loop over many calls on one bond is faster with a Bond.

    >>> k_bond.price(yield_=0.045, coupon=0.0425, maturity="2034-11-15",
    ...              settlement="2025-01-15", bond_type="treasury")
"""

import datetime
from typing import Optional, Sequence

from .bond import Bond, CashflowTable, Coupon, Risk
from .dates import DateLike
from .types import TypeLike


def price(*, yield_: float, settlement: DateLike, coupon: Coupon,
          maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
          frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
          dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
          redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
          discount_tax: Optional[float] = None, horizon: Optional[int] = None,
          issue_price: Optional[float] = None, yield_method: Optional[int] = None,
          weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
          exdiv_days: Optional[int] = None, factor: Optional[float] = None,
          sink_dates: Optional[Sequence[DateLike]] = None,
          sink_ends: Optional[Sequence[DateLike]] = None,
          sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
          amortisation_frequency: Optional[int] = None) -> float:
    """Clean price per 100 from a yield (KVLbpr).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.price)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.price(yield_, settlement)


def bond_yield(*, price: float, settlement: DateLike, coupon: Coupon,
               maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
               frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
               dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
               redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
               discount_tax: Optional[float] = None, horizon: Optional[int] = None,
               issue_price: Optional[float] = None, yield_method: Optional[int] = None,
               weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
               exdiv_days: Optional[int] = None, factor: Optional[float] = None,
               sink_dates: Optional[Sequence[DateLike]] = None,
               sink_ends: Optional[Sequence[DateLike]] = None,
               sink_amounts: Optional[Sequence[float]] = None,
               sink_premium: Optional[float] = None,
               amortisation_frequency: Optional[int] = None) -> float:
    """Yield to maturity (decimal per year) from a clean price per 100 (KVLbyld).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.yield_)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.yield_(price, settlement)


def accrued(*, settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
            bond_type: TypeLike = None, frequency: Optional[int] = None,
            step_dates: Optional[Sequence[DateLike]] = None, dated_date: Optional[DateLike] = None,
            first_coupon: Optional[DateLike] = None, redemption: Optional[float] = None,
            coupon_tax: Optional[float] = None, discount_tax: Optional[float] = None,
            horizon: Optional[int] = None, issue_price: Optional[float] = None,
            yield_method: Optional[int] = None, weekend_flags: Optional[int] = None,
            holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
            factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
            sink_ends: Optional[Sequence[DateLike]] = None,
            sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
            amortisation_frequency: Optional[int] = None) -> float:
    """Accrued interest per 100 at settlement, negative ex-dividend (KVLbai1).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.accrued)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.accrued(settlement)


def horizon_yield(*, price: float, horizon_date: DateLike, horizon_price: float,
                  settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
                  bond_type: TypeLike = None, frequency: Optional[int] = None,
                  step_dates: Optional[Sequence[DateLike]] = None,
                  dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                  redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                  discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                  issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                  weekend_flags: Optional[int] = None,
                  holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                  factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                  sink_ends: Optional[Sequence[DateLike]] = None,
                  sink_amounts: Optional[Sequence[float]] = None,
                  sink_premium: Optional[float] = None,
                  amortisation_frequency: Optional[int] = None) -> float:
    """Yield from settlement to a sale at `horizon_price` on `horizon_date` (KVLbhyld).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.horizon_yield)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.horizon_yield(price, settlement, horizon_date, horizon_price)


def realized_yield(*, price: float, reinvestment_rate: float, settlement: DateLike, coupon: Coupon,
                   maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
                   frequency: Optional[int] = None,
                   step_dates: Optional[Sequence[DateLike]] = None,
                   dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                   redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                   discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                   issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                   weekend_flags: Optional[int] = None,
                   holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                   factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                   sink_ends: Optional[Sequence[DateLike]] = None,
                   sink_amounts: Optional[Sequence[float]] = None,
                   sink_premium: Optional[float] = None,
                   amortisation_frequency: Optional[int] = None) -> float:
    """Realized compound yield with coupons reinvested at `reinvestment_rate` (KVLbryld).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.realized_yield)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.realized_yield(price, settlement, reinvestment_rate)


def average_life_yield(*, price: float, settlement: DateLike, coupon: Coupon,
                       maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
                       frequency: Optional[int] = None,
                       step_dates: Optional[Sequence[DateLike]] = None,
                       dated_date: Optional[DateLike] = None,
                       first_coupon: Optional[DateLike] = None, redemption: Optional[float] = None,
                       coupon_tax: Optional[float] = None, discount_tax: Optional[float] = None,
                       horizon: Optional[int] = None, issue_price: Optional[float] = None,
                       yield_method: Optional[int] = None, weekend_flags: Optional[int] = None,
                       holidays: Optional[Sequence[DateLike]] = None,
                       exdiv_days: Optional[int] = None, factor: Optional[float] = None,
                       sink_dates: Optional[Sequence[DateLike]] = None,
                       sink_ends: Optional[Sequence[DateLike]] = None,
                       sink_amounts: Optional[Sequence[float]] = None,
                       sink_premium: Optional[float] = None,
                       amortisation_frequency: Optional[int] = None) -> float:
    """Yield to the average-life date of a sinking-fund bond (KVLbyldal).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.average_life_yield)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.average_life_yield(price, settlement)


def yield_to_worst(*, price: float, call_dates: Sequence[DateLike] = (),
                   call_prices: Sequence[float] = (), settlement: DateLike, coupon: Coupon,
                   maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
                   frequency: Optional[int] = None,
                   step_dates: Optional[Sequence[DateLike]] = None,
                   dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                   redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                   discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                   issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                   weekend_flags: Optional[int] = None,
                   holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                   factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                   sink_ends: Optional[Sequence[DateLike]] = None,
                   sink_amounts: Optional[Sequence[float]] = None,
                   sink_premium: Optional[float] = None,
                   amortisation_frequency: Optional[int] = None) -> float:
    """Lowest of the yield to maturity and the yields to each call (KVLbyworst).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.yield_to_worst)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.yield_to_worst(price, settlement, call_dates=call_dates, call_prices=call_prices)


def remaining_life(*, yield_: Optional[float] = None, price: Optional[float] = None,
                   settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
                   bond_type: TypeLike = None, frequency: Optional[int] = None,
                   step_dates: Optional[Sequence[DateLike]] = None,
                   dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                   redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                   discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                   issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                   weekend_flags: Optional[int] = None,
                   holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                   factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                   sink_ends: Optional[Sequence[DateLike]] = None,
                   sink_amounts: Optional[Sequence[float]] = None,
                   sink_premium: Optional[float] = None,
                   amortisation_frequency: Optional[int] = None) -> float:
    """Remaining life in years at a yield or a clean price (KVLbel).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.remaining_life)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.remaining_life(settlement, yield_=yield_, price=price)


def duration(*, yield_: float, macaulay: bool = False, settlement: DateLike, coupon: Coupon,
             maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
             frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
             dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
             redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
             discount_tax: Optional[float] = None, horizon: Optional[int] = None,
             issue_price: Optional[float] = None, yield_method: Optional[int] = None,
             weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
             exdiv_days: Optional[int] = None, factor: Optional[float] = None,
             sink_dates: Optional[Sequence[DateLike]] = None,
             sink_ends: Optional[Sequence[DateLike]] = None,
             sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
             amortisation_frequency: Optional[int] = None) -> float:
    """Modified duration in years at a yield; Macaulay when asked (KVLbdur).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.duration)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.duration(yield_, settlement, macaulay=macaulay)


def convexity(*, yield_: float, settlement: DateLike, coupon: Coupon,
              maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
              frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
              dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
              redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
              discount_tax: Optional[float] = None, horizon: Optional[int] = None,
              issue_price: Optional[float] = None, yield_method: Optional[int] = None,
              weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
              exdiv_days: Optional[int] = None, factor: Optional[float] = None,
              sink_dates: Optional[Sequence[DateLike]] = None,
              sink_ends: Optional[Sequence[DateLike]] = None,
              sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
              amortisation_frequency: Optional[int] = None) -> float:
    """Convexity in years squared at a yield (KVLbconv).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.convexity)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.convexity(yield_, settlement)


def pvbp(*, yield_: float, scale: Optional[float] = None, settlement: DateLike, coupon: Coupon,
         maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
         frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
         dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
         redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
         discount_tax: Optional[float] = None, horizon: Optional[int] = None,
         issue_price: Optional[float] = None, yield_method: Optional[int] = None,
         weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
         exdiv_days: Optional[int] = None, factor: Optional[float] = None,
         sink_dates: Optional[Sequence[DateLike]] = None,
         sink_ends: Optional[Sequence[DateLike]] = None,
         sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
         amortisation_frequency: Optional[int] = None) -> float:
    """Price value of a basis point per 100 of face (KVLbvalbp).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.pvbp)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.pvbp(yield_, settlement, scale=scale)


def value_of_32nd(*, yield_: float, ticks_per_point: Optional[float] = None, settlement: DateLike,
                  coupon: Coupon, maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
                  frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
                  dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                  redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                  discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                  issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                  weekend_flags: Optional[int] = None,
                  holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                  factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                  sink_ends: Optional[Sequence[DateLike]] = None,
                  sink_amounts: Optional[Sequence[float]] = None,
                  sink_premium: Optional[float] = None,
                  amortisation_frequency: Optional[int] = None) -> float:
    """Yield value of a 32nd (or another tick) in basis points (KVLbval32).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.value_of_32nd)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.value_of_32nd(yield_, settlement, ticks_per_point=ticks_per_point)


def risk(*, yield_: float, settlement: DateLike, coupon: Coupon,
         maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
         frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
         dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
         redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
         discount_tax: Optional[float] = None, horizon: Optional[int] = None,
         issue_price: Optional[float] = None, yield_method: Optional[int] = None,
         weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
         exdiv_days: Optional[int] = None, factor: Optional[float] = None,
         sink_dates: Optional[Sequence[DateLike]] = None,
         sink_ends: Optional[Sequence[DateLike]] = None,
         sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
         amortisation_frequency: Optional[int] = None) -> Risk:
    """Price, durations, convexity and PVBP at one yield, as a Risk record.

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.risk)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.risk(yield_, settlement)


def coupon_amount(*, settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
                  bond_type: TypeLike = None, frequency: Optional[int] = None,
                  step_dates: Optional[Sequence[DateLike]] = None,
                  dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                  redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                  discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                  issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                  weekend_flags: Optional[int] = None,
                  holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                  factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                  sink_ends: Optional[Sequence[DateLike]] = None,
                  sink_amounts: Optional[Sequence[float]] = None,
                  sink_premium: Optional[float] = None,
                  amortisation_frequency: Optional[int] = None) -> float:
    """Coupon of the current period per 100, net of coupon tax (KVLbcamt).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.coupon_amount)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.coupon_amount(settlement)


def coupon_date(*, k: int = 1, settlement: DateLike, coupon: Coupon,
                maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
                frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
                dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
                exdiv_days: Optional[int] = None, factor: Optional[float] = None,
                sink_dates: Optional[Sequence[DateLike]] = None,
                sink_ends: Optional[Sequence[DateLike]] = None,
                sink_amounts: Optional[Sequence[float]] = None,
                sink_premium: Optional[float] = None,
                amortisation_frequency: Optional[int] = None) -> datetime.date:
    """Coupon date counted from settlement: 1 the next, 0 the last on or before it (KVLbcpn).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.coupon_date)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.coupon_date(settlement, k)


def coupons_remaining(*, settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
                      bond_type: TypeLike = None, frequency: Optional[int] = None,
                      step_dates: Optional[Sequence[DateLike]] = None,
                      dated_date: Optional[DateLike] = None,
                      first_coupon: Optional[DateLike] = None, redemption: Optional[float] = None,
                      coupon_tax: Optional[float] = None, discount_tax: Optional[float] = None,
                      horizon: Optional[int] = None, issue_price: Optional[float] = None,
                      yield_method: Optional[int] = None, weekend_flags: Optional[int] = None,
                      holidays: Optional[Sequence[DateLike]] = None,
                      exdiv_days: Optional[int] = None, factor: Optional[float] = None,
                      sink_dates: Optional[Sequence[DateLike]] = None,
                      sink_ends: Optional[Sequence[DateLike]] = None,
                      sink_amounts: Optional[Sequence[float]] = None,
                      sink_premium: Optional[float] = None,
                      amortisation_frequency: Optional[int] = None) -> int:
    """Number of coupons still to be paid after settlement (KVLbncpn).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.coupons_remaining)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.coupons_remaining(settlement)


def ex_dividend_date(*, settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
                     bond_type: TypeLike = None, frequency: Optional[int] = None,
                     step_dates: Optional[Sequence[DateLike]] = None,
                     dated_date: Optional[DateLike] = None,
                     first_coupon: Optional[DateLike] = None, redemption: Optional[float] = None,
                     coupon_tax: Optional[float] = None, discount_tax: Optional[float] = None,
                     horizon: Optional[int] = None, issue_price: Optional[float] = None,
                     yield_method: Optional[int] = None, weekend_flags: Optional[int] = None,
                     holidays: Optional[Sequence[DateLike]] = None,
                     exdiv_days: Optional[int] = None, factor: Optional[float] = None,
                     sink_dates: Optional[Sequence[DateLike]] = None,
                     sink_ends: Optional[Sequence[DateLike]] = None,
                     sink_amounts: Optional[Sequence[float]] = None,
                     sink_premium: Optional[float] = None,
                     amortisation_frequency: Optional[int] = None) -> datetime.date:
    """Ex-dividend date of the first coupon after settlement (KVLbexdiv).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.ex_dividend_date)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.ex_dividend_date(settlement)


def average_life(*, settlement: DateLike, coupon: Coupon, maturity: Optional[DateLike] = None,
                 bond_type: TypeLike = None, frequency: Optional[int] = None,
                 step_dates: Optional[Sequence[DateLike]] = None,
                 dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
                 redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
                 discount_tax: Optional[float] = None, horizon: Optional[int] = None,
                 issue_price: Optional[float] = None, yield_method: Optional[int] = None,
                 weekend_flags: Optional[int] = None,
                 holidays: Optional[Sequence[DateLike]] = None, exdiv_days: Optional[int] = None,
                 factor: Optional[float] = None, sink_dates: Optional[Sequence[DateLike]] = None,
                 sink_ends: Optional[Sequence[DateLike]] = None,
                 sink_amounts: Optional[Sequence[float]] = None,
                 sink_premium: Optional[float] = None,
                 amortisation_frequency: Optional[int] = None) -> float:
    """Average life in years, weighted by principal repaid (KVLbal).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.average_life)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.average_life(settlement)


def cashflows(*, price: Optional[float] = None, frame: bool = False, settlement: DateLike,
              coupon: Coupon, maturity: Optional[DateLike] = None, bond_type: TypeLike = None,
              frequency: Optional[int] = None, step_dates: Optional[Sequence[DateLike]] = None,
              dated_date: Optional[DateLike] = None, first_coupon: Optional[DateLike] = None,
              redemption: Optional[float] = None, coupon_tax: Optional[float] = None,
              discount_tax: Optional[float] = None, horizon: Optional[int] = None,
              issue_price: Optional[float] = None, yield_method: Optional[int] = None,
              weekend_flags: Optional[int] = None, holidays: Optional[Sequence[DateLike]] = None,
              exdiv_days: Optional[int] = None, factor: Optional[float] = None,
              sink_dates: Optional[Sequence[DateLike]] = None,
              sink_ends: Optional[Sequence[DateLike]] = None,
              sink_amounts: Optional[Sequence[float]] = None, sink_premium: Optional[float] = None,
              amortisation_frequency: Optional[int] = None) -> CashflowTable:
    """Remaining cash flows: a list of Cashflow rows, or a DataFrame with frame=True (KVLbcshflw).

    The bond arguments are Bond's (bond_type for its `type`); see
    help(k_bond.Bond) and help(k_bond.Bond.cashflows)."""
    bond = Bond(coupon=coupon, maturity=maturity, type=bond_type, frequency=frequency,
                step_dates=step_dates, dated_date=dated_date, first_coupon=first_coupon,
                redemption=redemption, coupon_tax=coupon_tax, discount_tax=discount_tax,
                horizon=horizon, issue_price=issue_price, yield_method=yield_method,
                weekend_flags=weekend_flags, holidays=holidays, exdiv_days=exdiv_days,
                factor=factor, sink_dates=sink_dates, sink_ends=sink_ends,
                sink_amounts=sink_amounts, sink_premium=sink_premium,
                amortisation_frequency=amortisation_frequency)
    return bond.cashflows(settlement, price=price, frame=frame)
