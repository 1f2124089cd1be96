#!/usr/bin/env python3
"""Writes k_bond.bas: the VBA module that declares every export of
include/k_bond.h for 32-bit and 64-bit Office, read from the header so that it
can never drift from it.

    /usr/bin/python3 scripts/generate_vba_module.py OUT.bas [include/k_bond.h]

How C arguments become VBA ones (the rules, not a list of functions):
  double, int32_t                 ByVal As Double, ByVal As Long
  const T* followed by its count  an array: ByRef As Double/Long/Byte, pass its
  (n_..., ..._count)              first element (any variable when the count is 0)
  any other const T*              an optional input: ByVal As LongPtr, pass 0 for
                                  NULL (the default) or VarPtr(x) for a value
  T* (not const)                  an output the library writes: ByRef As Long/Double
  T**                             an address the library hands out: ByRef As LongPtr
  char*                           a string: ByVal As String (VBA passes a copy in
                                  the ANSI code page, ending in NUL)
  other pointers (void*, ...)     ByVal As LongPtr
  every pointer of a ..._free     the addresses handed out before: ByVal As LongPtr
  const char* result              As LongPtr (an address; see the user guide)
Office 2010 and later (VBA7) read the PtrSafe branch, where LongPtr is 64 bits
wide in 64-bit Office; older Office (32-bit only) reads the other, with Long.
"""

import re
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from header_exports import HEADER, read_exports  # noqa: E402

DLL = "k_bond.dll"
_SCALARS = {"double": "Double", "int32_t": "Long", "uint8_t": "Byte"}
# VBA keywords that the header uses as argument names get a trailing underscore.
_KEYWORDS = {
    "alias", "and", "as", "base", "boolean", "byref", "byte", "byval", "call", "case",
    "close", "const", "currency", "date", "decimal", "declare", "dim", "do", "double",
    "each", "else", "empty", "end", "enum", "eqv", "error", "event", "exit", "false",
    "for", "friend", "function", "get", "global", "gosub", "goto", "if", "imp", "in",
    "input", "integer", "is", "len", "let", "lib", "like", "line", "lock", "long",
    "longlong", "longptr", "loop", "me", "mod", "name", "new", "next", "not", "nothing",
    "null", "object", "on", "open", "option", "optional", "or", "paramarray", "preserve",
    "print", "private", "property", "public", "put", "raiseevent", "redim", "rem",
    "resume", "return", "seek", "select", "set", "single", "static", "step", "stop",
    "string", "sub", "then", "to", "true", "type", "until", "variant", "wend", "while",
    "with", "write", "xor",
}
_LINE = 100  # physical line length to aim for (VBA allows 1023)


def _is_count(arg):
    return arg.ctype == "int32_t" and (arg.name.startswith("n_") or arg.name.endswith("_count"))


def vba_name(name):
    return name + "_" if name.lower() in _KEYWORDS else name


def vba_argument(export, index, ptr):
    """'ByVal name As Type' for one argument; ptr is the pointer type's name."""
    arg = export.arguments[index]
    name = vba_name(arg.name)
    if not arg.is_pointer:
        if arg.base not in _SCALARS:
            raise SystemExit(f"{export.name}: no VBA type for '{arg.ctype} {arg.name}'")
        return f"ByVal {name} As {_SCALARS[arg.base]}"
    if export.name.endswith("_free"):
        return f"ByVal {name} As {ptr}"
    if arg.depth > 1:
        return f"ByRef {name} As {ptr}"
    if arg.base == "char":
        return f"ByVal {name} As String"
    if arg.base not in _SCALARS:
        return f"ByVal {name} As {ptr}"
    if not arg.ctype.startswith("const"):
        return f"ByRef {name} As {_SCALARS[arg.base]}"
    following = export.arguments[index + 1] if index + 1 < len(export.arguments) else None
    if following is not None and _is_count(following):
        return f"ByRef {name} As {_SCALARS[arg.base]}"
    return f"ByVal {name} As {ptr}"


def declaration(export, vba7):
    ptr = "LongPtr" if vba7 else "Long"
    args = [vba_argument(export, i, ptr) for i in range(len(export.arguments))]
    if export.returns == "void":
        head, tail = f"Public Declare {'PtrSafe ' if vba7 else ''}Sub {export.name} Lib \"{DLL}\" (", ")"
    else:
        if "*" not in export.returns and export.returns not in _SCALARS:
            raise SystemExit(f"{export.name}: no VBA type for the result '{export.returns}'")
        ret = ptr if "*" in export.returns else _SCALARS[export.returns]
        head = f"Public Declare {'PtrSafe ' if vba7 else ''}Function {export.name} Lib \"{DLL}\" ("
        tail = f") As {ret}"
    # Several arguments to a line: VBA allows at most 24 line continuations.
    lines, line = [], "    " + head
    for i, a in enumerate(args):
        piece = a + ("," if i + 1 < len(args) else "")
        if len(line) + 1 + len(piece) > _LINE and line.strip() != head.strip():
            lines.append(line + " _")
            line = "        " + piece
        else:
            line += ("" if line.endswith("(") else " ") + piece
    lines.append(line + tail)
    return lines


def constants(header):
    text = Path(header).read_text()
    for m in re.finditer(r"^#define\s+(KVL_\w+)\s+\(?(-?\d+)\)?", text, re.M):
        yield m.group(1), int(m.group(2))


def render(header=HEADER):
    exports = read_exports(header)
    out = [
        'Attribute VB_Name = "k_bond"',
        "' k_bond: declarations of every function of k_bond.dll, generated from",
        "' include/k_bond.h by scripts/generate_vba_module.py. Do not edit by hand.",
        "'",
        "' Arguments: doubles ByVal As Double, int32 values ByVal As Long. An array",
        "' followed by its count is ByRef: pass its first element, e.g. coupons(1),",
        "' or any variable when the count is 0. Every other input pointer is an",
        "' optional value, ByVal As LongPtr: pass 0 for the library's default, or",
        "' VarPtr(x) for a value x (VarPtr(a(1)) for an array counted elsewhere).",
        "' Outputs (the error code last of all) are ByRef variables. Dates are",
        "' k_bond serials: a spreadsheet date minus 1 from 1 March 1900 on.",
        "Option Explicit",
        "",
    ]
    for name, value in constants(header):
        out.append(f"Public Const {name} As Long = {value}")
    out.append("")
    out.append("#If VBA7 Then")
    for e in exports:
        out += declaration(e, True)
    out.append("#Else")
    for e in exports:
        out += declaration(e, False)
    out.append("#End If")
    return "\r\n".join(out) + "\r\n"


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    text = render(sys.argv[2] if len(sys.argv) > 2 else HEADER)
    Path(sys.argv[1]).write_bytes(text.encode("ascii"))
