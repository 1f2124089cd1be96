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

# The special families: futures and carry, floating-rate notes.
from . import futures
from .frn import FloatingRateNote, FrnType
from .futures import Future

__all__ += ["Future", "FloatingRateNote", "FrnType", "futures"]

# Perpetual and Brady bonds.
from .brady import BradyBond
from .perpetual import Perpetual

__all__ += ["BradyBond", "Perpetual"]

# Inflation-linked bonds.
from .inflation import IndexLinkedGilt, Oati, Tips

__all__ += ["IndexLinkedGilt", "Oati", "Tips"]

# PIK bonds.
from .pik import PikBond

__all__ += ["PikBond"]
