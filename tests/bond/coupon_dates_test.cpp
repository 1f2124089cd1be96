// KVLbcpn, KVLbncpn and KVLbexdiv against calendars worked by hand.
#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

int32_t coupon_date(int32_t maturity, int32_t settlement, int32_t k, int32_t type = 0,
                    int32_t dated = 0, int32_t first = 0, int32_t* error = nullptr) {
  return KVLbcpn(maturity, settlement, &k, dated ? &dated : nullptr, first ? &first : nullptr,
                 &type, nullptr, nullptr, error);
}

// A Treasury paying 15 May and 15 November, settled 12 March 2024.
TEST(CouponDates, CountedFromSettlement) {
  const int32_t maturity = civil_serial(2034, 11, 15);
  const int32_t settle = civil_serial(2024, 3, 12);
  EXPECT_EQ(coupon_date(maturity, settle, 0), civil_serial(2023, 11, 15));
  EXPECT_EQ(coupon_date(maturity, settle, 1), civil_serial(2024, 5, 15));
  EXPECT_EQ(coupon_date(maturity, settle, -1), civil_serial(2023, 5, 15));
  EXPECT_EQ(coupon_date(maturity, settle, 3), civil_serial(2025, 5, 15));
  // NULL k is the last coupon date on or before settlement.
  const int32_t type = 0;
  EXPECT_EQ(KVLbcpn(maturity, settle, nullptr, nullptr, nullptr, &type, nullptr, nullptr, nullptr),
            civil_serial(2023, 11, 15));
  // Past maturity there is no coupon date.
  int32_t err = 0;
  EXPECT_EQ(coupon_date(maturity, settle, 22, 0, 0, 0, &err), maturity);
  EXPECT_EQ(coupon_date(maturity, settle, 23, 0, 0, 0, &err), -1);
  EXPECT_EQ(err, 1);
  // 22 coupons: May and November of 2024 .. 2034.
  EXPECT_EQ(KVLbncpn(maturity, settle, nullptr, nullptr, &type, nullptr, nullptr, nullptr), 22);
  // An annual Bund maturing 15 August 2034 (frequency from the type).
  const int32_t bund = 60;
  EXPECT_EQ(KVLbncpn(civil_serial(2034, 8, 15), settle, nullptr, nullptr, &bund, nullptr, nullptr,
                     nullptr),
            11);
}

// A new issue dated 1 February 2024 with its first coupon on 15 November
// 2024: before the first coupon there is only the first coupon itself.
TEST(CouponDates, NothingBeforeTheFirstCoupon) {
  const int32_t maturity = civil_serial(2034, 11, 15);
  const int32_t dated = civil_serial(2024, 2, 1), first = civil_serial(2024, 11, 15);
  const int32_t settle = civil_serial(2024, 3, 12);
  EXPECT_EQ(coupon_date(maturity, settle, 1, 0, dated, first), first);
  EXPECT_EQ(coupon_date(maturity, settle, 2, 0, dated, first), civil_serial(2025, 5, 15));
  int32_t err = 0;
  EXPECT_EQ(coupon_date(maturity, settle, 0, 0, dated, first, &err), -1);
  EXPECT_EQ(err, 1);
}

// Coupons every 15 February and 15 August from the first coupon, maturity
// 1 October 2039 off that grid: the last coupon is paid at maturity.
TEST(CouponDates, MaturityOffTheGridIsTheLastCouponDate) {
  const int32_t maturity = civil_serial(2039, 10, 1);
  const int32_t dated = civil_serial(2024, 2, 20), first = civil_serial(2025, 2, 15);
  EXPECT_EQ(coupon_date(maturity, civil_serial(2039, 8, 20), 1, 0, dated, first), maturity);
  EXPECT_EQ(coupon_date(maturity, civil_serial(2039, 8, 20), 0, 0, dated, first),
            civil_serial(2039, 8, 15));
  EXPECT_EQ(coupon_date(maturity, maturity, 0, 0, dated, first), maturity);
  const int32_t type = 0;
  EXPECT_EQ(KVLbncpn(maturity, civil_serial(2039, 3, 1), &dated, &first, &type, nullptr, nullptr,
                     nullptr),
            2);  // 15 August and the broken period to 1 October
}

