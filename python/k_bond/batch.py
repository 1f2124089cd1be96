"""Whole portfolios in one library call.

`value_columns` hands numpy columns to the library's batch entry point
(KVLbbatch), which values every row on all cores with the GIL released;
`batch` does the same for a pandas DataFrame laid out like the CSV file of
`kbond batch` and returns the columns that command writes.

    >>> frame = pandas.read_csv("portfolio.csv", float_precision="round_trip")
    >>> k_bond.batch(frame)          # id, type, price, yield_pct, accrued, ...
"""

import ctypes
import math

try:  # numpy (and pandas for frames) are the `frames` extra: k_bond imports without them
    import numpy as np
except ImportError:
    np = None

from . import _library
from .errors import ERROR_MESSAGES, KBondArgumentError
from .types import type_code, type_info

# Measure bits of the batch entry point.
PRICE, YIELD, ACCRUED = 1, 2, 4
MODIFIED_DURATION, MACAULAY_DURATION, CONVEXITY, PVBP = 8, 16, 32, 64
_OUTPUTS = (("price", PRICE), ("yield", YIELD), ("accrued", ACCRUED),
            ("modified_duration", MODIFIED_DURATION), ("macaulay_duration", MACAULAY_DURATION),
            ("convexity", CONVEXITY), ("pvbp", PVBP))
GIVEN_YIELD, GIVEN_PRICE = 0, 1
_UNREAD = -1  # market kind of a row that could not be read: refused at once

_P = ctypes.c_void_p
_I32 = ctypes.c_int32
# KVLbbatch(n, types, coupons, maturities, settlements, market, market_kind,
#           market_kinds, frequencies, dated_dates, first_coupons, redemptions,
#           measures, threads, 7 output columns, row_errors, failed_measures, error)
_ARGTYPES = [_I32, _P, _P, _P, _P, _P, _I32, _P, _P, _P, _P, _P, _I32, _I32] + [_P] * 9 + [_P]
_EPOCH_1970 = 25568  # serial of 1 January 1970

_function = None


def _require_numpy():
    if np is None:
        raise KBondArgumentError("k_bond.batch and value_columns need numpy (and pandas for "
                                 "DataFrames): pip install k_bond[frames]", None)


def _kvlbbatch():
    global _function
    if _function is None:
        # A function object of its own (indexing makes a new one), so that the
        # addresses of numpy buffers pass as plain pointers without changing
        # the prototype the package binds for everyone else.
        try:
            fn = _library.library()["KVLbbatch"]
        except AttributeError:
            raise KBondArgumentError("this library does not export KVLbbatch", None) from None
        fn.restype = _I32
        fn.argtypes = _ARGTYPES
        _function = fn
    return _function


def _address(array):
    return None if array is None else array.ctypes.data


def _column(values, dtype, n):
    """A contiguous column of n values (a scalar is repeated); None stays None."""
    if values is None:
        return None
    array = np.asarray(values, dtype=dtype)
    if array.ndim == 0:
        return np.full(n, array, dtype=dtype)
    array = np.ascontiguousarray(array)
    if array.shape != (n,):
        raise KBondArgumentError(f"a column of {array.shape[0]} rows among {n}", 60)
    return array


def value_columns(types, coupons, maturities, settlements, market=None, *,
                  market_kind=GIVEN_YIELD, frequencies=None, dated_dates=None,
                  first_coupons=None, redemptions=None, measures=PRICE, threads=0):
    """Values one bond per row with the library's batch entry point.

    Columns are array-likes of one length (scalars are repeated): type codes,
    decimal coupons, date serials, and `market` (yields as decimals or clean
    prices). `market_kind` is GIVEN_YIELD, GIVEN_PRICE or a column of them.
    `measures` combines PRICE, YIELD, ACCRUED, MODIFIED_DURATION,
    MACAULAY_DURATION, CONVEXITY and PVBP; `threads` 0 uses every core.
    Returns a dict of float64 columns by measure name, plus "error_code"
    (int32, 0 for a valued row) and "failed_measure" (the bit that failed).
    A failed row holds the single export's failure value in the measure
    that failed and NaN in the ones after it."""
    _require_numpy()
    n = max((np.size(c) for c in (types, coupons, maturities, settlements, market, market_kind,
                                   frequencies, dated_dates, first_coupons, redemptions)
             if c is not None and np.ndim(c) != 0), default=1)
    types = _column(types, np.int32, n)
    coupons = _column(coupons, np.float64, n)
    maturities = _column(maturities, np.int32, n)
    settlements = _column(settlements, np.int32, n)
    market = _column(market, np.float64, n)
    kinds = None
    if np.ndim(market_kind) != 0:
        kinds, market_kind = _column(market_kind, np.int32, n), GIVEN_YIELD
    optional = [_column(c, dtype, n) for c, dtype in
                ((frequencies, np.int32), (dated_dates, np.int32), (first_coupons, np.int32),
                 (redemptions, np.float64))]
    out = {name: np.empty(n) for name, bit in _OUTPUTS if measures & bit}
    errors = np.empty(n, dtype=np.int32)
    failed = np.empty(n, dtype=np.int32)
    error = ctypes.c_int32(0)
    _kvlbbatch()(n, _address(types), _address(coupons), _address(maturities),
                 _address(settlements), _address(market), int(market_kind), _address(kinds),
                 *(_address(c) for c in optional), int(measures), int(threads),
                 *(_address(out.get(name)) for name, _ in _OUTPUTS), _address(errors),
                 _address(failed), ctypes.byref(error))
    if error.value:
        raise KBondArgumentError(
            f"KVLbbatch refused the columns: {ERROR_MESSAGES.get(error.value, 'unknown error')}",
            error.value)
    out["error_code"] = errors
    out["failed_measure"] = failed
    return out


