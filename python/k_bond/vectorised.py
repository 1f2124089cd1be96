"""Portfolio helpers: one call for many bonds.

Any of coupon, maturity, settlement and the market input (yield_ or price)
may be a sequence or a numpy array; the other keywords are shared by every
row. The C arguments are prepared once and only the varying cells are
rewritten per row. With errors="raise" the first failing row raises
KBondLibraryError (its `.row` names the row); with errors="nan" failing rows
give NaN. The result is a list, or a numpy array when any input was one.
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


def prices(*, yield_, errors="raise", **bond):
    """Clean prices per 100 from yields, row by row (KVLbpr)."""
    return _run("KVLbpr", "yield_", yield_, bond, errors)


def yields(*, price, errors="raise", **bond):
    """Yields to maturity from clean prices, row by row (KVLbyld)."""
    return _run("KVLbyld", "price", price, bond, errors)


def convexities(*, yield_, errors="raise", **bond):
    """Convexities at yields, row by row (KVLbconv)."""
    return _run("KVLbconv", "yield_", yield_, bond, errors)


def accrued_interest(*, errors="raise", **bond):
    """Accrued interest per 100, row by row (KVLbai1)."""
    return _run("KVLbai1", None, None, bond, errors)


def durations(*, yield_, macaulay=False, errors="raise", **bond):
    """Modified (or Macaulay) durations at yields, row by row (KVLbdur)."""
    kind = ctypes.pointer(ctypes.c_int32(1 if macaulay else 0))
    return _run("KVLbdur", "yield_", yield_, bond, errors, {"duration_kind": kind})
