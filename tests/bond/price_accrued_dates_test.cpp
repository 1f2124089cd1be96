// KVLbpr, KVLbai and KVLbai1 on real bonds under each market's convention.
// Prices are checked against an independent spreadsheet-style price (the
// PRICE / ODDFPRICE construction: every cash flow discounted at (1 + y/f)
// to the power of its distance in periods), accrued interest against the
// market's formula worked by hand. KVLbcpn, KVLbncpn, KVLbexdiv, KVLbal and
// KVLbel against calendars and sinking funds worked by hand. Day counts are
// counted on the calendar in the comments.
#include <gtest/gtest.h>

#include <cmath>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

constexpr double kSixDecimals = 5.1e-7;  // types 0 and 1 round prices to 1e-6
constexpr double kUnrounded = 1e-9;

// Spreadsheet price per 100 with n >= 1 coupons left: the next coupon
// `next` dsc periods away (left out ex-dividend), later ones of `regular`.
double sheet_price(double y, int f, int n, double next, double regular, double dsc,
                   double redemption, double accrued, bool cum = true) {
  const double v = 1.0 / (1.0 + y / f);
  double dirty = cum ? next * std::pow(v, dsc) : 0.0;
  for (int k = 2; k <= n; ++k) dirty += regular * std::pow(v, k - 1 + dsc);
  return dirty + redemption * std::pow(v, n - 1 + dsc) - accrued;
}

// Ex-dividend (negative accrued interest) the next coupon is left out.
// Types 0 and 1 round to six decimals; the others are unrounded.
TEST(Price, MarketsMatchTheSpreadsheetPrice) {
  struct Case {
    const char* what;
    QuotedBond bond;
    double y;
    int f, n;
    double next, dsc, accrued;
  };
  const QuotedBond gilt(40, 0.045, ymd(2028, 6, 7), 0);  // 7 Jun / 7 Dec
  // Dated 1 Feb 2025, first coupon 15 May 2025 (short: 103 of the 181 days
  // of the quasi-period from 15 Nov 2024); dated 15 Sep 2024 (long: 61/184
  // of the quasi-period to 15 Nov 2024 and the whole one after it).
  QuotedBond odd_short(0, 0.05, ymd(2029, 11, 15), ymd(2025, 3, 1));
  odd_short.dated = ymd(2025, 2, 1);
  odd_short.first = ymd(2025, 5, 15);
  QuotedBond odd_long = odd_short.at(ymd(2024, 12, 1));
  odd_long.dated = ymd(2024, 9, 15);
  QuotedBond at98(500, 0.06, ymd(2030, 6, 15), ymd(2028, 3, 15));
  at98.rates = {0.06, 98.0};  // {rate, redemption}
  QuotedBond at98_of_50 = at98;
  at98_of_50.rates = {0.06, 50.0, 49.0};  // {rate, a, b}: redeemed at 100 b / a
  const Case cases[] = {
      // 20 coupons left, 164 of the 181 days of the period to run, 17 accrued.
      {"Treasury", QuotedBond(0, 0.0425, ymd(2034, 11, 15), ymd(2024, 12, 2)), 0.042, 2, 20,
       2.125, 164.0 / 181, 2.125 * 17 / 181},
      // 20 May 2025: 164 of 182 days accrued, 18 to run, 7 coupons left.
      {"Gilt cum", gilt.at(ymd(2025, 5, 20)), 0.041, 2, 7, 2.25, 18.0 / 182, 2.25 * 164 / 182},
      // 3 June 2025 is ex-dividend (from 30 May): the June coupon goes to the
      // seller and the accrued interest is minus the 4 days to it.
      {"Gilt ex", gilt.at(ymd(2025, 6, 3)), 0.041, 2, 7, 2.25, 4.0 / 182, -2.25 * 4 / 182},
      // Gilts discount the last period compound: 85 of 183 days accrued.
      {"Gilt last period", gilt.at(ymd(2028, 3, 1)), 0.041, 2, 1, 2.25, 98.0 / 183,
       2.25 * 85 / 183},
      // Annual act/act: 23 of 365 days accrued, 342 to run, 10 coupons.
      {"Bund", QuotedBond(60, 0.025, ymd(2035, 2, 15), ymd(2025, 3, 10)), 0.026, 1, 10, 2.5,
       342.0 / 365, 2.5 * 23 / 365},
      // 75 days to the short first coupon, 28 accrued.
      {"short first", odd_short, 0.048, 2, 10, 2.5 * 103 / 181, 75.0 / 181, 2.5 * 28 / 181},
      // 165 of 181 days to run, 61/184 + 16/181 of a period accrued.
      {"long first", odd_long, 0.048, 2, 10, 2.5 * (1 + 61.0 / 184), 165.0 / 181,
       2.5 * (61.0 / 184 + 16.0 / 181)},
      // Redeemed at 98: 91 of 183 days accrued, 92 to run, 5 coupons left.
      {"redemption 98", at98, 0.05, 2, 5, 3.0, 92.0 / 183, 3.0 * 91 / 183},
      {"redemption 49 of 50", at98_of_50, 0.05, 2, 5, 3.0, 92.0 / 183, 3.0 * 91 / 183},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    int32_t err = -1;
    const double regular = 100.0 * c.bond.rates[0] / c.f;
    const double redemption = c.bond.rates.size() == 1 ? 100.0 : 100.0 * c.bond.rates.back() /
                                  (c.bond.rates.size() == 3 ? c.bond.rates[1] : 100.0);
    EXPECT_NEAR(c.bond.price(c.y, &err),
                sheet_price(c.y, c.f, c.n, c.next, regular, c.dsc, redemption, c.accrued,
                            c.accrued >= 0.0),
                c.bond.type == 0 ? kSixDecimals : kUnrounded);
    EXPECT_EQ(err, 0);
  }
}