# ---------------------------------------------------------------------------
# DataFrames laid out like the CSV of `kbond batch`.
# ---------------------------------------------------------------------------

_STAGES = {PRICE: "price", YIELD: "yield", ACCRUED: "accrued interest",
           MODIFIED_DURATION: "modified duration", CONVEXITY: "convexity", PVBP: "PVBP"}
_FRAME_MEASURES = PRICE | YIELD | ACCRUED | MODIFIED_DURATION | CONVEXITY | PVBP


def output_columns(decimal=False):
    """The columns `batch` returns (and `kbond batch` writes), in order."""
    return ["id", "type", "price", "yield" if decimal else "yield_pct", "accrued",
            "modified_duration", "convexity", "pvbp", "error_code", "error"]


def _blank(series, spaces=True):
    """True where a CSV cell is empty (or, with `spaces`, holds only spaces)."""
    empty = series.isna().values
    if spaces and series.dtype == object:
        text = series[~empty]
        if len(text):
            empty = empty.copy()
            empty[~empty] = text.astype(str).str.strip().values == ""
    return empty


def _dates(series, required):
    """Serials from ISO dates, serials or datetime64: 0 where an optional
    cell is empty, -1 where a cell is not a date."""
    import pandas as pd
    # A required date of spaces is no date either way: no need to look.
    empty = _blank(series, spaces=not required)
    if pd.api.types.is_datetime64_any_dtype(series):
        serial = series.values.astype("datetime64[D]").astype(np.int64) + _EPOCH_1970
    else:
        numbers = pd.to_numeric(series, errors="coerce") if series.dtype == object else series
        numbers = numbers.astype(np.float64).values
        whole = ~np.isnan(numbers) & (numbers == np.round(numbers)) & (numbers > 0)
        serial = np.where(whole, np.nan_to_num(numbers), -1).astype(np.int64)
        rest = np.isnan(numbers) & ~empty
        if rest.any():  # ISO dates
            iso = pd.to_datetime(series[rest].astype(str).str.strip(), format="%Y-%m-%d",
                                 errors="coerce")
            days = iso.values.astype("datetime64[D]").astype(np.int64) + _EPOCH_1970
            serial[rest] = np.where(iso.notna().values, days, -1)
    return np.where(empty, -1 if required else 0, serial)


def _price_value(text):
    """A clean price from a number or Treasury 32nds (98-01, 98-01+, 98-012)."""
    text = str(text).strip()
    whole, dash, ticks = text.partition("-")
    if not dash or not whole:
        return float(text)
    if not (2 <= len(ticks) <= 3 and ticks[:2].isdigit() and int(ticks[:2]) <= 31):
        raise ValueError(text)
    eighths = 0.0
    if len(ticks) == 3:
        if ticks[2] == "+":
            eighths = 4.0
        elif ticks[2] in "01234567":
            eighths = float(ticks[2])
        else:
            raise ValueError(text)
    points = float(whole)
    if points < 0:
        raise ValueError(text)
    return points + (int(ticks[:2]) + eighths / 8.0) / 32.0


def _numbers(series, parse=float):
    """Floats of a column; NaN where a cell is empty or not a number."""
    import pandas as pd
    if pd.api.types.is_numeric_dtype(series):
        return series.astype(np.float64).values
    if parse is float:
        return pd.to_numeric(series, errors="coerce").astype(np.float64).values

    def one(cell):
        try:
            value = parse(cell)
            return value if math.isfinite(value) else math.nan
        except (TypeError, ValueError):
            return math.nan
    return np.array([one(c) for c in series], dtype=np.float64)


def _type_codes(series):
    """Codes of a type column (names, nicknames or codes); -1 where unknown."""
    if series is None:
        return None
    codes = {}
    for value in series.dropna().unique():
        key = value.item() if hasattr(value, "item") else value
        if isinstance(key, float) and key.is_integer():
            key = int(key)
        if isinstance(key, str) and not key.strip():
            codes[value] = 0
            continue
        try:
            code = type_code(key.strip() if isinstance(key, str) else key)
            type_info(code)  # codes outside the catalogue are input errors
            codes[value] = code
        except Exception:  # noqa: BLE001 - any refusal makes the row an input error
            codes[value] = -1
    return np.where(series.isna().values, 0,
                    series.map(codes).fillna(-1).values).astype(np.int32)