// Gilts: seven business days before the coupon, plus a day. The 7 March
// 2024 coupon (a Thursday): back over 6, 5, 4, 1 March, 29, 28, 27 February
// -> 27 February, plus one day: ex-dividend from 28 February.
TEST(ExDividendDate, GiltSevenBusinessDays) {
  const int32_t gilt = 40;
  EXPECT_EQ(KVLbexdiv(civil_serial(2029, 9, 7), civil_serial(2024, 2, 10), &gilt, nullptr,
                      nullptr, 0, nullptr, nullptr),
            civil_serial(2024, 2, 28));
  // A holiday on 1 March pushes it a business day earlier.
  const int32_t holiday = civil_serial(2024, 3, 1);
  EXPECT_EQ(KVLbexdiv(civil_serial(2029, 9, 7), civil_serial(2024, 2, 10), &gilt, nullptr,
                      &holiday, 1, nullptr, nullptr),
            civil_serial(2024, 2, 27));
}

// Australian bonds: seven calendar days; the caller's period overrides it.
// Coupon 15 April 2024 (a Monday).
TEST(ExDividendDate, CalendarAndBusinessDayOverrides) {
  const int32_t acgb = 220;
  const int32_t maturity = civil_serial(2033, 4, 15);
  const int32_t settle = civil_serial(2024, 3, 12);
  EXPECT_EQ(KVLbexdiv(maturity, settle, &acgb, nullptr, nullptr, 0, nullptr, nullptr),
            civil_serial(2024, 4, 8));
  const int32_t three_business_days = 3, ten_calendar_days = -10;
  EXPECT_EQ(KVLbexdiv(maturity, settle, &acgb, &three_business_days, nullptr, 0, nullptr, nullptr),
            civil_serial(2024, 4, 10));  // Fri 12, Thu 11, Wed 10
  EXPECT_EQ(KVLbexdiv(maturity, settle, &acgb, &ten_calendar_days, nullptr, 0, nullptr, nullptr),
            civil_serial(2024, 4, 5));
  // With Saturday and Sunday working days: 14, 13, 12 April.
  const uint8_t weekend_works = 3;
  EXPECT_EQ(KVLbexdiv(maturity, settle, &acgb, &three_business_days, nullptr, 0, &weekend_works,
                      nullptr),
            civil_serial(2024, 4, 12));
  // A Treasury has no ex-dividend period: the coupon date itself.
  const int32_t treasury = 0;
  EXPECT_EQ(KVLbexdiv(maturity, settle, &treasury, nullptr, nullptr, 0, nullptr, nullptr),
            civil_serial(2024, 4, 15));
}

TEST(ExDividendDate, BadArguments) {
  const int32_t unknown = 10, gilt = 40;
  const int32_t maturity = civil_serial(2029, 9, 7), settle = civil_serial(2024, 2, 10);
  int32_t err = 0;
  EXPECT_EQ(KVLbexdiv(maturity, settle, &unknown, nullptr, nullptr, 0, nullptr, &err), -1);
  EXPECT_EQ(err, 460);
  EXPECT_EQ(KVLbexdiv(maturity, settle, &gilt, nullptr, nullptr, 2, nullptr, &err), -1);
  EXPECT_EQ(err, 50);
  EXPECT_EQ(KVLbexdiv(maturity, settle, &gilt, nullptr, nullptr, -1, nullptr, &err), -1);
  EXPECT_EQ(err, 60);
  EXPECT_EQ(KVLbexdiv(maturity, -5, &gilt, nullptr, nullptr, 0, nullptr, &err), -1);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(KVLbcpn(maturity, maturity + 1, nullptr, nullptr, nullptr, &gilt, nullptr, nullptr,
                    &err),
            -1);
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
