#!/usr/bin/env python3
"""Checks a generated k_bond.bas against include/k_bond.h.

    /usr/bin/python3 tests/windows/check_vba_module.py k_bond.bas [include/k_bond.h]

Both branches (#If VBA7 with PtrSafe and LongPtr, #Else for older Office)
must declare exactly the header's exports, each from k_bond.dll, with the
header's number of arguments, and with argument and result types of the
width the DLL uses: a double ByVal As Double, an int32 ByVal As Long, a
pointer either ByRef (a variable of the pointed-to width) or ByVal as an
address (LongPtr; Long in 32-bit-only Office). A statement VBA cannot read
(more than 24 line continuations, a line over 1023 characters, bare LF line
ends) is an error too.
"""

import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "scripts"))
from header_exports import HEADER, read_exports  # noqa: E402

_DECLARE = re.compile(
    r"^\s*(?:Public\s+|Private\s+)?Declare\s+(?P<ptrsafe>PtrSafe\s+)?(?P<kind>Function|Sub)\s+"
    r"(?P<name>\w+)\s+Lib\s+\"(?P<lib>[^\"]+)\"\s*\((?P<args>.*)\)\s*(?:As\s+(?P<ret>\w+))?\s*$")
_ARG = re.compile(r"^(?P<pass>ByVal|ByRef)\s+\w+\s+As\s+(?P<type>\w+)$")
_WIDTH = {"double": "Double", "int32_t": "Long", "uint8_t": "Byte"}


def statements(lines):
    """Logical statements (continuations joined) with their first line number."""
    current, start, joined = [], 0, []
    for number, line in enumerate(lines, 1):
        if not current:
            start = number
        if line.endswith(" _"):
            current.append(line[:-2])
            continue
        current.append(line)
        joined.append((start, len(current) - 1, " ".join(s.strip() for s in current)))
        current = []
    return joined


def expected_argument(c_arg, address):
    """The VBA forms that pass this C argument correctly."""
    if not c_arg.is_pointer:
        return {("ByVal", _WIDTH.get(c_arg.base))}
    if c_arg.depth > 1:
        return {("ByVal", address), ("ByRef", address)}
    if c_arg.base == "char":
        return {("ByVal", address), ("ByVal", "String")}
    return {("ByVal", address), ("ByRef", _WIDTH.get(c_arg.base))}


def check(bas_path, header=HEADER):
    raw = Path(bas_path).read_bytes()
    errors = []
    if b"\n" in raw.replace(b"\r\n", b""):
        errors.append("line ends must be CR LF")
    lines = raw.decode("ascii").replace("\r\n", "\n").split("\n")
    errors += [f"line {n}: {len(l)} characters" for n, l in enumerate(lines, 1) if len(l) > 1023]

    exports = {e.name: e for e in read_exports(header)}
    branch, found = None, {"VBA7": {}, "VBA6": {}}
    for number, continuations, text in statements(lines):
        if text.strip() == "#If VBA7 Then":
            branch = "VBA7"
        elif text.strip() == "#Else":
            branch = "VBA6"
        elif text.strip() == "#End If":
            branch = None
        m = _DECLARE.match(text)
        if not m:
            continue
        where = f"line {number} ({m.group('name')})"
        if branch is None:
            errors.append(f"{where}: declared outside #If VBA7 ... #Else ... #End If")
            continue
        if continuations > 24:
            errors.append(f"{where}: {continuations} line continuations, VBA allows 24")
        if m.group("name") in found[branch]:
            errors.append(f"{where}: declared twice")
        found[branch][m.group("name")] = (where, m)

    for branch, address in (("VBA7", "LongPtr"), ("VBA6", "Long")):
        declared = found[branch]
        for name in sorted(set(exports) - set(declared)):
            errors.append(f"{branch}: {name} is exported but not declared")
        for name in sorted(set(declared) - set(exports)):
            errors.append(f"{branch}: {name} is declared but not exported")
        for name in sorted(set(declared) & set(exports)):
            where, m = declared[name]
            export = exports[name]
            if m.group("lib") != "k_bond.dll":
                errors.append(f"{where}: Lib \"{m.group('lib')}\" instead of \"k_bond.dll\"")
            if bool(m.group("ptrsafe")) != (branch == "VBA7"):
                errors.append(f"{where}: PtrSafe belongs in the VBA7 branch only")
            if branch == "VBA6" and "LongPtr" in m.group(0):
                errors.append(f"{where}: LongPtr does not exist before VBA7")
            if export.returns == "void":
                if m.group("kind") != "Sub":
                    errors.append(f"{where}: returns nothing, so a Sub")
            else:
                want = address if "*" in export.returns else _WIDTH.get(export.returns)
                if m.group("kind") != "Function" or m.group("ret") != want:
                    errors.append(f"{where}: must be a Function ... As {want}")
            args = [a.strip() for a in m.group("args").split(",")] if m.group("args").strip() else []
            if len(args) != len(export.arguments):
                errors.append(f"{where}: {len(args)} arguments, the header has {len(export.arguments)}")
                continue
            for position, (text, c_arg) in enumerate(zip(args, export.arguments), 1):
                am = _ARG.match(text)
                form = (am.group("pass"), am.group("type")) if am else None
                if form not in expected_argument(c_arg, address):
                    errors.append(f"{where}: argument {position} '{text}' does not pass "
                                  f"'{c_arg.ctype} {c_arg.name}'")
    return errors, len(found["VBA7"])


if __name__ == "__main__":
    errors, count = check(sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else HEADER)
    for e in errors:
        print(e)
    if errors:
        sys.exit(1)
    print(f"{count} declarations in each branch match the header's exports")
