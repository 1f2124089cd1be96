// KVLbcpn, KVLbncpn, KVLbexdiv, KVLbal and KVLbel against calendars and
// sinking funds worked by hand.
#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

int32_t coupon_date(int32_t maturity, int32_t settlement, int32_t k, int32_t dated = 0,
                    int32_t first = 0) {
  const int32_t type = 0;
  return KVLbcpn(maturity, settlement, &k, dated ? &dated : nullptr, first ? &first : nullptr,
                 &type, nullptr, nullptr, nullptr);
}

int32_t coupons_left(int32_t maturity, int32_t settlement, int32_t type, int32_t dated = 0,
                     int32_t first = 0) {
  return KVLbncpn(maturity, settlement, dated ? &dated : nullptr, first ? &first : nullptr,
                  &type, nullptr, nullptr, nullptr);
}

// A Treasury paying 15 May and 15 November, settled 12 March 2024.
TEST(CouponDates, CountedFromSettlement) {
  const int32_t maturity = ymd(2034, 11, 15), settle = ymd(2024, 3, 12);
  EXPECT_EQ(coupon_date(maturity, settle, 0), ymd(2023, 11, 15));
  EXPECT_EQ(coupon_date(maturity, settle, 1), ymd(2024, 5, 15));
  EXPECT_EQ(coupon_date(maturity, settle, -1), ymd(2023, 5, 15));
  EXPECT_EQ(coupon_date(maturity, settle, 3), ymd(2025, 5, 15));
  // NULL k is the last coupon date on or before settlement.
  EXPECT_EQ(KVLbcpn(maturity, settle, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
            ymd(2023, 11, 15));
  // 22 coupons, May and November of 2024 .. 2034.
  EXPECT_EQ(coupon_date(maturity, settle, 22), maturity);
  EXPECT_EQ(coupons_left(maturity, settle, 0), 22);
  EXPECT_EQ(coupons_left(ymd(2034, 8, 15), settle, 60), 11);  // an annual Bund
}

// A new issue dated 1 February 2024, first coupon 15 November 2024: before
// it there is only the first coupon itself. Coupons every 15 February and
// 15 August from a first coupon in 2025 with maturity 1 October 2039 off
// that grid: the last coupon is paid at maturity.
TEST(CouponDates, OddFirstAndLastPeriods) {
  const int32_t maturity = ymd(2034, 11, 15), settle = ymd(2024, 3, 12);
  const int32_t dated = ymd(2024, 2, 1), first = ymd(2024, 11, 15);
  EXPECT_EQ(coupon_date(maturity, settle, 1, dated, first), first);
  EXPECT_EQ(coupon_date(maturity, settle, 2, dated, first), ymd(2025, 5, 15));

  const int32_t broken = ymd(2039, 10, 1), dated2 = ymd(2024, 2, 20), first2 = ymd(2025, 2, 15);
  EXPECT_EQ(coupon_date(broken, ymd(2039, 8, 20), 1, dated2, first2), broken);
  EXPECT_EQ(coupon_date(broken, ymd(2039, 8, 20), 0, dated2, first2), ymd(2039, 8, 15));
  EXPECT_EQ(coupon_date(broken, broken, 0, dated2, first2), broken);
  // 15 August and the broken period to 1 October.
  EXPECT_EQ(coupons_left(broken, ymd(2039, 3, 1), 0, dated2, first2), 2);
}

int32_t exdiv(int32_t coupon, int32_t type, const int32_t* period = nullptr,
              const int32_t* holiday = nullptr, const uint8_t* weekend = nullptr) {
  return KVLbexdiv(coupon, ymd(2024, 2, 10), &type, period, holiday, holiday ? 1 : 0, weekend,
                   nullptr);
}

// Gilts: seven business days before the coupon, plus a day. Thursday
// 7 March 2024: back over 6, 5, 4, 1 March, 29, 28, 27 February, plus one
// day: 28 February; a holiday on 1 March makes it the 27th. Australian
// bonds: seven calendar days before Monday 15 April 2024, or the caller's
// business days; a Treasury goes ex on the coupon date.
TEST(ExDividendDate, MarketRulesAndOverrides) {
  const int32_t gilt = 40, acgb = 220, holiday = ymd(2024, 3, 1);
  EXPECT_EQ(exdiv(ymd(2029, 9, 7), gilt), ymd(2024, 2, 28));
  EXPECT_EQ(exdiv(ymd(2029, 9, 7), gilt, nullptr, &holiday), ymd(2024, 2, 27));
  const int32_t maturity = ymd(2033, 4, 15), three_business = 3;
  const uint8_t weekend_works = 3;  // Saturday and Sunday are working days
  EXPECT_EQ(exdiv(maturity, acgb), ymd(2024, 4, 8));
  EXPECT_EQ(exdiv(maturity, acgb, &three_business), ymd(2024, 4, 10));  // Fri, Thu, Wed
  EXPECT_EQ(exdiv(maturity, acgb, &three_business, nullptr, &weekend_works), ymd(2024, 4, 12));
  EXPECT_EQ(exdiv(maturity, 0), ymd(2024, 4, 15));
}

// The sinking fund settled on its 15 June 2024 coupon date, repaying 10 %
// each June 2026..2033 and 20 % at maturity in 2034:
//   0.1 x (2 + 3 + ... + 9) + 0.2 x 10 = 4.4 + 2.0 = 6.4 years.
TEST(AverageLife, SinkingFundByHand) {
  QuotedBond sinker = sinking_fund(ymd(2024, 6, 15));
  int32_t err = -1;
  EXPECT_NEAR(sinker.average_life(&err), 6.4, 1e-12);
  EXPECT_EQ(err, 0);
  // Settled after two repayments (16 June 2027): the 80 % still out is
  // repaid 0.1 at 1 .. 6 years less a day, 0.2 at 7, in periods from
  // settlement with t0 = 182 / 183 (16 Jun..15 Dec 2027).
  const double t0 = 182.0 / 183;
  double weighted = 0.2 * (t0 + 13);
  for (int year = 1; year <= 6; ++year) weighted += 0.1 * (t0 + 2 * year - 1);
  EXPECT_NEAR(sinker.at(ymd(2027, 6, 16)).average_life(), weighted / 0.8 / 2, 1e-12);
  // The 2026 repayment ends the run after one date: 0.1 x 2 + 0.9 x 10.
  sinker.sink_ends = {ymd(2026, 6, 15)};
  EXPECT_NEAR(sinker.average_life(), 9.2, 1e-12);
}

// Without a sinking fund the life is the time to maturity: from 12 March
// 2024, 64 / 182 of a period to 15 May 2024 and 21 more to 15 November
// 2034; on the broken grid above, from 1 March 2039, 167 of the 181 days
// to 15 August and then 47 of 184 days to 1 October.
TEST(AverageLife, BulletIsTimeToMaturity) {
  const QuotedBond note(0, 0.05, ymd(2034, 11, 15), ymd(2024, 3, 12));
  const double life = (64.0 / 182 + 21.0) / 2.0;
  EXPECT_NEAR(note.average_life(), life, 1e-12);
  // KVLbel, the remaining life, is the same from a yield or a price; 9.99
  // is a yield of 999 %, 10.0 a price of 10.
  for (const double value : {0.05, 98.5}) EXPECT_NEAR(note.remaining_life(value), life, 1e-12);
  const QuotedBond short_note(0, 0.05, ymd(2024, 11, 15), ymd(2024, 3, 12));
  for (const double value : {9.99, 10.0})
    EXPECT_NEAR(short_note.remaining_life(value), (64.0 / 182 + 1.0) / 2.0, 1e-12);
  QuotedBond broken(0, 0.05, ymd(2039, 10, 1), ymd(2039, 3, 1));
  broken.dated = ymd(2024, 2, 20);
  broken.first = ymd(2025, 2, 15);
  EXPECT_NEAR(broken.average_life(), (167.0 / 181 + 47.0 / 184) / 2.0, 1e-12);
}

}  // namespace
}  // namespace kbond::testing
