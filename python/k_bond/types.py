"""Bond types: codes, names and nicknames, the catalogue's conventions, and
custom types.

A bond type is given by its code (40), its catalogue name ("Gilt", any case)
or a nickname ("gilt", "ust", "acgb", ...). The nicknames come from
bond_type_nicknames.csv beside this module, the same file the kbond
command-line program is built from, so a name means the same in both.
"""

import ctypes
import csv
import numbers
import os
import re
from collections import namedtuple
from typing import Dict, Optional, Union

from . import _library
from .errors import KBondArgumentError, KBondLibraryError

TypeLike = Union[int, str, None]

TypeInfo = namedtuple("TypeInfo", "code eom_code name frequency day_count end_of_month "
                                  "ex_dividend own_conventions nicknames")
TypeInfo.__doc__ = """The conventions of one bond type.

code             the base code (the one names and nicknames give)
eom_code         the code with the end-of-month rule on (the base code itself
                 for 0 and 400, which have it on; None when there is none)
name             the catalogue's name
frequency        default coupons per year; None for a type with no
                 conventions of its own (own_conventions False: 810, Yankee
                 bonds, whose bonds must give their frequency)
day_count        display name of the accrued day count ("act/act", ...), None
                 likewise
end_of_month     True when the code asked about has the end-of-month rule on
ex_dividend      True when the type has an ex-dividend period
nicknames        the nicknames of the base code, in the nickname file's order"""

NICKNAME_FILE = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                             "bond_type_nicknames.csv")
CUSTOM_CODES = range(1000, 1100)


def nickname_key(text: str) -> str:
    """Nicknames compare by their letters and digits alone, ignoring case."""
    return re.sub(r"[^0-9a-z]", "", text.lower())


def _read_nicknames() -> Dict[str, int]:
    names = {}
    with open(NICKNAME_FILE, newline="") as f:
        for row in csv.reader(line for line in f if line[:1].isalnum()):
            names[row[0]] = int(row[1])
    return names


NICKNAMES: Dict[str, int] = _read_nicknames()
ALIASES = NICKNAMES  # the earlier name of the same table
_by_key = {nickname_key(name): code for name, code in NICKNAMES.items()}
_by_name = None
_removed = set()


def _catalogue_names():
    global _by_name
    if _by_name is None:
        names = {}
        for row in _table():
            # The first row of a shared name wins ("Generic Bond" is 500).
            names.setdefault(row[2].lower(), row[0] if row[0] is not None else row[1])
        _by_name = names
    return _by_name


def type_code(name_or_code: TypeLike, argument: str = "bond_type") -> Optional[int]:
    """The integer code of a bond type given by code, catalogue name or
    nickname (None stays None: the library's default, U.S. Treasury).
    Unknown names raise KBondArgumentError (code 460) naming `argument`."""
    if name_or_code is None:
        return None
    if isinstance(name_or_code, str):
        key = nickname_key(name_or_code)
        if key in _by_key:
            return _by_key[key]
        text = " ".join(name_or_code.strip().lower().split())
        names = _catalogue_names()
        if text in names:
            return names[text]
        if re.fullmatch(r"-?\d+", text):
            return _checked_code(int(text), argument)
        raise KBondArgumentError(
            f"{argument}: unknown bond type {name_or_code!r}; give a code, a catalogue name or "
            f"a nickname such as gilt, ust, bund, jgb (k_bond.types() lists them)", 460)
    if isinstance(name_or_code, bool) or not isinstance(name_or_code, numbers.Integral):
        raise KBondArgumentError(
            f"{argument} must be a code or a name, not {type(name_or_code).__name__}", 460)
    return _checked_code(int(name_or_code), argument)


def _checked_code(code, argument):
    if code in _removed:
        raise KBondArgumentError(f"{argument}: custom type {code} was removed", 460)
    return code


def _lookup(code):
    """KVLbtype: (frequency, day count, eom, name) or the error code."""
    freq, eom, err = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_int32()
    day_count, name = ctypes.c_char_p(), ctypes.c_char_p()
    _library.library().KVLbtype(code, ctypes.byref(freq), ctypes.byref(day_count),
                                ctypes.byref(eom), ctypes.byref(name), ctypes.byref(err))
    if err.value:
        return err.value
    return freq.value, day_count.value.decode(), eom.value, name.value.decode()


