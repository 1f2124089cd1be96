"""Writes a mixed portfolio CSV for the batch benchmark: sixteen markets'
bond types, coupons from 0.5 % to 5 %, maturities up to thirty years, every
other row priced and the others given a yield. Row i is a function of i
alone, so bench/batch_benchmark.cpp builds the very same rows in C.

Usage: /usr/bin/python3 bench/make_portfolio.py ROWS OUT.csv
"""
import sys

TYPES = (0, 40, 60, 81, 260, 200, 220, 3, 1, 100, 240, 280, 20, 380, 500, 530)
SETTLEMENT = 45823  # 16 June 2025


def row(i):
    """(type, coupon %, maturity, settlement, price or None, yield % or None)."""
    coupon = 0.5 + (i % 91) * 0.05
    maturity = SETTLEMENT + 30 + (i * 7919) % 10950
    if i % 2:
        return TYPES[i % 16], coupon, maturity, SETTLEMENT, 85.0 + (i % 37) * 0.75, None
    return TYPES[i % 16], coupon, maturity, SETTLEMENT, None, 1.0 + (i % 61) * 0.1


def main():
    rows, path = int(sys.argv[1]), sys.argv[2]
    with open(path, "w") as f:
        f.write("id,type,coupon,maturity,settlement,price,yield\n")
        for i in range(rows):
            t, c, m, s, p, y = row(i)
            f.write(f"{i},{t},{c:.2f},{m},{s},{'' if p is None else f'{p:.2f}'},"
                    f"{'' if y is None else f'{y:.1f}'}\n")


if __name__ == "__main__":
    main()
