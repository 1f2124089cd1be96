#!/usr/bin/env python3
"""Writes python/k_bond/_prototypes.py: the ctypes prototype of every export,
read from include/k_bond.h, so that the Python package can never drift from
the header.

    /usr/bin/python3 scripts/generate_python_prototypes.py          # rewrite the file
    /usr/bin/python3 scripts/generate_python_prototypes.py --check  # exit 1 when it is stale
"""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from header_exports import HEADER, read_exports  # noqa: E402

TARGET = HEADER.parent.parent / "python" / "k_bond" / "_prototypes.py"

# C type as written in the header -> the name of a ctypes type in the module.
_CTYPES = {
    "double": "D", "int32_t": "I32", "void": "None",
    "const double*": "PD", "double*": "PD",
    "const int32_t*": "PI", "int32_t*": "PI",
    "const uint8_t*": "PU8",
    "double**": "PPD", "int32_t**": "PPI", "const int32_t**": "PPI",
    "const char*": "PCHAR", "const char**": "PPCHAR", "const char* const**": "PPPCHAR",
}


def render(header=HEADER):
    lines = [
        '"""ctypes prototypes of every k_bond export, generated from include/k_bond.h',
        'by scripts/generate_python_prototypes.py: do not edit by hand."""',
        "",
        "import ctypes",
        "",
        "D = ctypes.c_double",
        "I32 = ctypes.c_int32",
        "PD = ctypes.POINTER(ctypes.c_double)",
        "PI = ctypes.POINTER(ctypes.c_int32)",
        "PU8 = ctypes.POINTER(ctypes.c_uint8)",
        "PPD = ctypes.POINTER(PD)",
        "PPI = ctypes.POINTER(PI)",
        "PCHAR = ctypes.c_char_p",
        "PPCHAR = ctypes.POINTER(PCHAR)",
        "PPPCHAR = ctypes.POINTER(PPCHAR)",
        "",
        "# name -> (restype, ((argument name, ctype), ...)), in the header's order.",
        "PROTOTYPES = {",
    ]
    for e in read_exports(header):
        try:
            ret = _CTYPES[e.returns]
            args = [(a.name, _CTYPES[a.ctype]) for a in e.arguments]
        except KeyError as missing:
            raise SystemExit(f"{e.name}: no ctypes mapping for {missing}")
        body = ", ".join(f'("{n}", {t})' for n, t in args)
        lines.append(f'    "{e.name}": ({ret}, ({body}{"," if len(args) == 1 else ""})),')
    lines.append("}")
    return "\n".join(lines) + "\n"


if __name__ == "__main__":
    text = render()
    if "--check" in sys.argv[1:]:
        if not TARGET.exists() or TARGET.read_text() != text:
            sys.exit(f"{TARGET} is stale: run /usr/bin/python3 {Path(__file__).name}")
        sys.exit(0)
    TARGET.write_text(text)