def _has_ex_dividend(code):
    # The ex-dividend date of a coupon on serial 36500 moves off it only for
    # types with an ex-dividend period.
    err = ctypes.c_int32()
    date = _library.library().KVLbexdiv(36500, 36499, ctypes.byref(ctypes.c_int32(code)), None,
                                        None, 0, None, ctypes.byref(err))
    return err.value == 0 and date != 36500


def _info(code, eom_code, asked=None, ex_dividend=None):
    looked = _lookup(asked if asked is not None else (code if code is not None else eom_code))
    if isinstance(looked, int):
        return looked
    freq, day_count, eom, name = looked
    base = code if code is not None else eom_code
    own = freq > 0
    return TypeInfo(code, eom_code, name, freq if own else None, day_count if own else None,
                    bool(eom), _has_ex_dividend(base) if ex_dividend is None else ex_dividend,
                    own, tuple(n for n, c in NICKNAMES.items() if c == base))


def type_info(bond_type: TypeLike) -> TypeInfo:
    """The conventions of one bond type (code, name or nickname) as a
    TypeInfo. Unknown codes raise KBondLibraryError 460."""
    code = type_code(bond_type)
    if code is None:
        code = 0
    looked = _lookup(code)
    if isinstance(looked, int):
        raise KBondLibraryError(looked, "KVLbtype")
    row = next((r for r in _rows() if code in (r.code, r.eom_code)), None)
    if row is None:
        return _info(code, None, code)
    return _info(row.code, row.eom_code, code, row.ex_dividend)


def _table():
    """KVLbtable's rows: (code, eom code, name, day count, frequency, ex flag)."""
    lib = _library.library()
    codes, eoms, freqs = (ctypes.POINTER(ctypes.c_int32)() for _ in range(3))
    names = ctypes.POINTER(ctypes.c_char_p)()
    day_counts = ctypes.POINTER(ctypes.c_char_p)()
    exdiv = ctypes.c_char_p()
    n = lib.KVLbtable(ctypes.byref(codes), ctypes.byref(eoms), ctypes.byref(names),
                      ctypes.byref(day_counts), ctypes.byref(freqs), ctypes.byref(exdiv))
    flags = ctypes.cast(exdiv, ctypes.POINTER(ctypes.c_char))
    return [(codes[i] if codes[i] >= 0 else None, eoms[i] if eoms[i] >= 0 else None,
             names[i].decode(), day_counts[i].decode(), freqs[i], flags[i] == b"\x01")
            for i in range(n)]


_catalogue_rows = None


def _rows():
    """The whole catalogue: KVLbtable's rows (base codes to 540), then the
    base codes above 540 that the table leaves out, found by asking KVLbtype
    about each code; a variant is the first code after its base, within ten,
    with the same name and the end-of-month rule on."""
    global _catalogue_rows
    if _catalogue_rows is None:
        rows = []
        for code, eom, _, _, _, ex in _table():
            base = code if code is not None else eom  # 0 and 400 have the rule on
            rows.append(_info(base, eom, base, ex))
        known = {c: _lookup(c) for c in range(541, 1000)}
        known = {c: v for c, v in known.items() if not isinstance(v, int)}
        for code, (_, _, eom, name) in known.items():
            if eom:
                continue
            partner = next((c for c in range(code + 1, code + 11)
                            if c in known and known[c][2] and known[c][3] == name), None)
            rows.append(_info(code, partner, code))
        _catalogue_rows = rows
    return _catalogue_rows


def types(frame: bool = False):
    """Every bond type: the catalogue's base codes with their end-of-month
    variants, conventions and nicknames, then the custom types defined now,
    as a list of TypeInfo (a pandas DataFrame with frame=True)."""
    rows = list(_rows())
    for code in CUSTOM_CODES:
        if code not in _removed and not isinstance(_lookup(code), int):
            rows.append(_info(code, None, code))
    if not frame:
        return rows
    import pandas
    return pandas.DataFrame(rows, columns=list(TypeInfo._fields))


