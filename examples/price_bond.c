/* price_bond: price a U.S. Treasury note from its yield with the k_bond C
** interface, and show how a refused bond reports its error.
** Build against an installed k_bond (cmake --install, or the Debian package):
**   cc price_bond.c $(pkg-config --cflags --libs k_bond) -o price_bond
** or, from the top of the source tree, against a build tree:
**   cmake -S . -B build/release -G Ninja && cmake --build build/release --target k_bond
**   cc examples/price_bond.c -I include -L build/release -Wl,-rpath,$PWD/build/release -lk_bond */
#include <stdio.h>

#include "k_bond.h"

/* Date serial of a calendar date: 1 = 1 January 1900, proleptic Gregorian. */
static int32_t serial_from_ymd(int y, int m, int d) {
  y -= m <= 2;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const long yoe = y - era * 400;
  const long doy = (153L * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return (int32_t)(era * 146097 + doe - 719468 + 25568);
}

int main(void) {
  const double coupon = 0.0425;                              /* 4.25 % */
  const int32_t maturity = serial_from_ymd(2034, 11, 15);
  const int32_t settlement = serial_from_ymd(2025, 1, 15);
  const int32_t type = 0;                                    /* U.S. Treasury Bond */
  int32_t err = 0;

  const double price = KVLbpr(&coupon, 1, &maturity, 1, settlement, 0.045, NULL, NULL, &type,
                              NULL, 0, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, 0, NULL,
                              NULL, 0, NULL, 0, NULL, NULL, NULL, &err);
  if (err != KVL_OK) {
    printf("price failed with error %d\n", err);
    return 1;
  }
  const double accrued = KVLbai(&coupon, 1, &maturity, 1, settlement, NULL, NULL, &type, NULL, 0,
                                NULL, NULL, NULL, 0, NULL, 0, NULL, NULL, NULL, &err);
  if (err != KVL_OK) {
    printf("accrued interest failed with error %d\n", err);
    return 1;
  }
  printf("Clean price      %.6f\n", price);
  printf("Accrued interest %.6f\n", accrued);

  /* Settlement after maturity: the library refuses the bond with error 1
  ** and returns its failure value -1.0, which must never be used as a price. */
  const double refused = KVLbpr(&coupon, 1, &maturity, 1, maturity + 1, 0.045, NULL, NULL, &type,
                                NULL, 0, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, 0, NULL,
                                NULL, 0, NULL, 0, NULL, NULL, NULL, &err);
  printf("Refused bond     error %d, value %.1f\n", err, refused);
  return err == KVL_ERR_INVALID ? 0 : 1;
}