TEST(Price, QuotationRules) {
  // A Treasury in its last period is priced at simple interest: 4 % note of
  // 15 May 2025 on 1 Apr 2025 at 4.5 %, 44 of 181 days to run, 137 accrued.
  const double last = QuotedBond(0, 0.04, ymd(2025, 5, 15), ymd(2025, 4, 1)).price(0.045);
  EXPECT_NEAR(last, 102.0 / (1.0 + 44.0 / 181 * 0.0225) - 2.0 * 137 / 181, kSixDecimals);
  // With every optional argument NULL the bond is a U.S. Treasury: the
  // 4.25 % note of 2034 at 4.20 % is 100.401459 (a spreadsheet's PRICE),
  // exactly to six decimals, and a success clears a stale error code.
  const double c = 0.0425;
  const int32_t m = ymd(2034, 11, 15);
  int32_t e = 99;
  const double price = KVLbpr(&c, 1, &m, 1, ymd(2024, 12, 2), 0.042, nullptr, nullptr, nullptr,
                              nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                              nullptr, nullptr, &e);
  EXPECT_EQ(e, 0);
  EXPECT_DOUBLE_EQ(price, 100.401459);
}

// A sinking fund is priced per outstanding face as a blend of the bullets
// to each repayment date. Five equal repayments 2026..2030 (factor -1)
// settled 15 Mar 2028 leave 60 % in three legs, 6 % bullets at 5 % with 92
// of 183 days to run and 91 accrued: the 2028 leg is in its last period
// (simple interest), the others compound.
TEST(Price, SinkingFundBlendsTheBulletsToEachRepayment) {
  const auto bullet = [](int n) {
    return sheet_price(0.05, 2, n, 3.0, 3.0, 92.0 / 183, 100, 3.0 * 91 / 183);
  };
  const double b2028 = 103.0 / (1.0 + 92.0 / 183 * 0.025) - 3.0 * 91 / 183;
  QuotedBond equal = sinking_fund(ymd(2028, 3, 15));
  equal.factor = -1.0;
  equal.sink_amounts.clear();
  equal.dates = {ymd(2030, 6, 15)};
  EXPECT_NEAR(equal.price(0.05), (b2028 + bullet(3) + bullet(5)) / 3.0, 1e-9);
}