# -- custom types -------------------------------------------------------------

def _check_custom_code(code):
    if (isinstance(code, bool) or not isinstance(code, numbers.Integral)
            or code not in CUSTOM_CODES):
        raise KBondArgumentError(f"code: a custom type code is 1000 to 1099, not {code!r}", 460)


_DAY_COUNTS = (0, 1, 2, 3, 4, 5, 6, 9, 10, 11, 12, 13)
_CUSTOM_SETS = {
    "accrual_basis": _DAY_COUNTS, "exdiv_basis": _DAY_COUNTS,
    "frequency": (1, 2, 3, 4, 6, 12), "yield_method": (0, 1, 2, 3, 4),
    "yield_frequency": (0, 1, 2, 3, 4, 6, 12),
}


def define_type(code: int, *, accrual_basis: Optional[int] = None,
                exdiv_basis: Optional[int] = None, end_of_month: Optional[bool] = None,
                frequency: Optional[int] = None, simple_final: Optional[bool] = None,
                yield_method: Optional[int] = None, accrual_days: Optional[int] = None,
                canadian_cap: Optional[bool] = None, mm_basis: Optional[int] = None,
                exdiv_days: Optional[int] = None,
                yield_frequency: Optional[int] = None) -> TypeInfo:
    """Defines (or redefines) custom bond type `code`, 1000 to 1099, usable
    wherever a bond type is taken (KVLbcustom). None selects the default:

    accrual_basis    accrued day-count code 0-6, 9-13 (0, act/act)
    exdiv_basis      day count of negative accrued interest (the accrual basis)
    end_of_month     end-of-month rule (True)
    frequency        coupons per year 1, 2, 3, 4, 6, 12 (2)
    simple_final     price the final period at simple interest (True)
    yield_method     0 compound, 1 Japanese simple, 2 Braess, 3 Moosmueller,
                     4 act/365.25 exponent (0)
    accrual_days     days added to the accrued days (0)
    canadian_cap     a regular period accrues at most 363/frequency days (False)
    mm_basis         money-market days per year, 1 or more (360)
    exdiv_days       ex-dividend period: n >= 1 business days before the
                     coupon, n < 1 calendar days added to it (0: none)
    yield_frequency  compounding of quoted yields 0 (as coupons), 1, 2, 3, 4,
                     6, 12 (0)

    Every value is checked before the library is called (KBondArgumentError
    460 naming the argument), so a refused value never leaves a half-written
    type behind. Returns the type's TypeInfo."""
    _check_custom_code(code)
    given = dict(accrual_basis=accrual_basis, exdiv_basis=exdiv_basis, eom=end_of_month,
                 frequency=frequency, simple_final=simple_final, yield_method=yield_method,
                 accrual_days=accrual_days, canadian_cap=canadian_cap, mm_basis=mm_basis,
                 exdiv_days=exdiv_days, yield_frequency=yield_frequency)
    pointers = {}
    for name, value in given.items():
        shown = "end_of_month" if name == "eom" else name
        if value is None:
            pointers[name] = None
            continue
        if not isinstance(value, numbers.Integral):
            raise KBondArgumentError(f"{shown} must be an integer, not {type(value).__name__}",
                                     460)
        allowed = _CUSTOM_SETS.get(name)
        if (allowed is not None and value not in allowed) or (name == "mm_basis" and value < 1):
            raise KBondArgumentError(
                f"{shown}: {value!r} is not one of {allowed or 'the integers from 1'}", 460)
        pointers[name] = ctypes.byref(ctypes.c_int32(int(value)))
    result = _library.library().KVLbcustom(int(code), *(pointers[n] for n in given))
    if result != code:
        # Every value was checked above, so only the writer lock can refuse.
        raise KBondLibraryError(-60, "KVLbcustom")
    _removed.discard(int(code))
    return type_info(int(code))


def remove_type(code: int) -> None:
    """Removes custom type `code` from this package's view: k_bond refuses
    the code (KBondArgumentError) and types() leaves it out until it is
    defined again. The library itself keeps every slot it was given; a later
    define_type overwrites it."""
    _check_custom_code(code)
    _removed.add(int(code))

