"""Straight fixed-coupon bonds: price, yield, accrued interest, risk, cash flows.

Every function takes keyword arguments only. The bond:
  coupon        annual rate as a decimal (0.0425), or a list of rates with
                `step_dates` (rate i in force up to step_dates[i])
  maturity      datetime.date, ISO string or date serial
  settlement    likewise
  bond_type     code (0) or name ("treasury", "gilt", "Corporate Bond")
  frequency     coupons per year (None: the type's)
Optional overrides, None meaning the type's or the library's default:
  dated_date, first_coupon, redemption (per 100), coupon_tax, discount_tax,
  horizon, issue_price, yield_method, weekend_flags, holidays (dates),
  exdiv_days, amortisation_frequency, factor, sink_dates, sink_ends,
  sink_amounts, sink_premium.
Yields are decimals compounded at the type's quotation frequency; prices and
accrued interest are per 100 of face. Library errors raise KBondLibraryError.
"""

import ctypes
from collections import namedtuple

from . import _library
from ._arguments import (BondArguments, as_float, check, date_array, date_ptr, double_ptr,
                         int_ptr)
from .dates import from_serial, to_serial
from .errors import KBondNotFoundError
from .types import type_code

Cashflow = namedtuple("Cashflow", "date coupon principal periods")


def _export(export):
    fn = getattr(_library.library(), export, None)
    if fn is None:
        raise KBondNotFoundError(f"{_library.library_path()} does not export {export}")
    return fn


def _call(export, bond, own):
    fn = _export(export)
    args = BondArguments(**bond)
    result = fn(*args.call_list(export, own))
    check(args.error, export)
    return result


def price(*, yield_, **bond):
    """Clean price per 100 from a yield (KVLbpr)."""
    return _call("KVLbpr", bond, {"yield": as_float("yield_", yield_)})


def bond_yield(*, price, **bond):
    """Yield to maturity (decimal) from a clean price per 100 (KVLbyld)."""
    return _call("KVLbyld", bond, {"price": as_float("price", price)})


def accrued(**bond):
    """Accrued interest per 100 at settlement, negative ex-dividend (KVLbai1).

    Redemption, taxes other than coupon_tax, horizon, issue price and yield
    method do not change accrued interest and are ignored."""
    for ignored in ("redemption", "discount_tax", "horizon", "issue_price", "yield_method"):
        bond.pop(ignored, None)
    return _call("KVLbai1", bond, {})


def duration(*, yield_, macaulay=False, **bond):
    """Modified duration in years at a yield; Macaulay when asked (KVLbdur)."""
    kind = ctypes.pointer(ctypes.c_int32(1 if macaulay else 0))
    return _call("KVLbdur", bond, {"yield": as_float("yield_", yield_), "duration_kind": kind})


def convexity(*, yield_, **bond):
    """Convexity in years squared at a yield (KVLbconv)."""
    return _call("KVLbconv", bond, {"yield": as_float("yield_", yield_)})


def pvbp(*, yield_, scale=None, **bond):
    """Price value of a basis point per 100 of face (KVLbvalbp)."""
    scale_ptr = None if scale is None else ctypes.pointer(ctypes.c_double(as_float("scale", scale)))
    return _call("KVLbvalbp", bond, {"yield": as_float("yield_", yield_), "scale": scale_ptr})


def cashflows(*, price=None, **bond):
    """The remaining cash flows as a list of Cashflow(date, coupon, principal,
    periods); `price` (clean, per 100) only matters for the tax on the gain."""
    lib = _library.library()
    _export("KVLbcshflw")
    out_dates = ctypes.POINTER(ctypes.c_int32)()
    out_coupons, out_principal, out_periods = (ctypes.POINTER(ctypes.c_double)()
                                               for _ in range(3))
    args = BondArguments(**bond)
    own = {"out_dates": ctypes.byref(out_dates), "out_coupons": ctypes.byref(out_coupons),
           "out_principal": ctypes.byref(out_principal),
           "out_periods": ctypes.byref(out_periods),
           "price": None if price is None else ctypes.pointer(ctypes.c_double(as_float("price", price)))}
    rows = lib.KVLbcshflw(*args.call_list("KVLbcshflw", own))
    try:
        check(args.error, "KVLbcshflw")
        return [Cashflow(from_serial(out_dates[i]), out_coupons[i], out_principal[i],
                         out_periods[i]) for i in range(rows)]
    finally:
        lib.KVLbcshflw_free(out_dates, out_coupons, out_principal, out_periods)


def coupon_date(*, maturity, settlement, k=0, dated_date=None, first_coupon=None,
                bond_type=None, frequency=None, eom=None):
    """A coupon date counted from settlement: 0 the last on or before it, 1
    the next, -1 the one before the last (KVLbcpn). Returns a datetime.date."""
    error = ctypes.c_int32(0)
    code = type_code(bond_type)
    serial = _export("KVLbcpn")(
        to_serial(maturity), to_serial(settlement), int_ptr("k", k), date_ptr(dated_date),
        date_ptr(first_coupon), int_ptr("bond_type", code), int_ptr("frequency", frequency),
        int_ptr("eom", eom), ctypes.byref(error))
    check(error, "KVLbcpn")
    return from_serial(serial)


def coupons_remaining(*, maturity, settlement, dated_date=None, first_coupon=None,
                      bond_type=None, frequency=None, eom=None):
    """The number of coupons still to be paid after settlement (KVLbncpn)."""
    error = ctypes.c_int32(0)
    code = type_code(bond_type)
    count = _export("KVLbncpn")(
        to_serial(maturity), to_serial(settlement), date_ptr(dated_date),
        date_ptr(first_coupon), int_ptr("bond_type", code), int_ptr("frequency", frequency),
        int_ptr("eom", eom), ctypes.byref(error))
    check(error, "KVLbncpn")
    return count


def conversion_factor(*, coupon, maturity, delivery, contract=0, notional=None,
                      check_eligibility=True, holidays=None, dated_date=None,
                      first_coupon=None):
    """Bond-futures conversion factor of a bond for a contract code (KVLbfact1)."""
    error = ctypes.c_int32(0)
    holiday_buf, n_holidays = date_array(holidays)
    result = _library.library().KVLbfact1(
        as_float("coupon", coupon), to_serial(maturity), to_serial(delivery),
        int_ptr("contract", contract), holiday_buf, n_holidays, None, None, None,
        date_ptr(dated_date), date_ptr(first_coupon), double_ptr("notional", notional),
        int_ptr("check_eligibility", 1 if check_eligibility else 0), ctypes.byref(error))
    check(error, "KVLbfact1")
    return result

