"""Bond type codes: readable names, and the catalogue's conventions."""

import ctypes
import numbers
from collections import namedtuple

from . import _library
from .errors import KBondArgumentError, KBondLibraryError

BondType = namedtuple("BondType", "code name frequency day_count eom")
CatalogueRow = namedtuple(
    "CatalogueRow", "code eom_code name day_count frequency ex_dividend")

# Short names for the markets users ask for most; any catalogue name
# ("Gilt", "Corporate Bond", ...) is accepted as well, case-insensitively.
ALIASES = {
    "treasury": 0, "ust": 0, "us treasury": 0, "u.s. treasury": 0,
    "agency": 1, "municipal": 2, "muni": 2, "corporate": 3, "corp": 3,
    "canada": 20, "gilt": 40, "uk": 40, "bund": 60, "germany": 60,
    "btan": 80, "oat": 81, "france": 81, "swiss": 100, "belgium": 120,
    "austria": 140, "netherlands": 160, "dsl": 160, "sweden": 180,
    "korea": 190, "jgb": 200, "japan": 200, "australia": 220,
    "eurobond": 240, "btp": 260, "italy": 260, "spain": 280, "bono": 280,
    "portugal": 290, "denmark": 300, "finland": 320, "norway": 330,
    "ireland": 340, "new zealand": 350, "south africa": 380,
    "generic": 500, "generic act/act": 500, "generic act/365": 510,
    "generic act/360": 520, "generic 30/360": 530, "generic 30e/360": 540,
}

_by_name = None


def _catalogue_names():
    global _by_name
    if _by_name is None:
        names = {}
        for row in catalogue():
            code = row.code if row.code >= 0 else row.eom_code
            # The first row of a name wins ("Generic Bond" is act/act, 500).
            names.setdefault(row.name.lower(), code)
        _by_name = names
    return _by_name


def type_code(bond_type):
    """The integer code of a bond type given by code or by name (None stays
    None: the library's default, U.S. Treasury)."""
    if bond_type is None:
        return None
    if isinstance(bond_type, str):
        key = " ".join(bond_type.strip().lower().split())
        if key in ALIASES:
            return ALIASES[key]
        names = _catalogue_names()
        if key in names:
            return names[key]
        if key.lstrip("-").isdigit():
            return int(key)
        raise KBondArgumentError(f"unknown bond type name: {bond_type!r}", 460)
    if isinstance(bond_type, bool) or not isinstance(bond_type, numbers.Integral):
        raise KBondArgumentError(
            f"bond type must be a code or a name, not {type(bond_type).__name__}", 460)
    return int(bond_type)


def bond_type(code):
    """The conventions of one bond type (code or name) as a BondType."""
    lib = _library.library()
    code = type_code(code)
    freq, eom, err = ctypes.c_int32(), ctypes.c_int32(), ctypes.c_int32()
    day_count, name = ctypes.c_char_p(), ctypes.c_char_p()
    lib.KVLbtype(code, ctypes.byref(freq), ctypes.byref(day_count), ctypes.byref(eom),
                 ctypes.byref(name), ctypes.byref(err))
    if err.value:
        raise KBondLibraryError(err.value, "KVLbtype")
    return BondType(code, name.value.decode(), freq.value, day_count.value.decode(),
                    bool(eom.value))


def catalogue():
    """Every base type of the catalogue, one CatalogueRow per base code."""
    lib = _library.library()
    codes, eoms, freqs = (ctypes.POINTER(ctypes.c_int32)() for _ in range(3))
    names = ctypes.POINTER(ctypes.c_char_p)()
    day_counts = ctypes.POINTER(ctypes.c_char_p)()
    exdiv = ctypes.c_char_p()
    n = lib.KVLbtable(ctypes.byref(codes), ctypes.byref(eoms), ctypes.byref(names),
                      ctypes.byref(day_counts), ctypes.byref(freqs), ctypes.byref(exdiv))
    flags = ctypes.cast(exdiv, ctypes.POINTER(ctypes.c_char))
    return [CatalogueRow(codes[i], eoms[i], names[i].decode(), day_counts[i].decode(),
                         freqs[i], flags[i] == b"\x01") for i in range(n)]


def version():
    """The library's version string."""
    return _library.library().KVLbondver().decode()
