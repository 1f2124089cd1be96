#!/usr/bin/env python3
"""What Python adds to a price: Bond.price, and for comparison the ctypes
call of KVLbpr through its bound prototype with every argument built
beforehand, on the Treasury and the Gilt of bond_benchmark (which times the
C call itself, with no Python at all). Bond.price calls the export without
ctypes' per-argument conversion, so it can beat the bound call.

    cmake --build build/release --target k_bond
    KBOND_LIBRARY=build/release/libk_bond.so PYTHONPATH=python /usr/bin/python3 bench/python_overhead.py

Per-call cost = Bond.price time - C time (bond_benchmark's BM_price rows).
"""

import ctypes
import datetime as dt
import timeit

import k_bond
from k_bond import _library

BONDS = [
    ("treasury", dict(type=0, coupon=0.0425, maturity=dt.date(2034, 11, 15)),
     dt.date(2024, 12, 2), 0.042),
    ("gilt", dict(type=40, coupon=0.045, maturity=dt.date(2028, 6, 7)), dt.date(2025, 6, 3),
     0.041),
]


def best(fn, number=100000):
    return min(timeit.repeat(fn, number=number, repeat=7)) / number * 1e6


def main():
    lib = _library.library()
    for name, description, settlement, yield_ in BONDS:
        bond = k_bond.Bond(**description)
        coupon, maturity = ctypes.c_double(description["coupon"]), ctypes.c_int32(
            k_bond.to_serial(description["maturity"]))
        code, error = ctypes.c_int32(description["type"]), ctypes.c_int32()
        args = ([ctypes.byref(coupon), 1, ctypes.byref(maturity), 1, k_bond.to_serial(settlement),
                 yield_, None, None, ctypes.byref(code), None, 0] + [None] * 8 + [0, None, None, 0,
                 None, 0, None, None, None, ctypes.byref(error)])
        assert lib.KVLbpr(*args) == bond.price(yield_, settlement)
        bare = best(lambda: lib.KVLbpr(*args))
        method = best(lambda: bond.price(yield_, settlement))
        function = best(lambda: k_bond.price(yield_=yield_, settlement=settlement,
                                             bond_type=description["type"],
                                             coupon=description["coupon"],
                                             maturity=description["maturity"]), 20000)
        print(f"{name:9s} Bond.price {method:6.2f} us   bound ctypes call {bare:6.2f} us   "
              f"k_bond.price (a Bond per call) {function:6.2f} us")


if __name__ == "__main__":
    main()
