"""Books larger than one machine: a dask DataFrame valued partition by
partition through `k_bond.batch`, on whatever cluster dask is connected to.

    >>> import dask.dataframe as dd, k_bond.dask
    >>> book = dd.read_csv("book-*.csv", blocksize="64MB", dtype=k_bond.dask.CSV_DTYPES)
    >>> k_bond.dask.value(book).to_parquet("valued/")

Each partition is one KVLbbatch call on the worker that holds it (every core
of that worker unless `threads` says otherwise); nothing is gathered on the
client until the caller asks for it.
"""

import numpy as np
import pandas as pd

from .batch import batch, output_columns

# Column types that keep `dd.read_csv` from guessing per block: text where a
# cell may hold a name or a date, floats for rates and prices (give "price":
# "object" for a book quoted in 32nds).
CSV_DTYPES = {"id": "object", "type": "object", "coupon": "float64", "maturity": "object",
              "settlement": "object", "price": "float64", "yield": "float64",
              "frequency": "float64", "dated": "object", "first_coupon": "object",
              "redemption": "float64"}


def meta(decimal=False):
    """An empty DataFrame with the columns and types `value` produces."""
    columns = output_columns(decimal)
    types = {"id": object, "type": np.int32, "error_code": object, "error": object}
    return pd.DataFrame({c: pd.Series(dtype=types.get(c, np.float64)) for c in columns})


def value(frame, *, decimal=False, threads=0):
    """The valued book: `k_bond.batch` mapped over the partitions of a dask
    DataFrame (columns as `kbond batch` reads them), lazily; index and
    partitions are kept."""
    return frame.map_partitions(batch, decimal=decimal, threads=threads, meta=meta(decimal))
