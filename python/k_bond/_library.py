"""Finding and loading the shared library, with every export's prototype bound.

The library is looked for, in order: at the path in KBOND_LIBRARY (when
set), next to this module (where `pip install` puts it), in the build trees
of the source checkout holding this package, then where the system keeps
shared libraries. KVLbond_initMT is called once, right after loading, since
Python programs use threads as a matter of course.
"""

import ctypes
import ctypes.util
import glob
import os
import sys
import threading

from ._prototypes import PROTOTYPES
from .errors import KBondNotFoundError

if os.name == "nt":
    LIBRARY_FILES = ("k_bond.dll", "libk_bond.dll")
elif sys.platform == "darwin":
    LIBRARY_FILES = ("libk_bond.dylib", "libk_bond.so")
else:
    LIBRARY_FILES = ("libk_bond.so",)

_PACKAGE_DIR = os.path.dirname(os.path.abspath(__file__))
_BUILD_DIRS = ("release", "relwithdebinfo", "debug", "default", "asan/python",
               "tsan/python")


def candidate_paths():
    """The paths tried, in order."""
    env = os.environ.get("KBOND_LIBRARY")
    if env:
        return [env]
    paths = [os.path.join(_PACKAGE_DIR, name) for name in LIBRARY_FILES]
    build = os.path.join(os.path.dirname(os.path.dirname(_PACKAGE_DIR)), "build")
    for name in LIBRARY_FILES:
        paths += [os.path.join(build, d, name) for d in _BUILD_DIRS]
        # Any other build directory, sanitized trees last: their library
        # needs the sanitizer runtime preloaded into the interpreter.
        others = sorted(glob.glob(os.path.join(build, "*", name)),
                        key=lambda p: ("san" in os.path.basename(os.path.dirname(p)), p))
        paths += [p for p in others if p not in paths]
    system = ctypes.util.find_library("k_bond")
    if system:
        paths.append(system)
    return paths


def _open(path):
    # 32-bit Windows builds use the system calling convention (stdcall).
    if os.name == "nt" and ctypes.sizeof(ctypes.c_void_p) == 4:
        return ctypes.WinDLL(path)
    return ctypes.CDLL(path)


def _bind(lib):
    """Sets restype and argtypes of every export the library has; returns the
    names of the exports it lacks (an older or partial build)."""
    missing = []
    for name, (restype, arguments) in PROTOTYPES.items():
        fn = getattr(lib, name, None)
        if fn is None:
            missing.append(name)
            continue
        fn.restype = restype
        fn.argtypes = [ctype for _, ctype in arguments]
    return missing


def load():
    """Loads and binds the first library found, calls KVLbond_initMT, and
    returns (library, path). KBondNotFoundError when there is none."""
    tried = []
    for path in candidate_paths():
        if os.sep in path and not os.path.exists(path):
            tried.append(f"{path} (missing)")
            continue
        try:
            lib = _open(path)
        except OSError as exc:
            tried.append(f"{path} ({exc})")
            continue
        missing = _bind(lib)
        if "KVLbond_initMT" not in missing:
            lib.KVLbond_initMT()
        return lib, path, tuple(missing)
    raise KBondNotFoundError(
        "the k_bond shared library was not found; install the package with pip, build it "
        "(cmake --build build/release --target k_bond) or set KBOND_LIBRARY to its path. "
        "Tried: " + "; ".join(tried or ["nothing"]))


_loaded = None
_load_lock = threading.Lock()


def library():
    """The loaded library, every export's argtypes and restype bound (loaded
    on first use, once, even when several threads ask at the same time)."""
    loaded = _loaded
    if loaded is None:
        loaded = _load_once()
    return loaded[0]


def _load_once():
    global _loaded
    with _load_lock:
        if _loaded is None:
            _loaded = load()
        return _loaded


def library_path():
    """The path the library was loaded from."""
    library()
    return _loaded[1]


def missing_exports():
    """Exports of the header that the loaded library lacks (normally none)."""
    library()
    return _loaded[2]


def has(name):
    """True when the loaded library exports `name`."""
    return name in PROTOTYPES and name not in missing_exports()


_unchecked = {}


def unchecked_function(export):
    """`export` without argtypes (restype set): ctypes then skips converting
    each argument through its declared type, which is most of the cost of a
    call with thirty arguments. For callers that build every argument as the
    C type it must be (c_double for doubles, int for int32, byref or an array
    for pointers, None for NULL), as Bond does."""
    fn = _unchecked.get(export)
    if fn is None:
        fn = library()[export]
        fn.restype = PROTOTYPES[export][0]
        _unchecked[export] = fn
    return fn


_names = {export: [name for name, _ in arguments] for export, (_, arguments) in PROTOTYPES.items()}


def argument_names(export):
    """The C argument names of `export`, in order."""
    return _names[export]


def library_version():
    """The library's own version text ("v2002.0p0nt")."""
    return library().KVLbondver().decode()
