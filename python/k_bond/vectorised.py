"""Portfolio helpers: one call for many bonds.

Any of coupon, maturity, settlement and the market input (yield_ or price)
may be a sequence or a numpy array; the other keywords are shared by every
row. With errors="raise" the first failing row raises KBondLibraryError
(its `.row` names the row); with errors="nan" failing rows give NaN. The
result is a list, or a numpy array when any input was one.

Bonds described by the keywords of `kbond batch` (one coupon, type,
frequency, dated date, first coupon, redemption; bond_type may then be a
column of codes or names too) are valued in one call of
the library's batch entry point on `threads` threads (0: every core), with
the GIL released. Other descriptions (stepped coupons, taxes, sinking funds,
holidays) are valued row by row: the C arguments are prepared once and only
the varying cells are rewritten per row.
"""

import ctypes
import math

from . import _library
from ._arguments import BondArguments, as_float, is_sequence
from .dates import to_serial
from .errors import KBondArgumentError, KBondLibraryError

try:
    import numpy as _np
except ImportError:
    _np = None

_VARYING = ("coupon", "maturity", "settlement")
_EPOCH_1970 = 25568  # serial of 1 January 1970


def _is_numpy(value):
    return _np is not None and isinstance(value, _np.ndarray)


def _date_column(values):
    if _is_numpy(values) and values.dtype.kind == "M":
        days = values.astype("datetime64[D]").astype("int64")
        return [int(d) + _EPOCH_1970 for d in days]
    return [to_serial(v) for v in values]


def _columns(bond, market_name, market):
    """Splits the inputs into per-row columns and shared keywords."""
    columns, lengths = {}, set()
    for name in _VARYING + ((market_name,) if market_name else ()):
        value = market if name == market_name else bond.get(name)
        # A list of coupons with step dates is one stepped bond, not a column.
        stepped = name == "coupon" and bond.get("step_dates") is not None
        if is_sequence(value) and not stepped:
            if name in ("maturity", "settlement"):
                columns[name] = _date_column(value)
            else:
                columns[name] = [as_float(name, v) for v in value]
            lengths.add(len(columns[name]))
    if len(lengths) > 1:
        raise KBondArgumentError(f"sequences of different lengths: {sorted(lengths)}", 60)
    rows = lengths.pop() if lengths else 1
    return columns, rows


def _run(export, market_name, market, bond, errors, own=None):
    if errors not in ("raise", "nan"):
        raise KBondArgumentError('errors must be "raise" or "nan"', 1)
    fn = getattr(_library.library(), export, None)
    if fn is None:
        raise KBondArgumentError(f"this library does not export {export}", None)
    columns, rows = _columns(bond, market_name, market)
    use_numpy = any(_is_numpy(v) for v in list(bond.values()) + [market])
    if market_name is None:
        bond = {k: v for k, v in bond.items()
                if k not in ("redemption", "discount_tax", "horizon", "issue_price",
                             "yield_method")}
    first = dict(bond)
    for name, column in columns.items():
        if name != market_name and rows:
            first[name] = column[0]
    if rows == 0:
        return _np.empty(0) if use_numpy else []
    args = BondArguments(**first)
    own = dict(own or {})
    market_slot = None
    if market_name is not None:
        c_market = "yield" if market_name == "yield_" else "price"
        own[c_market] = as_float(market_name, market) if market_name not in columns else 0.0
        market_slot = BondArguments.slot(export, c_market)
    call = args.call_list(export, own)
    settlement_slot = BondArguments.slot(export, "settlement")
    coupon_cell, maturity_cell = args.values["coupons"], args.values["dates"]
    coupon_col, maturity_col = columns.get("coupon"), columns.get("maturity")
    settlement_col, market_col = columns.get("settlement"), columns.get(market_name)
    error = args.error
    out = [0.0] * rows
    for i in range(rows):
        if coupon_col is not None:
            coupon_cell[0] = coupon_col[i]
        if maturity_col is not None:
            maturity_cell[0] = maturity_col[i]
        if settlement_col is not None:
            call[settlement_slot] = settlement_col[i]
        if market_col is not None and market_slot is not None:
            call[market_slot] = market_col[i]
        error.value = 0
        value = fn(*call)
        if error.value:
            if errors == "raise":
                exc = KBondLibraryError(error.value, f"{export} row {i}")
                exc.row = i
                raise exc
            value = math.nan
        out[i] = value
    return _np.array(out) if use_numpy else out


# Keywords the batch entry point takes; any other sends the call row by row.
_BATCH_KEYWORDS = {"coupon", "maturity", "settlement", "bond_type", "frequency", "dated_date",
                   "first_coupon", "redemption"}


def _array_column(name, values):
    """A numpy column of the per-row values of `name`."""
    if name in ("maturity", "settlement"):
        if _is_numpy(values) and values.dtype.kind == "M":
            return values.astype("datetime64[D]").astype("int64") + _EPOCH_1970
        if _is_numpy(values) and values.dtype.kind in "iu":
            return values
        return _np.array(_date_column(values), dtype=_np.int64)
    if _is_numpy(values) and values.dtype.kind in "fiu":
        return values
    return _np.array([as_float(name, v) for v in values], dtype=_np.float64)


