"""k_bond: fixed-income analytics from Python, through ctypes.

    >>> import datetime as dt, k_bond
    >>> k_bond.price(coupon=0.0425, maturity=dt.date(2034, 11, 15),
    ...              settlement=dt.date(2025, 1, 15), yield_=0.045, bond_type="treasury")

The shared library is found through the environment variable KBOND_LIBRARY
(a path to libk_bond.so) or in the build trees of the source checkout
(build/release first). Errors reported by the library raise
KBondLibraryError, whose `.code` is the library's error code.
"""

from . import frn
from ._library import library_path
from .batch import batch, value_columns
from .bonds import (Cashflow, accrued, bond_yield, cashflows, conversion_factor, convexity,
                    coupon_date, coupons_remaining, duration, price, pvbp)
from .dates import from_serial, to_serial
from .errors import (ERROR_MESSAGES, KBondArgumentError, KBondError, KBondLibraryError,
                     KBondNotFoundError, message_for)
from .types import ALIASES, BondType, CatalogueRow, bond_type, catalogue, type_code, version
from .vectorised import accrued_interest, convexities, durations, prices, yields

# `yield` is a Python keyword; both spellings name the same function.
yield_ = bond_yield

__all__ = [
    "ALIASES", "BondType", "CatalogueRow", "Cashflow", "ERROR_MESSAGES", "KBondArgumentError",
    "KBondError", "KBondLibraryError", "KBondNotFoundError", "accrued", "accrued_interest",
    "bond_type", "bond_yield", "cashflows", "catalogue", "conversion_factor", "convexities",
    "convexity", "coupon_date", "coupons_remaining", "duration", "durations", "frn",
    "from_serial", "library_path", "message_for", "price", "prices", "pvbp", "to_serial",
    "type_code", "version", "yield_", "yields",
]
