"""k_bond: fixed-income analytics from Python.

    >>> from datetime import date
    >>> import k_bond
    >>> gilt = k_bond.Bond(type="gilt", coupon=0.0425, maturity=date(2034, 12, 7))
    >>> gilt.price(0.045, settlement=date(2025, 1, 15))

Objects (`Bond`) for one bond valued many times, functions (`price`,
`bond_yield`, `accrued`, `duration`, ...) for one call, bond types by code,
catalogue name or nickname (`types()`, `type_info()`, `define_type()`).
Dates are accepted as datetime.date, datetime, pandas Timestamp,
numpy.datetime64, ISO strings and serials, and come back as datetime.date.

The shared library ships inside the package (pip install .); in a source
checkout it is found in the build trees, and KBOND_LIBRARY names another.
Errors raise KBondError subclasses: KBondArgumentError before the library is
called, KBondLibraryError with the library's `.code` and sentence.
"""

from . import frn
from ._library import library_path, library_version
from ._version import __version__
from .bond import Bond, Cashflow, Risk
from .bonds import (accrued, average_life, average_life_yield, bond_yield, cashflows,
                    convexity, coupon_amount, coupon_date, coupons_remaining, duration,
                    ex_dividend_date, horizon_yield, price, pvbp, realized_yield, remaining_life,
                    risk, value_of_32nd, yield_to_worst)
from .batch import batch, value_columns
from .dates import from_serial, to_serial
from .errors import (ERROR_MESSAGES, KBondArgumentError, KBondError, KBondLibraryError,
                     KBondNotFoundError, message_for)
from .types import (ALIASES, NICKNAMES, TypeInfo, define_type, remove_type, type_code,
                    type_info, types)
from .vectorised import accrued_interest, convexities, durations, prices, yields

# `yield` is a Python keyword; both spellings name the same function.
yield_ = bond_yield

__all__ = [
    "__version__", "library_version", "library_path",
    "Bond", "Cashflow", "Risk", "TypeInfo",
    "accrued", "average_life", "average_life_yield", "bond_yield", "cashflows", "convexity",
    "coupon_amount", "coupon_date", "coupons_remaining", "duration", "ex_dividend_date",
    "horizon_yield", "price", "pvbp", "realized_yield", "remaining_life", "risk",
    "value_of_32nd", "yield_", "yield_to_worst",
    "ALIASES", "NICKNAMES", "define_type", "remove_type", "type_code", "type_info", "types",
    "from_serial", "to_serial",
    "ERROR_MESSAGES", "KBondArgumentError", "KBondError", "KBondLibraryError",
    "KBondNotFoundError", "message_for",
    "accrued_interest", "batch", "convexities", "durations", "frn", "prices", "value_columns",
    "yields",
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
