"""Date serials: 1 = 1 January 1900, proleptic Gregorian (1 March 1900 = 60)."""

import datetime as _dt
import numbers as _numbers

from .errors import KBondArgumentError

_EPOCH = _dt.date(1899, 12, 31)
_EPOCH_ORDINAL = _EPOCH.toordinal()


def to_serial(value):
    """A date serial from a datetime.date, a datetime, an ISO string or an int.

    None maps to None (an absent optional date); 0 stays 0 (the library reads
    it as "derive this date")."""
    if value is None:
        return None
    if isinstance(value, _dt.datetime):
        value = value.date()
    if isinstance(value, _dt.date):
        return value.toordinal() - _EPOCH_ORDINAL
    if isinstance(value, str):
        try:
            return _dt.date.fromisoformat(value).toordinal() - _EPOCH_ORDINAL
        except ValueError:
            raise KBondArgumentError(f"not an ISO date: {value!r}", 150) from None
    if isinstance(value, bool) or not isinstance(value, _numbers.Integral):
        # numpy integers are Integral; floats are refused rather than truncated.
        raise KBondArgumentError(
            f"a date must be a datetime.date, an ISO string or an integer serial, "
            f"not {type(value).__name__}", 150)
    value = int(value)
    if not -2**31 <= value < 2**31:
        raise KBondArgumentError(f"date serial out of range: {value}", 150)
    return value


def from_serial(serial):
    """The datetime.date of a date serial (>= 1)."""
    serial = int(serial)
    if serial < 1:
        raise KBondArgumentError(f"not a valid date serial: {serial}", 150)
    return _dt.date.fromordinal(_EPOCH_ORDINAL + serial)
