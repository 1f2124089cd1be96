"""Floating-rate notes with the library's default FRN type (semi-annual,
actual/360): margins, price, yield and accrued interest.

A rate schedule is `rates` (decimals) with `rate_dates` (each rate applies
from its date until the next one). Dates are datetime.date, ISO strings or
serials; optional arguments left as None take the type's defaults."""

import ctypes

from . import _library
from ._arguments import as_float, check, date_array, date_ptr, double_array, double_ptr, int_ptr
from .dates import to_serial
from .errors import KBondArgumentError


def simple_margin(*, maturity, settlement, current_coupon, price, index_rate,
                  quoted_margin, previous_coupon=None, next_coupon=None, day_count=None,
                  frequency=None, end_of_month=None):
    """Simple margin (decimal per year) of an FRN at a clean price (KVLfrnsm)."""
    error = ctypes.c_int32(0)
    result = _library.library().KVLfrnsm(
        to_serial(maturity), to_serial(settlement), as_float("current_coupon", current_coupon),
        as_float("price", price), as_float("index_rate", index_rate),
        as_float("quoted_margin", quoted_margin), date_ptr(previous_coupon),
        date_ptr(next_coupon), int_ptr("day_count", day_count), int_ptr("frequency", frequency),
        int_ptr("end_of_month", end_of_month), ctypes.byref(error))
    check(error, "KVLfrnsm")
    return result


def discount_margin(*, maturity, settlement, current_coupon, price, period_rate, index_rate,
                    quoted_margin, previous_coupon=None, next_coupon=None, day_count=None,
                    frequency=None, end_of_month=None):
    """Discount margin (decimal per year) of an FRN at a clean price (KVLfrndm).

    `period_rate` is the money-market rate from settlement to the next coupon
    date."""
    error = ctypes.c_int32(0)
    result = _library.library().KVLfrndm(
        to_serial(maturity), to_serial(settlement), as_float("current_coupon", current_coupon),
        as_float("price", price), as_float("period_rate", period_rate),
        as_float("index_rate", index_rate), as_float("quoted_margin", quoted_margin),
        date_ptr(previous_coupon), date_ptr(next_coupon), int_ptr("day_count", day_count),
        int_ptr("frequency", frequency), int_ptr("end_of_month", end_of_month),
        ctypes.byref(error))
    check(error, "KVLfrndm")
    return result


def _schedule(rates, rate_dates):
    if rates is None or rate_dates is None:
        raise KBondArgumentError("rates and rate_dates are required", 50)
    rate_buf, n_rates = double_array("rates", rates)
    date_buf, n_dates = date_array(rate_dates)
    if n_rates != n_dates:
        raise KBondArgumentError("rates and rate_dates must have the same length", 60)
    return rate_buf, date_buf, n_rates


def _valuation(export, value, *, rates, rate_dates, maturity, settlement,
               previous_coupon=None, coupon_dates=None, day_count=None, frequency=None,
               redemption=None, income_tax=None, gain_tax=None, holding=None,
               pay_on_business_day=None, adjustment_code=None, holiday_options=None,
               holidays=None):
    rate_buf, date_buf, n = _schedule(rates, rate_dates)
    coupon_buf, n_coupon_dates = date_array(coupon_dates)
    holiday_buf, n_holidays = date_array(holidays)
    error = ctypes.c_int32(0)
    result = getattr(_library.library(), export)(
        rate_buf, date_buf, n, to_serial(maturity), to_serial(settlement), value,
        date_ptr(previous_coupon), coupon_buf, n_coupon_dates,
        int_ptr("day_count", day_count), int_ptr("frequency", frequency),
        double_ptr("redemption", redemption), double_ptr("income_tax", income_tax),
        double_ptr("gain_tax", gain_tax), int_ptr("holding", holding),
        int_ptr("pay_on_business_day", pay_on_business_day),
        int_ptr("adjustment_code", adjustment_code),
        int_ptr("holiday_options", holiday_options), holiday_buf, n_holidays,
        ctypes.byref(error))
    check(error, export)
    return result


def price(*, yield_, **note):
    """Clean price per 100 of an FRN from a yield (KVLfrnpr)."""
    return _valuation("KVLfrnpr", as_float("yield_", yield_), **note)


def frn_yield(*, price, **note):
    """Yield (decimal) of an FRN from a clean price per 100 (KVLfrnyld)."""
    return _valuation("KVLfrnyld", as_float("price", price), **note)


def accrued(*, rates, rate_dates, maturity, settlement, previous_coupon=None,
            coupon_dates=None, day_count=None, frequency=None, adjustment_code=None,
            holiday_options=None, holidays=None):
    """Accrued interest per 100 of an FRN (KVLfrnai)."""
    rate_buf, date_buf, n = _schedule(rates, rate_dates)
    coupon_buf, n_coupon_dates = date_array(coupon_dates)
    holiday_buf, n_holidays = date_array(holidays)
    error = ctypes.c_int32(0)
    result = _library.library().KVLfrnai(
        rate_buf, date_buf, n, to_serial(maturity), to_serial(settlement),
        date_ptr(previous_coupon), coupon_buf, n_coupon_dates, int_ptr("day_count", day_count),
        int_ptr("frequency", frequency), int_ptr("adjustment_code", adjustment_code),
        int_ptr("holiday_options", holiday_options), holiday_buf, n_holidays,
        ctypes.byref(error))
    check(error, "KVLfrnai")
    return result