def _batched(export, measure, market_name, market, bond, errors, threads):
    """The batch entry point's values of `measure`, or None when the bond
    keywords need the row-by-row path."""
    if _np is None or not set(bond) <= _BATCH_KEYWORDS or "coupon" not in bond:
        return None
    if is_sequence(bond.get("coupon")) and bond.get("step_dates") is not None:
        return None
    from .batch import GIVEN_PRICE, GIVEN_YIELD, value_columns
    from .types import type_code
    if errors not in ("raise", "nan"):
        raise KBondArgumentError('errors must be "raise" or "nan"', 1)
    use_numpy = any(_is_numpy(v) for v in list(bond.values()) + [market])
    columns, lengths = {}, set()
    for name in ("coupon", "maturity", "settlement", market_name):
        value = market if name == market_name else bond.get(name)
        if name is not None and is_sequence(value):
            columns[name] = _array_column(name, value)
            lengths.add(len(columns[name]))
    if len(lengths) > 1:
        raise KBondArgumentError(f"sequences of different lengths: {sorted(lengths)}", 60)
    rows = lengths.pop() if lengths else 1
    if rows == 0:
        return _np.empty(0) if use_numpy else []

    def column(name, scalar):
        return columns[name] if name in columns else scalar

    def serial(name):
        value = bond.get(name)
        return 0 if value is None else to_serial(value)

    code = bond.get("bond_type")
    if is_sequence(code):  # a type per row: codes or names
        if not (_is_numpy(code) and code.dtype.kind in "iu"):
            codes = {v: type_code(v) for v in set(code)}
            code = _np.array([codes[v] for v in code], dtype=_np.int32)
        if len(code) != rows:
            raise KBondArgumentError(f"a bond_type column of {len(code)} rows among {rows}", 60)
    else:
        code = type_code(code)
    frequency = bond.get("frequency")
    redemption = bond.get("redemption")
    given = GIVEN_PRICE if market_name == "price" else GIVEN_YIELD
    result = value_columns(
        0 if code is None else code,
        column("coupon", as_float("coupon", bond["coupon"]) if "coupon" not in columns else 0),
        column("maturity", serial("maturity") if "maturity" not in columns else 0),
        column("settlement", serial("settlement") if "settlement" not in columns else 0),
        None if market_name is None else column(
            market_name, as_float(market_name, market) if market_name not in columns else 0),
        market_kind=given, frequencies=0 if frequency is None else frequency,
        dated_dates=serial("dated_date"), first_coupons=serial("first_coupon"),
        redemptions=None if redemption is None else as_float("redemption", redemption),
        measures=measure, threads=threads)
    codes = result["error_code"]
    values = result[_MEASURE_NAMES[measure]]
    failed = _np.flatnonzero(codes)
    if failed.size:
        if errors == "raise":
            row = int(failed[0])
            exc = KBondLibraryError(int(codes[row]), f"{export} row {row}")
            exc.row = row
            raise exc
        values[failed] = math.nan
    if rows == 1 and not columns:
        values = values[:1]
    return values if use_numpy else values.tolist()


# The batch entry point's measure bits used here, by output column.
_MEASURE_NAMES = {1: "price", 2: "yield", 4: "accrued", 8: "modified_duration",
                  16: "macaulay_duration", 32: "convexity"}


def prices(*, yield_, errors="raise", threads=0, **bond):
    """Clean prices per 100 from yields (KVLbpr for each row)."""
    got = _batched("KVLbpr", 1, "yield_", yield_, bond, errors, threads)
    return got if got is not None else _run("KVLbpr", "yield_", yield_, bond, errors)


def yields(*, price, errors="raise", threads=0, **bond):
    """Yields to maturity from clean prices (KVLbyld for each row)."""
    got = _batched("KVLbyld", 2, "price", price, bond, errors, threads)
    return got if got is not None else _run("KVLbyld", "price", price, bond, errors)


def convexities(*, yield_, errors="raise", threads=0, **bond):
    """Convexities at yields (KVLbconv for each row)."""
    got = _batched("KVLbconv", 32, "yield_", yield_, bond, errors, threads)
    return got if got is not None else _run("KVLbconv", "yield_", yield_, bond, errors)


def accrued_interest(*, errors="raise", threads=0, **bond):
    """Accrued interest per 100 (KVLbai for each row)."""
    bond_only = {k: v for k, v in bond.items()
                 if k not in ("redemption", "discount_tax", "horizon", "issue_price",
                              "yield_method")}
    got = _batched("KVLbai1", 4, None, None, bond_only, errors, threads)
    return got if got is not None else _run("KVLbai1", None, None, bond, errors)


def durations(*, yield_, macaulay=False, errors="raise", threads=0, **bond):
    """Modified (or Macaulay) durations at yields (KVLbdur for each row)."""
    got = _batched("KVLbdur", 16 if macaulay else 8, "yield_", yield_, bond, errors, threads)
    if got is not None:
        return got
    kind = ctypes.pointer(ctypes.c_int32(1 if macaulay else 0))
    return _run("KVLbdur", "yield_", yield_, bond, errors, {"duration_kind": kind})
