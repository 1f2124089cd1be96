// bond_setup: coupon forms, the coupon grid and the period around
// settlement, the period fractions (cf, tn in years, accrued), taxes and
// argument validation. Expected dates, day counts and fractions are worked
// out by hand on the calendar.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "dates/date_serial.h"
#include "engine/bond_desc.h"

namespace kbond::engine {
namespace {

int32_t ymd(int32_t y, int32_t m, int32_t d) { return dates::date_to_serial(d, m, y); }

constexpr double kTight = 1e-12;
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// A one-step bond with everything else defaulted.
struct Bullet {
  double coupon = 0.05;
  int32_t maturity = 0;
  bond_args args;
  Bullet(double rate, int32_t mat, int32_t settlement, const int32_t* type) : coupon(rate), maturity(mat) {
    args.coupons = &coupon;
    args.n_coupons = 1;
    args.dates = &maturity;
    args.n_dates = 1;
    args.settlement = settlement;
    args.type = type;
  }
  Bullet(const Bullet&) = delete;  // args points into this object
};

// A 6% bullet; zero expectations (and NaN fractions) are not checked.
struct Row {
  const char* name;
  int32_t type, maturity, settlement, dated = 0, first = 0, frequency = 0;
  int32_t period_start = 0, next_coupon = 0, first_coupon = 0, dated_date = 0;
  int32_t position = -1, whole = -1, partial = -1, eom = -1, basis = -1;
  double cf = kNone, tn = kNone, accrued = kNone, last_coupon = kNone;
};

TEST(BondSetupGrid, PeriodAroundSettlementAndItsFractions) {
  const Row rows[] = {
      // 15 Nov 2024 .. 15 May 2025 has 181 days; 17 have run on 2 Dec.
      {.name = "derived from maturity", .type = 0, .maturity = ymd(2034, 11, 15),
       .settlement = ymd(2024, 12, 2), .period_start = ymd(2024, 11, 15),
       .next_coupon = ymd(2025, 5, 15), .first_coupon = ymd(2024, 11, 15),
       .dated_date = ymd(2024, 5, 15), .position = kRegularPeriod, .whole = 20, .partial = 0,
       .tn = 164.0 / 362.0, .accrued = 0.03 * 17.0 / 181.0},
      // The derived first coupon is the anniversary of maturity before
      // settlement, whatever quarter settlement falls in.
      {.name = "quarterly, before the anniversary", .type = 0, .maturity = ymd(2034, 11, 15),
       .settlement = ymd(2024, 10, 10), .frequency = 4, .period_start = ymd(2024, 8, 15),
       .next_coupon = ymd(2024, 11, 15), .first_coupon = ymd(2023, 11, 15),
       .dated_date = ymd(2023, 8, 15), .position = kRegularPeriod},
      // Corporate 30/360: 15 Dec 2024 .. 10 Mar 2025 is 85 days of 180.
      {.name = "30/360", .type = 3, .maturity = ymd(2030, 6, 15), .settlement = ymd(2025, 3, 10),
       .basis = 1, .tn = 0.5 - 85.0 / 360.0, .accrued = 0.06 * 85.0 / 360.0},
      // 103 days of the 181-day quasi-period to 15 May; 28 accrued on 1 Mar.
      {.name = "short first period", .type = 0, .maturity = ymd(2029, 11, 15),
       .settlement = ymd(2025, 3, 1), .dated = ymd(2025, 2, 1), .first_coupon = ymd(2025, 5, 15),
       .position = kShortFirstPeriod, .whole = 9, .cf = 103.0 / 181.0, .tn = 75.0 / 362.0,
       .accrued = 0.03 * 28.0 / 181.0},
      // Quasi-periods 15 May .. 15 Nov 2024 (184 days, 61 from the dated
      // date) and 15 Nov 2024 .. 15 May 2025 (181 days).
      {.name = "long first period, second quasi-period", .type = 0,
       .maturity = ymd(2029, 11, 15), .settlement = ymd(2024, 12, 1), .dated = ymd(2024, 9, 15),
       .first = ymd(2025, 5, 15), .position = kLongFirstPeriod, .cf = 1.0 + 61.0 / 184.0,
       .tn = 165.0 / 362.0, .accrued = 0.03 * (61.0 / 184.0 + 16.0 / 181.0)},
      {.name = "settled before the dated date", .type = 0, .maturity = ymd(2029, 11, 15),
       .settlement = ymd(2024, 11, 1), .dated = ymd(2024, 11, 15), .first = ymd(2025, 5, 15),
       .position = kRegularPeriod, .tn = (14.0 / 184.0 + 1.0) / 2.0, .accrued = 0.0},
      {.name = "first coupon alone: dated never after settlement", .type = 0,
       .maturity = ymd(2030, 3, 10), .settlement = ymd(2024, 8, 1), .first = ymd(2025, 3, 10),
       .dated_date = ymd(2024, 8, 1), .position = kLongFirstPeriod},
      // JGB grid on the 20th: 20 Jun 2025 is beyond a 5 Jun maturity but within 27 days.
      {.name = "JGB first coupon within 27 days of maturity", .type = 200,
       .maturity = ymd(2025, 6, 5), .settlement = ymd(2025, 3, 3), .dated = ymd(2025, 2, 1),
       .first_coupon = ymd(2025, 6, 5)},
      // 20 Dec 2024 .. 20 Dec 2026 is four periods, one of which joins the
      // 167 days (act/365) of 20 Dec 2026 .. 5 Jun 2027.
      {.name = "JGB merges the broken last period", .type = 200, .maturity = ymd(2027, 6, 5),
       .settlement = ymd(2025, 3, 3), .period_start = ymd(2024, 12, 20), .whole = 3, .partial = 1,
       .last_coupon = 1.0 + 167.0 * 2 / 365.0},
      // Grid on the 15th, maturity 1 Oct: 16 days of the 181-day period to 15 Mar 2030.
      {.name = "broken last period", .type = 500, .maturity = ymd(2029, 10, 1),
       .settlement = ymd(2025, 1, 20), .dated = ymd(2024, 9, 15), .first = ymd(2025, 3, 15),
       .whole = 9, .partial = 1, .last_coupon = 16.0 / 181.0},
      {.name = "only the broken period left", .type = 500, .maturity = ymd(2029, 10, 1),
       .settlement = ymd(2029, 9, 20), .dated = ymd(2024, 9, 15), .first = ymd(2025, 3, 15),
       .next_coupon = ymd(2029, 10, 1), .position = kNoGridDateLeft, .cf = 16.0 / 181.0,
       .tn = 11.0 / 362.0, .accrued = 0.03 * 5.0 / 181.0},
      // Agency bonds: the maturity day decides the month-end rule, and with
      // it 30/360 or 30/360 with the February rule.
      {.name = "agency, 30 April", .type = 1, .maturity = ymd(2030, 4, 30),
       .settlement = ymd(2025, 3, 1), .period_start = ymd(2024, 10, 30), .eom = 0, .basis = 1},
      {.name = "agency, 31 May", .type = 1, .maturity = ymd(2030, 5, 31),
       .settlement = ymd(2025, 3, 1), .period_start = ymd(2024, 11, 30), .eom = 1, .basis = 7},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    Bullet b(0.06, r.maturity, r.settlement, &r.type);
    b.args.dated_date = &r.dated;
    b.args.first_coupon = &r.first;
    if (r.frequency) {
      b.args.frequency = &r.frequency;
      b.args.n_frequency = 1;
    }
    bond_desc d;
    ASSERT_EQ(bond_setup(b.args, d), 0);
    // Zero dates, negative codes and NaN fractions are not checked.
    const int32_t ints[][2] = {{r.period_start, d.period_start}, {r.next_coupon, d.next_coupon},
                               {r.first_coupon, d.first_coupon}, {r.dated_date, d.dated_date},
                               {r.position, d.position},         {r.whole, d.whole_periods},
                               {r.partial, d.partial_period},    {r.eom, d.eom},
                               {r.basis, d.accrual_basis}};
    for (int k = 0; k < 9; ++k) {
      if (k < 4 ? ints[k][0] != 0 : ints[k][0] >= 0) {
        EXPECT_EQ(ints[k][1], ints[k][0]) << "field " << k;
      }
    }
    const double fractions[][2] = {
        {r.cf, d.cf}, {r.tn, d.tn}, {r.accrued, d.accrued}, {r.last_coupon, d.last_coupon}};
    for (const auto& f : fractions) {
      if (!std::isnan(f[0])) {
        EXPECT_NEAR(f[1], f[0], kTight);
      }
    }
  }
}

TEST(BondSetupTaxes, ItalianIssueDiscountTaxReducesRedemption) {
  // Pre-1997 BTP: the whole discount is taxed. 100 - (100 - 95) * 0.125.
  const int32_t btp_old = 264, btp = 260, treasury = 0;
  Bullet b(0.08, ymd(2001, 1, 1), ymd(1996, 3, 1), &btp_old);
  const double issue = 95.0, tax = 0.125;
  b.args.issue_price = &issue;
  b.args.discount_tax = &tax;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption, 99.375);
  EXPECT_EQ(d.discount_tax, 0.0);
  // Current BTP dated 1 Jan 1995, maturing 1 Jan 2001: the tax is scaled by
  // the share of life before the grid date on or before 1 Jan 1997:
  // 731 of 2192 days.
  b.args.type = &btp;
  int32_t dated = ymd(1995, 1, 1);
  b.args.dated_date = &dated;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_NEAR(d.redemption, 100.0 - 5.0 * 0.125 * 731.0 / 2192.0, 1e-12);
  // Issued after the reform: nothing deducted.
  dated = ymd(1998, 1, 1);
  b.args.settlement = ymd(1998, 3, 1);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption, 100.0);
  // Other markets keep the tax for the capital-gains rule.
  b.args.type = &treasury;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption, 100.0);
  EXPECT_DOUBLE_EQ(d.discount_tax, 0.125);
}

