#!/usr/bin/env python3
"""Writes the seed corpora of the fuzz harnesses (fuzz/corpus/<family>/).

Every harness reads its input front to back, and an input that has run out
reads as "keep the sensible value". A seed is therefore a few bytes: the
function to call, then the code that selects a bond type or a contract
(mode byte 1 = "one of the known codes", then its index). Each seed is a
valid call on a real bond; the fuzzer disturbs it from there.
"""
import os
import sys

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus")

# Number of known codes each harness lists (kBondTypes, kContracts, ...).
def count_codes(header, table):
    """Number of entries of a code table in a harness source."""
    with open(os.path.join(os.path.dirname(ROOT), header)) as f:
        text = f.read()
    body = text.split(table + "[] = {", 1)[1].split("}", 1)[0]
    return len([item for item in body.split(",") if item.strip()])


BOND_TYPES = count_codes("bond_arguments.h", "kBondTypes")
CONTRACTS = count_codes("futures_factor_fuzzer.cpp", "kContracts")


def code_index(header, table, code):
    """Position of a code in a harness's table of known codes."""
    with open(os.path.join(os.path.dirname(ROOT), header)) as f:
        text = f.read()
    body = text.split(table + "[] = {", 1)[1].split("}", 1)[0]
    return [int(item) for item in body.split(",") if item.strip()].index(code)


def write(family, name, data):
    folder = os.path.join(ROOT, family)
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, name), "wb") as f:
        f.write(bytes(data))


def main():
    # Straight bonds: 3 functions x every listed bond type.
    for function in range(3):
        for index in range(BOND_TYPES):
            write("bond", f"f{function}_type{index:03d}", [function, 1, index])
    # Yields, risk, coupon amount, cash flows: 7 functions x every 4th type.
    for function in range(7):
        for index in range(0, BOND_TYPES, 4):
            write("bond_analytics", f"f{function}_type{index:03d}", [function, 1, index])
    # Portfolios: no row to six rows, and seventy rows on several threads.
    for shape in range(8):
        write("batch", f"rows{shape}", [shape])
    # Horizon, realized, average-life, remaining-life and worst yields, and
    # the schedule exports (coupon date, count, ex-dividend date, average
    # life): every 4th type.
    for family, functions in (("bond_yields", 5), ("bond_schedule", 4)):
        for function in range(functions):
            for index in range(0, BOND_TYPES, 4):
                write(family, f"f{function}_type{index:03d}", [function, 1, index])
    # Catalogue: every service, each output present.
    write("catalogue", "btype_gilt", [0, 0, 0x1F])
    write("catalogue", "btable_all", [1, 0x3F])
    write("catalogue", "bcustom_defaults", [2])
    write("catalogue", "bcustom_annual", [2, 0, 1, 1, 5, 0, 0, 0, 1, 1, 1, 0, 0, 1, 1, 1])
    write("catalogue", "version", [3])
    # Conversion factors: both exports x every listed contract.
    for function in range(2):
        for index in range(CONTRACTS):
            write("futures_factor", f"f{function}_contract{index:02d}", [function * 2, 1, index])
    # Carry: ten exports on a few markets (U.S. Treasury, Gilt, Bund, custom).
    for function in range(10):
        for index in (0, 24, 60, 96):
            write("futures_carry", f"f{function}_type{index:03d}", [function, 1, index])
    # FRN: every export on the default type and on a registered type.
    for function in range(22):
        write("frn", f"f{function:02d}", [function])
        write("frn", f"f{function:02d}_typed", [function, 1])
    # Index-linked gilts: every export.
    for function in range(7):
        write("ilg", f"f{function}", [function])
    # TIPS and OATi: every export, one and two index values.
    for function in range(12):
        write("linker", f"f{function:02d}", [function])
        write("linker", f"f{function:02d}_pairs", [function, 1])

    # Perpetual bonds: every export, flat and stepped, on a Gilt (the
    # default), a U.S. Treasury, a Spanish bond and a Eurobond-style type.
    for function in range(12):
        for stepped in (0, 1):
            write("perpetual", f"f{function:02d}_gilt_s{stepped}", [function, 0, 0, stepped])
            for code in (0, 280, 700):
                index = code_index("bond_arguments.h", "kBondTypes", code)
                write("perpetual", f"f{function:02d}_type{code:03d}_s{stepped}",
                      [function, 1, index, 0, stepped])
    # Brady bonds: the three exports on the markets that issued them (U.S.
    # conventions, Eurobonds) and a few others.
    for function in range(3):
        for code in (0, 1, 3, 20, 40, 100, 200, 280, 500, 540):
            index = code_index("bond_arguments.h", "kBondTypes", code)
            write("brady", f"f{function}_type{code:03d}", [function, 1, index])
    # PIK bonds: every export on each accepted type, with the three rate
    # shapes (flat, stepped cash, stepped in-kind).
    for function in range(7):
        for code in (0, 3, 500, 510, 530, 540):
            index = code_index("pik_fuzzer.cpp", "kTypes", code)
            for shape in range(3):
                write("pik", f"f{function}_type{code:03d}_shape{shape}",
                      [function, 1, index, 0, shape])


if __name__ == "__main__":
    sys.exit(main())