// Accrued interest per 100: coupon x days accrued / days (or year basis),
// and after the ex-dividend date minus the coupon x days to the coupon.
// KVLbai and KVLbai1 without business-day arguments agree.
TEST(Accrued, MarketDayCountsAndExDividendRules) {
  struct Case {
    const char* what;
    int32_t type;
    double rate;
    int32_t maturity, settle;
    double expected;
  };
  const Case cases[] = {
      // 4.25 % Treasury: 17 of 181 days; nothing on a coupon date.
      {"Treasury", 0, 0.0425, ymd(2034, 11, 15), ymd(2024, 12, 2), 2.125 * 17 / 181},
      {"Treasury coupon date", 0, 0.0425, ymd(2034, 11, 15), ymd(2025, 5, 15), 0.0},
      // Gilt coupon Saturday 7 Jun 2025; 7 business days back is Thursday
      // 29 May, ex-dividend from 30 May.
      {"Gilt cum", 40, 0.045, ymd(2028, 6, 7), ymd(2025, 5, 29), 2.25 * 173 / 182},
      {"Gilt ex", 40, 0.045, ymd(2028, 6, 7), ymd(2025, 5, 30), -2.25 * 8 / 182},
      // ACGB: ex 7 days before 21 Apr, three decimals: -2.125 x 5/182 =
      // -0.05838 -> -0.058; 2.125 x 174/182 = 2.03159 -> 2.032; last period
      // act/365: 4.25 x 41/365 = 0.47740 -> 0.477.
      {"ACGB ex", 220, 0.0425, ymd(2026, 4, 21), ymd(2025, 4, 16), -0.058},
      {"ACGB cum", 220, 0.0425, ymd(2026, 4, 21), ymd(2025, 4, 13), 2.032},
      {"ACGB last period", 220, 0.0425, ymd(2026, 4, 21), ymd(2025, 12, 1), 0.477},
      // SGB 30E/360, ex 5 business days before Wed 12 Nov 2025 (Wed 5 Nov).
      {"SGB cum", 180, 0.01, ymd(2026, 11, 12), ymd(2025, 11, 4), 352.0 / 360},
      {"SGB ex", 180, 0.01, ymd(2026, 11, 12), ymd(2025, 11, 7), -5.0 / 360},
      // NGB act/365, ex 14 days before 19 Feb: from 5 Feb 2025.
      {"NGB cum", 330, 0.015, ymd(2026, 2, 19), ymd(2025, 2, 4), 1.5 * 351 / 365},
      {"NGB ex", 330, 0.015, ymd(2026, 2, 19), ymd(2025, 2, 10), -1.5 * 9 / 365},
      // 3 x 98/365 = 0.805479 per 100, rounded at the fifth decimal of face
      // (OAT: 0.805) or the sixth (Portugal: 0.8055).
      {"OAT", 81, 0.03, ymd(2034, 11, 25), ymd(2025, 3, 3), 0.805},
      {"PGB", 290, 0.03, ymd(2034, 11, 25), ymd(2025, 3, 3), 0.8055},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const QuotedBond bond(c.type, c.rate, c.maturity, c.settle);
    int32_t e = -1, e1 = -1;
    EXPECT_NEAR(bond.accrued(&e), c.expected, 1e-10);
    EXPECT_EQ(bond.accrued1(&e1), bond.accrued());
    EXPECT_TRUE(e == 0 && e1 == 0);
  }
}

