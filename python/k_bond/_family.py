"""Calling one export by the names of its C arguments, and reading the
cash-flow tables the library allocates.

The families' exports take long argument lists of which most are optional
pointers; naming the arguments keeps each wrapper readable and lets the
prototypes in _prototypes.py decide their order."""

import ctypes
import datetime as _dt
import numbers
from collections import namedtuple
from typing import Sequence, Union

from . import _library
from ._arguments import as_float, as_int, check
from ._prototypes import PROTOTYPES
from .dates import from_serial, to_serial
from .errors import KBondArgumentError, KBondNotFoundError

# A date as the package accepts it: datetime.date or datetime, pandas
# Timestamp, numpy.datetime64, an ISO string or a date serial.
DateLike = Union[_dt.date, str, int]
# A coupon rate, or one rate per coupon step.
Rates = Union[float, Sequence[float]]

def export(name):
    """The library's function `name`; the loader binds every export's
    argument and result types from the header's prototypes."""
    fn = getattr(_library.library(), name, None)
    if fn is None:
        raise KBondNotFoundError(f"{_library.library_path()} does not export {name}")
    return fn


_REQUIRED = object()
_plans = {}


def _absent(name, ctype):
    """The value of an argument left out: NULL for a pointer, 0 for a count;
    _REQUIRED for any other."""
    if issubclass(ctype, (ctypes._Pointer, ctypes.c_char_p)):
        return None
    if ctype is ctypes.c_int32 and (name.startswith(("n_", "reserved"))
                                    or name.endswith("_count")):
        return 0
    return _REQUIRED


def _plan(name):
    """The argument names of export `name` with their absent values, and
    the set of the names, worked out once."""
    plan = _plans.get(name)
    if plan is None:
        _, signature = PROTOTYPES[name]
        plan = (tuple((arg, _absent(arg, ctype)) for arg, ctype in signature),
                frozenset(arg for arg, _ in signature))
        _plans[name] = plan
    return plan


def call(name, own, common=None):
    """Calls export `name`: each C argument from `own`, else from `common`
    (a larger set, e.g. a bond's common arguments, of which only the names
    the export takes are used), else NULL or 0. The error pointer is added
    here; a nonzero code raises KBondLibraryError. Returns the result."""
    fn = export(name)
    arguments, names = _plan(name)
    if not own.keys() <= names:
        unknown = ", ".join(sorted(set(own) - names))
        raise TypeError(f"{name} takes no argument {unknown}")
    if common is None:
        common = {}
    error = ctypes.c_int32(0)
    args = []
    for arg, absent in arguments:
        if arg == "error":
            args.append(ctypes.byref(error))
        elif arg in own:
            args.append(own[arg])
        elif arg in common:
            args.append(common[arg])
        elif absent is _REQUIRED:
            raise TypeError(f"argument {arg} of {name} is required")
        else:
            args.append(absent)
    result = fn(*args)
    check(error, name)
    return result


def table(name, free, columns, own, common=None):
    """Calls a cash-flow export whose first arguments receive the columns
    named in `columns` (C output names), and returns them as Python lists
    of equal length. The arrays are released with `free` on every path."""
    _, signature = PROTOTYPES[name]
    outs = {}
    for arg, ctype in signature:
        if arg in columns:
            outs[arg] = ctype._type_()  # a NULL pointer the library fills
    refs = {arg: ctypes.byref(ptr) for arg, ptr in outs.items()}
    rows = 0
    try:
        rows = call(name, {**own, **refs}, common)
        return {arg: [ptr[i] for i in range(rows)] for arg, ptr in outs.items()}
    finally:
        _, free_signature = PROTOTYPES[free]
        export(free)(*[outs[arg] for arg in _free_order(signature, free_signature)])


def _free_order(signature, free_signature):
    """The output arrays in the order the release function takes them: the
    same order as the export's leading output arguments."""
    out_names = [arg for arg, ctype in signature
                 if ctype in (ctypes.POINTER(ctypes.POINTER(ctypes.c_int32)),
                              ctypes.POINTER(ctypes.POINTER(ctypes.c_double)))]
    return out_names[:len(free_signature)]


def frame_or_rows(record, rows, as_frame):
    """A list of `record` tuples, or a pandas DataFrame with the record's
    fields as columns when `as_frame` is true."""
    rows = [record(*row) for row in rows]
    if not as_frame:
        return rows
    import pandas
    return pandas.DataFrame(rows, columns=list(record._fields))


# Rows of the two-column tables (FRN, inflation-linked): a payment date and
# the amount paid on it per 100, the redemption included on the last row.
Payment = namedtuple("Payment", "date amount")


# Argument conversion shared by the families.

def double_ref(name, value):
    """A pointer to a double, or NULL for None."""
    return None if value is None else ctypes.pointer(ctypes.c_double(as_float(name, value)))


def int_ref(name, value):
    """A pointer to an int32 (a bool becomes 0 or 1), or NULL for None."""
    if value is None:
        return None
    if isinstance(value, bool):
        value = int(value)
    return ctypes.pointer(ctypes.c_int32(as_int(name, value)))


def date_ref(value):
    """A pointer to a date serial, or NULL for None."""
    serial = to_serial(value)
    return None if serial is None else ctypes.pointer(ctypes.c_int32(serial))


def date_value(name, value):
    """A required date as a serial."""
    if value is None:
        raise KBondArgumentError(f"{name} is required", 150)
    return to_serial(value)


def doubles(name, values):
    """(array, count) of a float or a sequence of floats; (None, 0) for None."""
    if values is None:
        return None, 0
    if isinstance(values, numbers.Real) and not isinstance(values, bool):
        values = [values]
    values = [as_float(name, v) for v in values]
    if not values:
        raise KBondArgumentError(f"{name} must not be empty", 60)
    return (ctypes.c_double * len(values))(*values), len(values)


def dates(values):
    """(array, count) of date serials; (None, 0) for None or empty."""
    if values is None:
        return None, 0
    serials = [to_serial(v) for v in values]
    return (ctypes.c_int32 * max(len(serials), 1))(*serials), len(serials)


def choice(name, value, allowed):
    """The code of `value`, given as a code or as one of the names in
    `allowed` (name -> code); None stays None."""
    if value is None:
        return None
    if isinstance(value, str):
        key = value.strip().lower()
        if key not in allowed:
            raise KBondArgumentError(
                f"{name} must be one of {', '.join(sorted(allowed))}, not {value!r}", 460)
        return allowed[key]
    return as_int(name, value)


def weekend_flags(saturday_works, sunday_works):
    """The calendar flag word: bit 0 Saturday is a business day, bit 1 Sunday."""
    if not saturday_works and not sunday_works:
        return None
    return (1 if saturday_works else 0) | (2 if sunday_works else 0)


def to_dates(serials):
    return [from_serial(s) for s in serials]


class Described:
    """Base of the family objects. The C arguments that describe the bond
    do not change from call to call: they are built once and built again
    after any public attribute is set."""

    def __setattr__(self, name, value):
        object.__setattr__(self, name, value)
        if not name.startswith("_"):
            self.__dict__.pop("_built", None)

    def _cached(self, key, build):
        """The dict `build()` returns, kept under `key` until the bond changes."""
        built = self.__dict__.get("_built")
        if built is None:
            built = {}
            object.__setattr__(self, "_built", built)
        value = built.get(key)
        if value is None:
            value = built[key] = build()
        return value
