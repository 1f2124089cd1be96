"""Turning keyword arguments into the C argument buffers of one export."""

import ctypes
import math
import numbers

from . import _library
from .dates import to_serial
from .errors import KBondArgumentError, KBondLibraryError
from .types import type_code


def as_float(name, value):
    if isinstance(value, bool) or not isinstance(value, numbers.Real):
        raise KBondArgumentError(f"{name} must be a number, not {type(value).__name__}", 1)
    return float(value)


def as_int(name, value):
    if isinstance(value, bool) or not isinstance(value, numbers.Integral):
        raise KBondArgumentError(f"{name} must be an integer, not {type(value).__name__}", 1)
    return int(value)


def double_ptr(name, value):
    return None if value is None else ctypes.pointer(ctypes.c_double(as_float(name, value)))


def int_ptr(name, value):
    return None if value is None else ctypes.pointer(ctypes.c_int32(as_int(name, value)))


def date_ptr(value, name="date"):
    serial = to_serial(value, name, allow_zero=True)
    return None if serial is None else ctypes.pointer(ctypes.c_int32(serial))


def double_array(name, values):
    if values is None:
        return None, 0
    if not is_sequence(values):
        raise KBondArgumentError(f"{name} must be a sequence of numbers", 50)
    values = [as_float(name, v) for v in values]
    return (ctypes.c_double * max(len(values), 1))(*values), len(values)


def date_array(values, name="dates"):
    if values is None:
        return None, 0
    if not is_sequence(values):
        raise KBondArgumentError(f"{name} must be a sequence of dates", 50)
    serials = [to_serial(v, name) for v in values]
    return (ctypes.c_int32 * max(len(serials), 1))(*serials), len(serials)


def check(error, function):
    """Raises KBondLibraryError when the error cell holds a nonzero code."""
    if error.value:
        raise KBondLibraryError(error.value, function)


def is_sequence(value):
    return hasattr(value, "__len__") and not isinstance(value, (str, bytes))


# Keyword arguments describing a straight bond, besides the market input.
BOND_KEYWORDS = (
    "coupon", "maturity", "settlement", "step_dates", "dated_date", "first_coupon",
    "bond_type", "frequency", "amortisation_frequency", "redemption", "coupon_tax",
    "discount_tax", "horizon", "issue_price", "yield_method", "weekend_flags",
    "holidays", "factor", "sink_dates", "sink_ends", "sink_amounts", "sink_premium",
    "exdiv_days",
)


class BondArguments:
    """The C values of the common bond arguments, built once.

    `values` maps each C argument name to the object passed for it. The
    coupon and maturity live in one-element buffers so that a vectorised
    loop can overwrite them in place."""

    def __init__(self, coupon, maturity=None, settlement=None, *, settlement_required=True,
                 step_dates=None,
                 dated_date=None, first_coupon=None, bond_type=None, frequency=None,
                 amortisation_frequency=None, redemption=None, coupon_tax=None,
                 discount_tax=None, horizon=None, issue_price=None, yield_method=None,
                 weekend_flags=None, holidays=None, factor=None, sink_dates=None,
                 sink_ends=None, sink_amounts=None, sink_premium=None, exdiv_days=None):
        if settlement is None and settlement_required:
            raise KBondArgumentError("settlement is required", 1)
        if is_sequence(coupon):
            # Stepped coupons: coupon[i] is in force up to step_dates[i], the
            # last step date being the maturity (or the redemption forms
            # {rate, R} and {rate, a, b} with the maturity alone).
            coupons, n_coupons = double_array("coupon", coupon)
            if step_dates is None:
                if maturity is None:
                    raise KBondArgumentError("maturity or step_dates is required", 1)
                step_dates = [maturity]
            elif not is_sequence(step_dates) or len(step_dates) == 0:
                raise KBondArgumentError("step_dates must be a non-empty sequence of dates", 50)
            elif maturity is not None and (to_serial(maturity, "maturity")
                                           != to_serial(step_dates[-1], "step_dates")):
                raise KBondArgumentError("maturity must be the last of step_dates", 1)
            dates, n_dates = date_array(step_dates, "step_dates")
        else:
            if maturity is None:
                raise KBondArgumentError("maturity is required", 1)
            if step_dates is not None:
                raise KBondArgumentError("step_dates needs one coupon per step", 1)
            coupons = (ctypes.c_double * 1)(as_float("coupon", coupon))
            dates = (ctypes.c_int32 * 1)(to_serial(maturity, "maturity"))
            n_coupons = n_dates = 1
        freq = [frequency or 0] if frequency is not None else []
        if amortisation_frequency is not None:
            freq = [freq[0] if freq else 0, amortisation_frequency]
        freq_buf = (ctypes.c_int32 * 2)(*[as_int("frequency", f) for f in freq]) if freq else None
        holiday_buf, n_holidays = date_array(holidays, "holidays")
        sink_buf, n_sink = date_array(sink_dates, "sink_dates")
        ends_buf, n_ends = date_array(sink_ends, "sink_ends")
        amounts_buf, _ = double_array("sink_amounts", sink_amounts)
        code = type_code(bond_type)
        self.values = {
            "coupons": coupons, "n_coupons": n_coupons, "dates": dates, "n_dates": n_dates,
            "settlement": 0 if settlement is None else to_serial(settlement, "settlement"),
            "dated_date": date_ptr(dated_date, "dated_date"),
            "first_coupon": date_ptr(first_coupon, "first_coupon"),
            "type": None if code is None else ctypes.pointer(ctypes.c_int32(code)),
            "frequency": freq_buf, "n_frequency": len(freq),
            "redemption": double_ptr("redemption", redemption),
            "coupon_tax": double_ptr("coupon_tax", coupon_tax),
            "discount_tax": double_ptr("discount_tax", discount_tax),
            "horizon": int_ptr("horizon", horizon),
            "issue_price": double_ptr("issue_price", issue_price),
            "yield_method": int_ptr("yield_method", yield_method),
            "bd_flags": int_ptr("weekend_flags", weekend_flags),
            "holidays": holiday_buf, "n_holidays": n_holidays,
            "factor": double_ptr("factor", factor), "sink_dates": sink_buf, "n_sink": n_sink,
            "sink_ends": ends_buf, "n_sink_ends": n_ends, "sink_amounts": amounts_buf,
            "sink_premium": double_ptr("sink_premium", sink_premium),
            "exdiv_days": int_ptr("exdiv_days", exdiv_days),
        }
        # The schedule-only exports (coupon dates, ex-dividend date, average
        # life) take the maturity by value and a few arguments of their own.
        self.values["maturity"] = self.values["reference_coupon"] = dates[n_dates - 1]
        self.values["eom"] = None
        self.values["exdiv_period"] = self.values["exdiv_days"]
        self.values["weekend_flags"] = (None if weekend_flags is None else ctypes.pointer(
            ctypes.c_uint8(as_int("weekend_flags", weekend_flags))))
        self.error = ctypes.c_int32(0)
        self.values["error"] = ctypes.byref(self.error)

    def call_list(self, export, own):
        """The argument list of `export`, own arguments taken from `own`."""
        return [own[name] if name in own else self.values[name]
                for name in _library.argument_names(export)]

    @staticmethod
    def slot(export, name):
        """Position of argument `name` in the argument list of `export`."""
        return _library.argument_names(export).index(name)


def finite_or_nan(value):
    return value if math.isfinite(value) else math.nan
