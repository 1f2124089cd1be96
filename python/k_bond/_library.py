"""Finding and loading libk_bond.so, and the C prototypes of its exports."""

import ctypes
import ctypes.util
import glob
import os

from .errors import KBondNotFoundError

D = ctypes.c_double
I32 = ctypes.c_int32
PD = ctypes.POINTER(ctypes.c_double)
PI = ctypes.POINTER(ctypes.c_int32)
PPD = ctypes.POINTER(PD)
PPI = ctypes.POINTER(PI)
PCHAR = ctypes.c_char_p

# Common bond arguments of the straight-bond functions, in their C order
# (the end-of-month override is not part of these exports).
COMMON = (
    ("coupons", PD), ("n_coupons", I32), ("dates", PI), ("n_dates", I32),
    ("settlement", I32), ("dated_date", PI), ("first_coupon", PI), ("type", PI),
    ("frequency", PI), ("n_frequency", I32), ("redemption", PD),
    ("coupon_tax", PD), ("discount_tax", PD), ("horizon", PI),
    ("issue_price", PD), ("yield_method", PI), ("bd_flags", PI),
    ("holidays", PI), ("n_holidays", I32), ("factor", PD), ("sink_dates", PI),
    ("n_sink", I32), ("sink_ends", PI), ("n_sink_ends", I32),
    ("sink_amounts", PD), ("sink_premium", PD), ("exdiv_days", PI),
)
_COMMON_TYPES = dict(COMMON)


def _common(*names_and_own):
    """A signature made of common arguments (by name) and the function's own
    (name, ctype) pairs, with the error pointer at the end."""
    sig = []
    for item in names_and_own:
        sig.append((item, _COMMON_TYPES[item]) if isinstance(item, str) else item)
    sig.append(("error", PI))
    return tuple(sig)


_ALL = tuple(name for name, _ in COMMON)


def _insert_after(after, *own):
    names = list(_ALL)
    at = names.index(after) + 1
    return _common(*(names[:at] + list(own) + names[at:]))


_AI_ARGS = ("coupons", "n_coupons", "dates", "n_dates", "settlement", "dated_date",
            "first_coupon", "type", "frequency", "n_frequency", "coupon_tax",
            "factor", "sink_dates", "n_sink", "sink_ends", "n_sink_ends",
            "sink_amounts", "sink_premium", "exdiv_days")

# Straight-bond signatures: name -> (restype, ((arg name, ctype), ...)).
STRAIGHT = {
    "KVLbpr": (D, _insert_after("settlement", ("yield", D))),
    "KVLbyld": (D, _insert_after("settlement", ("price", D))),
    "KVLbconv": (D, _insert_after("settlement", ("yield", D))),
    "KVLbdur": (D, _common(*(list(_ALL[:5]) + [("yield", D)] + list(_ALL[5:11])
                              + [("duration_kind", PI)] + list(_ALL[11:])))),
    "KVLbvalbp": (D, _common(*(list(_ALL[:5]) + [("yield", D)] + list(_ALL[5:15])
                                + [("scale", PD)] + list(_ALL[15:])))),
    "KVLbai": (D, _common(*_AI_ARGS)),
    "KVLbai1": (D, _common(*(_AI_ARGS + ("bd_flags", "holidays", "n_holidays")))),
    "KVLbcshflw": (I32, _common(*([("out_dates", PPI), ("out_coupons", PPD),
                                   ("out_principal", PPD), ("out_periods", PPD)]
                                  + list(_ALL[:15]) + [("price", PD)] + list(_ALL[15:])))),
}

# Other exports used by the package: name -> (restype, argtypes).
OTHER = {
    "KVLbondver": (PCHAR, ()),
    "KVLbtype": (None, (I32, PI, ctypes.POINTER(PCHAR), PI, ctypes.POINTER(PCHAR), PI)),
    "KVLbtable": (I32, (ctypes.POINTER(PI), ctypes.POINTER(PI),
                        ctypes.POINTER(ctypes.POINTER(PCHAR)),
                        ctypes.POINTER(ctypes.POINTER(PCHAR)),
                        ctypes.POINTER(PI), ctypes.POINTER(PCHAR))),
    "KVLbcshflw_free": (None, (PI, PD, PD, PD)),
    "KVLbcpn": (I32, (I32, I32, PI, PI, PI, PI, PI, PI, PI)),
    "KVLbncpn": (I32, (I32, I32, PI, PI, PI, PI, PI, PI)),
    "KVLbfact1": (D, (D, I32, I32, PI, PI, I32, PI, PI, PI, PI, PI, PD, PI, PI)),
    "KVLfrnsm": (D, (I32, I32, D, D, D, D, PI, PI, PI, PI, PI, PI)),
    "KVLfrndm": (D, (I32, I32, D, D, D, D, D, PI, PI, PI, PI, PI, PI)),
    "KVLfrnai": (D, (PD, PI, I32, I32, I32, PI, PI, I32, PI, PI, PI, PI, PI, I32, PI)),
    "KVLfrnpr": (D, (PD, PI, I32, I32, I32, D, PI, PI, I32, PI, PI, PD, PD, PD, PI,
                     PI, PI, PI, PI, I32, PI)),
    "KVLfrnyld": (D, (PD, PI, I32, I32, I32, D, PI, PI, I32, PI, PI, PD, PD, PD, PI,
                      PI, PI, PI, PI, I32, PI)),
}

_SEARCH_DIRS = ("release", "relwithdebinfo", "debug", "default", "asan/python",
                "tsan/python")


def candidate_paths():
    """Where the library is looked for, in order: KBOND_LIBRARY, the build
    trees of the source checkout holding this package, the system."""
    env = os.environ.get("KBOND_LIBRARY")
    if env:
        return [env]
    repo = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    build = os.path.join(repo, "build")
    paths = [os.path.join(build, d, "libk_bond.so") for d in _SEARCH_DIRS]
    # Any other build directory, sanitized trees last: their library needs
    # the sanitizer runtime preloaded into the interpreter.
    others = sorted(glob.glob(os.path.join(build, "*", "libk_bond.so")),
                    key=lambda p: ("san" in os.path.basename(os.path.dirname(p)), p))
    paths += [p for p in others if p not in paths]
    system = ctypes.util.find_library("k_bond")
    if system:
        paths.append(system)
    return paths


def _bind(lib):
    for name, (restype, sig) in STRAIGHT.items():
        fn = getattr(lib, name, None)
        if fn is not None:
            fn.restype = restype
            fn.argtypes = [ctype for _, ctype in sig]
    for name, (restype, argtypes) in OTHER.items():
        fn = getattr(lib, name, None)
        if fn is not None:
            fn.restype = restype
            fn.argtypes = list(argtypes)
    return lib


def load():
    """Loads the first library found; KBondNotFoundError when there is none."""
    tried = []
    for path in candidate_paths():
        if not os.path.exists(path) and os.sep in path:
            tried.append(f"{path} (missing)")
            continue
        try:
            return _bind(ctypes.CDLL(path)), path
        except OSError as exc:
            tried.append(f"{path} ({exc})")
    raise KBondNotFoundError(
        "libk_bond.so not found; build it (cmake --build build/release --target k_bond) "
        "or set KBOND_LIBRARY to its path. Tried: " + "; ".join(tried or ["nothing"]))


_loaded = None


def library():
    """The loaded library (loaded on first use)."""
    global _loaded
    if _loaded is None:
        _loaded = load()
    return _loaded[0]


def library_path():
    library()
    return _loaded[1]


def has(name):
    """True when the loaded library exports `name`."""
    return getattr(library(), name, None) is not None