TEST(BondSetupTaxes, HorizonInMonthsOrDays) {
  const int32_t type = 0;
  Bullet b(0.05, ymd(2030, 3, 10), ymd(2025, 1, 31), &type);
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.horizon_date, 0);  // no tax in force: no horizon to split income from gain
  const double tax = 0.3;
  b.args.coupon_tax = &tax;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.horizon_date, ymd(2026, 1, 31));  // 12 months by default
  int32_t horizon = 1;
  b.args.horizon = &horizon;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.horizon_date, ymd(2025, 2, 28));  // month end to month end
  horizon = 90;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.horizon_date, ymd(2025, 1, 31) + 90);
  horizon = -1;
  EXPECT_EQ(bond_setup(b.args, d), 1);
}

// The bond area feeds each spoiled argument to the exports; these are the
// coupon and date shapes only bond_setup can tell apart.
TEST(BondSetupValidation, MalformedShapesGiveError1) {
  static const double zero_redemption[] = {0.06, 0.0}, negative_ratio[] = {0.06, 100.0, -102.0},
                      four[] = {0.06, 100.0, 102.0, 1.0}, two_rates[] = {0.05, 0.06};
  static const int32_t one_date[] = {ymd(2030, 6, 15)},
                       two_dates[] = {ymd(2027, 6, 15), ymd(2030, 6, 15)},
                       unordered[] = {ymd(2030, 6, 15), ymd(2027, 6, 15)};
  const struct {
    const double* coupons;
    int32_t n_coupons;
    const int32_t* dates;
    int32_t n_dates;
  } shapes[] = {
      {zero_redemption, 2, one_date, 1}, {negative_ratio, 3, one_date, 1}, {four, 4, one_date, 1},
      {four, 3, two_dates, 2},  // neither steps nor a redemption form
      {two_rates, 2, unordered, 2},
  };
  const int32_t type = 0;
  for (const auto& s : shapes) {
    bond_args a{.coupons = s.coupons, .n_coupons = s.n_coupons, .dates = s.dates,
                .n_dates = s.n_dates, .settlement = ymd(2025, 1, 31), .type = &type};
    bond_desc d;
    EXPECT_EQ(bond_setup(a, d), 1) << s.n_coupons << " coupons, " << s.n_dates << " dates";
  }
}

}  // namespace
}  // namespace kbond::engine
