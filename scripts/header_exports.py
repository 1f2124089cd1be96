#!/usr/bin/env python3
"""Reads the exported functions of include/k_bond.h: name, return type and
arguments (type and name), in declaration order.

The header is the one source of the interface. Generators that must never
drift from it (the spreadsheet module, the Python prototypes) read it through
this module instead of keeping lists of their own.

    /usr/bin/python3 scripts/header_exports.py [include/k_bond.h]   # one line per export
"""

import re
import sys
from dataclasses import dataclass
from pathlib import Path

HEADER = Path(__file__).resolve().parent.parent / "include" / "k_bond.h"

_COMMENT = re.compile(r"/\*.*?\*/|//[^\n]*", re.S)
_DECL = re.compile(r"KVL_EXPORT\s+(?P<ret>[^;{]*?)\s*\b(?P<name>KVL\w+)\s*\((?P<args>[^)]*)\)\s*;", re.S)
_ARG = re.compile(r"^(?P<type>.*?[\s*])(?P<name>\w+)$", re.S)


@dataclass(frozen=True)
class Argument:
    ctype: str  # as written, e.g. "const double*", "int32_t", "const char* const**"
    name: str

    @property
    def is_pointer(self):
        return "*" in self.ctype

    @property
    def base(self):
        """The pointed-to (or plain) type without qualifiers: double, int32_t, char, void."""
        return re.sub(r"\b(const|volatile)\b|\*", "", self.ctype).strip()

    @property
    def depth(self):
        """Levels of indirection: 0 value, 1 pointer, 2 pointer to pointer."""
        return self.ctype.count("*")


@dataclass(frozen=True)
class Export:
    name: str
    returns: str  # "double", "int32_t", "void", "const char*"
    arguments: tuple


def _normalise(text):
    return re.sub(r"\s+", " ", text).replace(" *", "*").strip()


def read_exports(header=HEADER):
    """Every `KVL_EXPORT ... KVL...(...);` declaration of the header."""
    text = _COMMENT.sub(" ", Path(header).read_text())
    exports = []
    for m in _DECL.finditer(text):
        ret = _normalise(m.group("ret").replace("KVL_API", ""))
        args = []
        raw = _normalise(m.group("args"))
        if raw and raw != "void":
            for part in raw.split(","):
                am = _ARG.match(part.strip())
                if not am:
                    raise ValueError(f"{m.group('name')}: cannot read argument '{part}'")
                args.append(Argument(_normalise(am.group("type")), am.group("name")))
        exports.append(Export(m.group("name"), ret, tuple(args)))
    if not exports:
        raise ValueError(f"no exports found in {header}")
    return exports


if __name__ == "__main__":
    for e in read_exports(sys.argv[1] if len(sys.argv) > 1 else HEADER):
        print(e.returns, e.name, "(" + ", ".join(f"{a.ctype} {a.name}" for a in e.arguments) + ")")