def batch(frame, *, decimal=False, threads=0):
    """Values a DataFrame with the columns of `kbond batch`'s CSV (id, type,
    coupon, maturity, settlement, price or yield, and optionally frequency,
    dated, first_coupon, redemption) and returns a DataFrame with the
    command's output columns, on the same index. Coupons and yields are in
    percent unless `decimal`. Rows that cannot be read get error_code
    "input"; rows the library refuses get its code as text; error_code is
    "" for a valued row. `threads` 0 uses every core."""
    _require_numpy()
    import pandas as pd
    missing = [c for c in ("coupon", "maturity", "settlement") if c not in frame.columns]
    if missing or ("price" not in frame.columns and "yield" not in frame.columns):
        raise KBondArgumentError(
            f"the frame needs the columns coupon, maturity, settlement and price or yield "
            f"(missing: {', '.join(missing) or 'price and yield'})", 50)
    n = len(frame)
    get = frame.get
    scale = 1.0 if decimal else 100.0
    problems = np.zeros(n, dtype=bool)

    coupons = _numbers(frame["coupon"]) / scale
    problems |= np.isnan(coupons)
    maturities = _dates(frame["maturity"], True)
    settlements = _dates(frame["settlement"], True)
    problems |= (maturities < 0) | (settlements < 0)
    dated, first = (np.zeros(n, dtype=np.int64),) * 2
    for name in ("dated", "first_coupon"):
        if name in frame.columns:
            values = _dates(frame[name], False)
            problems |= values < 0
            if name == "dated":
                dated = values
            else:
                first = values
    types = _type_codes(get("type"))
    if types is None:
        types = np.zeros(n, dtype=np.int32)
    problems |= types < 0
    frequencies = np.zeros(n, dtype=np.int32)
    if "frequency" in frame.columns:
        f = _numbers(frame["frequency"])
        empty = _blank(frame["frequency"])
        problems |= ~empty & (np.isnan(f) | (f != np.round(f)))
        frequencies = np.where(empty | np.isnan(f), 0, f).astype(np.int32)
    redemptions = np.full(n, 100.0)
    if "redemption" in frame.columns:
        r = _numbers(frame["redemption"])
        empty = _blank(frame["redemption"])
        problems |= ~empty & np.isnan(r)
        redemptions = np.where(empty, 100.0, r)
    has_price = ~_blank(frame["price"]) if "price" in frame.columns else np.zeros(n, bool)
    has_yield = ~_blank(frame["yield"]) if "yield" in frame.columns else np.zeros(n, bool)
    problems |= has_price == has_yield
    market = np.full(n, math.nan)
    if has_price.any():
        market = np.where(has_price, _numbers(frame["price"], _price_value), market)
    if has_yield.any():
        market = np.where(has_yield, _numbers(frame["yield"]) / scale, market)
    problems |= np.isnan(market)
    kinds = np.where(problems, _UNREAD, np.where(has_price, GIVEN_PRICE, GIVEN_YIELD))

    r = value_columns(np.where(types < 0, 0, types), np.nan_to_num(coupons),
                      np.clip(maturities, 0, None), np.clip(settlements, 0, None),
                      np.nan_to_num(market), market_kind=kinds, frequencies=frequencies,
                      dated_dates=np.clip(dated, 0, None), first_coupons=np.clip(first, 0, None),
                      redemptions=redemptions, measures=_FRAME_MEASURES, threads=threads)
    codes = r["error_code"]
    ok = (codes == 0) & ~problems
    out = pd.DataFrame(index=frame.index)
    out["id"] = frame["id"].astype(str).where(frame["id"].notna(), "").values \
        if "id" in frame.columns else ""
    out["type"] = np.where(types < 0, 0, types)
    yield_name = "yield" if decimal else "yield_pct"
    for name, values in (("price", r["price"]), (yield_name, r["yield"] * scale),
                         ("accrued", r["accrued"]), ("modified_duration", r["modified_duration"]),
                         ("convexity", r["convexity"]), ("pvbp", r["pvbp"])):
        out[name] = np.where(ok, values, math.nan)
    out["error_code"] = np.where(problems, "input",
                                 np.where(codes == 0, "", codes.astype(str))).astype(object)
    errors = np.full(n, "", dtype=object)
    for i in np.flatnonzero(~ok):
        errors[i] = _error_text(problems[i], codes[i], r["failed_measure"][i])
    out["error"] = errors
    return out


def _error_text(problem, code, measure):
    if problem:
        return "the row could not be read (check its dates, numbers, type and price or yield)"
    if code == 0:
        return ""
    return (f"{_STAGES.get(int(measure), 'PVBP')}: error {int(code)}: "
            f"{ERROR_MESSAGES.get(int(code), 'unknown error')}")
