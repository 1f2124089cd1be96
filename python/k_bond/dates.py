"""Date serials: 1 = 1 January 1900, proleptic Gregorian (1 March 1900 = 60).

Dates are accepted as datetime.date, datetime.datetime (pandas Timestamp is
one), numpy.datetime64, ISO strings ("2025-01-15") and integer serials, and
come back as datetime.date.
"""

import datetime as _dt
import numbers as _numbers
from typing import TYPE_CHECKING, Union

from .errors import KBondArgumentError

if TYPE_CHECKING:
    import numpy

_EPOCH_ORDINAL = _dt.date(1899, 12, 31).toordinal()
_EPOCH_1970 = 25568  # serial of 1 January 1970, the origin of numpy's day counts
LAST_SERIAL = 1825000  # the library's last valid date (in the year 6896)

DateLike = Union[_dt.date, _dt.datetime, str, int, "numpy.datetime64"]


def _numpy_days(value):
    # numpy.datetime64 without importing numpy: whole days since 1970.
    if str(value) == "NaT":
        return None
    return int(value.astype("datetime64[D]").astype("int64"))


def to_serial(value: DateLike, name: str = "date", *, allow_zero: bool = False) -> int:
    """The date serial of `value`. `name` is the argument named in the
    KBondArgumentError raised for anything that is not a date between
    1 January 1900 and the library's last date. None maps to None (an absent
    optional date); with allow_zero, 0 stays 0 (the library then derives the
    date)."""
    kind = type(value)
    if kind is _dt.date:
        serial = value.toordinal() - _EPOCH_ORDINAL
    elif value is None:
        return None
    elif isinstance(value, _dt.datetime):
        serial = value.date().toordinal() - _EPOCH_ORDINAL
    elif isinstance(value, _dt.date):
        serial = value.toordinal() - _EPOCH_ORDINAL
    elif isinstance(value, str):
        try:
            serial = _dt.datetime.fromisoformat(value.strip()).date().toordinal() - _EPOCH_ORDINAL
        except ValueError:
            raise KBondArgumentError(f"{name}: not an ISO date (YYYY-MM-DD): {value!r}",
                                     150) from None
    elif kind.__name__ == "datetime64":
        days = _numpy_days(value)
        if days is None:
            raise KBondArgumentError(f"{name}: not a date (NaT)", 150)
        serial = days + _EPOCH_1970
    elif isinstance(value, bool) or not isinstance(value, _numbers.Integral):
        # numpy integers are Integral; floats are refused rather than truncated.
        raise KBondArgumentError(
            f"{name} must be a date (datetime.date, datetime, numpy.datetime64, ISO string or "
            f"integer serial), not {kind.__name__}", 150)
    else:
        serial = int(value)
        if serial == 0 and allow_zero:
            return 0
    if not 1 <= serial <= LAST_SERIAL:
        raise KBondArgumentError(
            f"{name}: date out of range ({value!r} is serial {serial}; the library takes "
            f"1 January 1900 to serial {LAST_SERIAL})", 150)
    return serial


def from_serial(serial: int) -> _dt.date:
    """The datetime.date of a date serial (1 or more)."""
    serial = int(serial)
    if serial < 1:
        raise KBondArgumentError(f"not a valid date serial: {serial}", 150)
    return _dt.date.fromordinal(_EPOCH_ORDINAL + serial)