TEST(Accrued, CallersExDividendPeriodAndHolidays) {
  // The caller's ex-dividend period: 3 calendar days before 7 Jun 2025.
  QuotedBond gilt(40, 0.045, ymd(2028, 6, 7), ymd(2025, 6, 3));
  gilt.exdiv = -3;
  EXPECT_NEAR(gilt.accrued(), 2.25 * 178 / 182, 1e-10);
  EXPECT_NEAR(gilt.at(ymd(2025, 6, 4)).accrued(), -2.25 * 3 / 182, 1e-10);
  // A holiday on Friday 30 May 2025 sends the Gilt ex a day earlier when
  // the business-day arguments are given (KVLbai1 only).
  gilt.exdiv.reset();
  gilt.holidays = {ymd(2025, 5, 30)};
  EXPECT_GT(gilt.at(ymd(2025, 5, 29)).accrued(), 0.0);
  EXPECT_LT(gilt.at(ymd(2025, 5, 29)).accrued1(), 0.0);
  // An SGB settled Tuesday 5 November 2024 is ex-dividend for the 12
  // November coupon (-1 x 7/360) unless Saturdays work (ex from the 6th):
  // then it accrues 30E/360 from 12 November 2023, 353/360 of 1.
  QuotedBond sgb(180, 0.01, ymd(2026, 11, 12), ymd(2024, 11, 5));
  sgb.bd_flags = 1;
  EXPECT_NEAR(sgb.accrued(), -7.0 / 360, 1e-12);
  EXPECT_NEAR(sgb.accrued1(), 353.0 / 360, 1e-12);
}

int32_t coupon_date(int32_t maturity, int32_t settlement, int32_t k, int32_t dated,
                    int32_t first) {
  const int32_t type = 0;
  return KVLbcpn(maturity, settlement, &k, &dated, &first, &type, nullptr, nullptr, nullptr);
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
  EXPECT_EQ(coupon_date(broken, broken, 0, dated2, first2), broken);
  // 15 August and the broken period to 1 October.
  EXPECT_EQ(KVLbncpn(broken, ymd(2039, 3, 1), &dated2, &first2, nullptr, nullptr, nullptr, nullptr),
            2);
}

// The export reads the caller's weekend and ex-dividend period; the market
// rules themselves are the engine's. Gilts: seven business days before
// Thursday 7 March 2024 (back over 6, 5, 4, 1 March, 29, 28, 27 February),
// plus one day: 28 February, whatever the weekend flags; a NULL holiday
// list or a negative count is no list. Australian bonds: the caller's three
// business days before Monday 15 April 2024, Saturday and Sunday working:
// Friday 12th. Swedish bonds: five business days before Tuesday 12
// November 2024, back over 11, 8, 7, 6 to Tuesday 5 November; with
// Saturday working over 11, 9, 8, 7 to Wednesday 6 November.
TEST(ExDividendDate, MarketRulesAndOverrides) {
  const int32_t gilt = 40, acgb = 220, sgb = 180, three_business = 3, settle = ymd(2024, 2, 10);
  const uint8_t weekend_works = 3, saturday_works = 1;
  for (const auto& [holidays_count, flags] :
       {std::pair{0, &weekend_works}, {3, nullptr}, {-1, nullptr}}) {
    int32_t e = -1;
    EXPECT_EQ(KVLbexdiv(ymd(2029, 9, 7), settle, &gilt, nullptr, nullptr, holidays_count, flags,
                        &e),
              ymd(2024, 2, 28));
    EXPECT_EQ(e, 0);
  }
  EXPECT_EQ(KVLbexdiv(ymd(2033, 4, 15), settle, &acgb, &three_business, nullptr, 0,
                      &weekend_works, nullptr),
            ymd(2024, 4, 12));
  const int32_t sgb_maturity = ymd(2026, 11, 12), sgb_settle = ymd(2024, 6, 1);
  EXPECT_EQ(KVLbexdiv(sgb_maturity, sgb_settle, &sgb, nullptr, nullptr, 0, nullptr, nullptr),
            ymd(2024, 11, 5));
  EXPECT_EQ(KVLbexdiv(sgb_maturity, sgb_settle, &sgb, nullptr, nullptr, 0, &saturday_works,
                      nullptr),
            ymd(2024, 11, 6));
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
