// bond_setup: coupon forms, type and frequency, the coupon grid and the
// period around settlement, period counts, taxes and argument validation.
// Expected dates and counts are worked out by hand from the bonds' calendars.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "dates/date_serial.h"
#include "engine/bond_desc.h"

namespace kbond::engine {
namespace {

int32_t ymd(int32_t y, int32_t m, int32_t d) { return dates::date_to_serial(d, m, y); }

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

TEST(BondSetupCouponForms, RedemptionGivenAsPercentOrRatio) {
  const int32_t mat = ymd(2030, 6, 15);
  const int32_t type = 500;
  bond_desc d;

  const double percent[] = {0.06, 98.0};
  bond_args a{.coupons = percent, .n_coupons = 2, .dates = &mat, .n_dates = 1,
              .settlement = ymd(2025, 3, 1), .type = &type};
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption_ratio, 0.98);
  EXPECT_DOUBLE_EQ(d.redemption, 98.0);
  EXPECT_EQ(d.n_coupons, 0);
  EXPECT_DOUBLE_EQ(d.current_rate(), 0.06);

  const double ratio[] = {0.06, 100.0, 102.0};
  a.coupons = ratio;
  a.n_coupons = 3;
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption_ratio, 1.02);
  EXPECT_DOUBLE_EQ(d.redemption, 102.0);

  // An explicit redemption argument wins over the form.
  const double given = 101.0;
  a.redemption = &given;
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption, 101.0);
}

TEST(BondSetupCouponForms, InvalidFormsAreRejected) {
  const int32_t mat = ymd(2030, 6, 15);
  const int32_t two_dates[] = {ymd(2027, 6, 15), ymd(2030, 6, 15)};
  bond_desc d;
  const double zero_redemption[] = {0.06, 0.0};
  const double negative_ratio[] = {0.06, 100.0, -102.0};
  const double four[] = {0.06, 100.0, 102.0, 1.0};
  bond_args a{.dates = &mat, .n_dates = 1, .settlement = ymd(2025, 3, 1)};
  a.coupons = zero_redemption;
  a.n_coupons = 2;
  EXPECT_EQ(bond_setup(a, d), 1);
  a.coupons = negative_ratio;
  a.n_coupons = 3;
  EXPECT_EQ(bond_setup(a, d), 1);
  a.coupons = four;
  a.n_coupons = 4;
  EXPECT_EQ(bond_setup(a, d), 1);
  // Three coupons against two dates is neither steps nor a redemption form.
  a.coupons = four;
  a.n_coupons = 3;
  a.dates = two_dates;
  a.n_dates = 2;
  EXPECT_EQ(bond_setup(a, d), 1);
}

TEST(BondSetupCouponForms, StepIndexFollowsThePeriodStart) {
  // 3% to 15 Jun 2027, 4% to 15 Jun 2029, 5% to maturity; annual coupons.
  const double rates[] = {0.03, 0.04, 0.05};
  const int32_t steps[] = {ymd(2027, 6, 15), ymd(2029, 6, 15), ymd(2032, 6, 15)};
  const int32_t type = 60;
  bond_desc d;
  bond_args a{.coupons = rates, .n_coupons = 3, .dates = steps, .n_dates = 3,
              .settlement = ymd(2027, 3, 1), .type = &type};
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_EQ(d.coupon_index, 0);
  // A period that starts on the step date pays the next rate.
  a.settlement = ymd(2027, 6, 15);
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_EQ(d.period_start, ymd(2027, 6, 15));
  EXPECT_EQ(d.coupon_index, 1);
  EXPECT_DOUBLE_EQ(d.current_rate(), 0.04);
  a.settlement = ymd(2031, 1, 10);
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_EQ(d.coupon_index, 2);
}

TEST(BondSetupFrequency, OnlyTheUsualFrequenciesAreAccepted) {
  const int32_t type = 40;  // Gilt: semi-annual by default
  Bullet b(0.045, ymd(2028, 6, 7), ymd(2025, 3, 1), &type);
  bond_desc d;
  for (int32_t f : {5, 24, -2, 7}) {
    const int32_t freq[] = {f};
    b.args.frequency = freq;
    b.args.n_frequency = 1;
    EXPECT_EQ(bond_setup(b.args, d), 1) << "frequency " << f;
  }
  const int32_t zero[] = {0};
  b.args.frequency = zero;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.frequency, 2);
  EXPECT_EQ(d.months_per_period, 6);
  const int32_t quarterly[] = {4};
  b.args.frequency = quarterly;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.months_per_period, 3);
  // Yankee bonds have no default: the caller must give the frequency.
  const int32_t yankee = 810;
  b.args.type = &yankee;
  b.args.frequency = nullptr;
  b.args.n_frequency = 0;
  EXPECT_EQ(bond_setup(b.args, d), 1);
}

TEST(BondSetupType, DanishPreEmuBondsSwitchOn8February2001) {
  const int32_t type = 302;
  Bullet b(0.06, ymd(2006, 11, 15), ymd(2001, 2, 7), &type);
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.type, 302);
  EXPECT_EQ(d.accrual_basis, 2);  // 30E/360
  b.args.settlement = ymd(2001, 2, 8);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.type, 300);
  EXPECT_EQ(d.accrual_basis, 0);  // act/act
}

TEST(BondSetupType, UnknownCodesAndNullType) {
  bond_desc d;
  for (int32_t code : {10, 14, 23, 999, 1050, -1}) {
    Bullet b(0.05, ymd(2030, 6, 15), ymd(2025, 3, 1), &code);
    EXPECT_EQ(bond_setup(b.args, d), 1) << "code " << code;
  }
  Bullet b(0.05, ymd(2030, 6, 15), ymd(2025, 3, 1), nullptr);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.type, 0);
  EXPECT_EQ(d.frequency, 2);
}

TEST(BondSetupEndOfMonth, DecidedByTheMaturityDay) {
  // Agency bonds (type 1) have the rule off by default; it decides between
  // 30/360 and 30/360 with the February rule.
  const int32_t type = 1;
  bond_desc d;
  Bullet april(0.05, ymd(2030, 4, 30), ymd(2025, 3, 1), &type);
  ASSERT_EQ(bond_setup(april.args, d), 0);
  EXPECT_EQ(d.eom, 0);
  EXPECT_EQ(d.accrual_basis, 1);
  // Without the rule the coupon before 30 April is 30 October.
  EXPECT_EQ(d.period_start, ymd(2024, 10, 30));
  EXPECT_EQ(d.next_coupon, ymd(2025, 4, 30));

  Bullet may(0.05, ymd(2030, 5, 31), ymd(2025, 3, 1), &type);
  ASSERT_EQ(bond_setup(may.args, d), 0);
  EXPECT_EQ(d.eom, 1);
  EXPECT_EQ(d.accrual_basis, 7);
  EXPECT_EQ(d.period_start, ymd(2024, 11, 30));
  EXPECT_EQ(d.next_coupon, ymd(2025, 5, 31));

  // The variant with the rule keeps it for a 30 April maturity, and the
  // grid then follows month ends.
  const int32_t variant = 11;
  april.args.type = &variant;
  ASSERT_EQ(bond_setup(april.args, d), 0);
  EXPECT_EQ(d.eom, 1);
  EXPECT_EQ(d.period_start, ymd(2024, 10, 31));
  // A mid-month maturity turns it off even for the variant.
  Bullet mid(0.05, ymd(2030, 4, 15), ymd(2025, 3, 1), &variant);
  ASSERT_EQ(bond_setup(mid.args, d), 0);
  EXPECT_EQ(d.eom, 0);
}

TEST(BondSetupGrid, DerivedFromMaturityWithoutDatedDate) {
  const int32_t type = 0;
  Bullet b(0.0425, ymd(2034, 11, 15), ymd(2024, 12, 2), &type);
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.anchor, ymd(2034, 11, 15));
  // First coupon on the yearly grid on or before settlement.
  EXPECT_EQ(d.first_coupon, ymd(2024, 11, 15));
  EXPECT_EQ(d.dated_date, ymd(2024, 5, 15));
  EXPECT_EQ(d.period_start, ymd(2024, 11, 15));
  EXPECT_EQ(d.next_coupon, ymd(2025, 5, 15));
  EXPECT_EQ(d.position, kRegularPeriod);
  EXPECT_EQ(d.odd_first, 0);
  EXPECT_EQ(d.whole_periods, 20);  // 15 Nov 2024 .. 15 Nov 2034
  EXPECT_EQ(d.partial_period, 0);
}

TEST(BondSetupGrid, DerivedFirstCouponIsTheAnniversaryBeforeSettlement) {
  // Quarterly 15 Nov 2034 bond: the anniversaries of maturity are the 15
  // Novembers, whatever quarter settlement falls in.
  const int32_t type = 0;
  const int32_t quarterly = 4;
  Bullet b(0.04, ymd(2034, 11, 15), ymd(2024, 12, 2), &type);
  b.args.frequency = &quarterly;
  b.args.n_frequency = 1;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.first_coupon, ymd(2024, 11, 15));
  EXPECT_EQ(d.dated_date, ymd(2024, 8, 15));
  EXPECT_EQ(d.next_coupon, ymd(2025, 2, 15));
  // Settled in the quarter before the anniversary: the previous November.
  b.args.settlement = ymd(2024, 10, 10);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.first_coupon, ymd(2023, 11, 15));
  EXPECT_EQ(d.dated_date, ymd(2023, 8, 15));
  EXPECT_EQ(d.period_start, ymd(2024, 8, 15));
  EXPECT_EQ(d.next_coupon, ymd(2024, 11, 15));
  EXPECT_EQ(d.position, kRegularPeriod);
}

TEST(BondSetupGrid, DerivedFirstCouponReachesBackToTheFirstCouponStep) {
  // Steps 3% to 15 May 2020 and 4% to 15 Nov 2034: the derived schedule must
  // cover the first step, so it starts at the anniversary before 15 May 2020.
  const double rates[] = {0.03, 0.04};
  const int32_t steps[] = {ymd(2020, 5, 15), ymd(2034, 11, 15)};
  const int32_t type = 0;
  bond_args a{.coupons = rates, .n_coupons = 2, .dates = steps, .n_dates = 2,
              .settlement = ymd(2024, 12, 2), .type = &type};
  bond_desc d;
  ASSERT_EQ(bond_setup(a, d), 0);
  EXPECT_EQ(d.first_coupon, ymd(2019, 11, 15));
  EXPECT_EQ(d.dated_date, ymd(2019, 5, 15));
  EXPECT_EQ(d.period_start, ymd(2024, 11, 15));
  EXPECT_EQ(d.next_coupon, ymd(2025, 5, 15));
  EXPECT_DOUBLE_EQ(d.current_rate(), 0.04);
}

TEST(BondSetupGrid, FirstCouponDerivedFromDatedDate) {
  const int32_t type = 0;
  Bullet b(0.05, ymd(2029, 11, 15), ymd(2025, 3, 1), &type);
  const int32_t dated = ymd(2025, 2, 1);
  b.args.dated_date = &dated;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.first_coupon, ymd(2025, 5, 15));
  EXPECT_EQ(d.position, kShortFirstPeriod);
  EXPECT_EQ(d.odd_first, 1);
  EXPECT_EQ(d.whole_periods, 9);  // 15 May 2025 .. 15 Nov 2029
}

TEST(BondSetupGrid, DerivedFirstCouponWithin27DaysOfMaturityIsMaturity) {
  // JGBs run their grid through the 20th: a bond maturing on 5 June 2025
  // has grid date 20 June 2025 after a February dated date, beyond maturity
  // but within 27 days of it.
  const int32_t jgb = 200;
  Bullet b(0.01, ymd(2025, 6, 5), ymd(2025, 3, 3), &jgb);
  int32_t dated = ymd(2025, 2, 1);
  b.args.dated_date = &dated;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.anchor, ymd(2025, 6, 20));
  EXPECT_EQ(d.first_coupon, ymd(2025, 6, 5));
  // A dated date a period earlier gives an ordinary first coupon on the 20th.
  dated = ymd(2024, 11, 1);
  b.args.settlement = ymd(2024, 11, 5);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.first_coupon, ymd(2024, 12, 20));
}

TEST(BondSetupGrid, FirstCouponAloneGivesDatedDateOnePeriodBefore) {
  const int32_t type = 0;
  Bullet b(0.05, ymd(2030, 3, 10), ymd(2025, 1, 20), &type);
  const int32_t first = ymd(2025, 3, 10);
  b.args.first_coupon = &first;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.anchor, first);
  EXPECT_EQ(d.dated_date, ymd(2024, 9, 10));
  EXPECT_EQ(d.position, kRegularPeriod);
  // ... but never after settlement.
  b.args.settlement = ymd(2024, 8, 1);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.dated_date, ymd(2024, 8, 1));
  EXPECT_EQ(d.position, kLongFirstPeriod);
}

TEST(BondSetupGrid, OrderOfDatesIsChecked) {
  const int32_t type = 0;
  Bullet b(0.05, ymd(2030, 3, 10), ymd(2025, 1, 20), &type);
  bond_desc d;
  int32_t dated = ymd(2025, 3, 10), first = ymd(2025, 3, 10);
  b.args.dated_date = &dated;
  b.args.first_coupon = &first;
  EXPECT_EQ(bond_setup(b.args, d), 1);  // dated date not before first coupon
  dated = ymd(2024, 9, 10);
  first = ymd(2030, 9, 10);
  EXPECT_EQ(bond_setup(b.args, d), 1);  // first coupon after maturity
  first = ymd(2025, 3, 10);
  b.args.settlement = ymd(2030, 3, 11);
  EXPECT_EQ(bond_setup(b.args, d), 1);  // settlement after maturity
  b.args.settlement = ymd(2030, 3, 10);
  ASSERT_EQ(bond_setup(b.args, d), 0);  // settlement on maturity is allowed
  EXPECT_EQ(d.position, kNoGridDateLeft);
  EXPECT_EQ(d.remaining_periods(), 1);
}

TEST(BondSetupGrid, MunicipalTypeIgnoringOddCouponsDerivesFromMaturity) {
  const int32_t type = 16;
  Bullet b(0.05, ymd(2030, 3, 10), ymd(2025, 1, 20), &type);
  const int32_t dated = ymd(2024, 12, 1), first = ymd(2025, 6, 1);
  b.args.dated_date = &dated;
  b.args.first_coupon = &first;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.anchor, ymd(2030, 3, 10));
  EXPECT_EQ(d.period_start, ymd(2024, 9, 10));
  EXPECT_EQ(d.position, kRegularPeriod);
}

TEST(BondSetupPeriods, BrokenLastPeriodWhenMaturityIsOffTheGrid) {
  // First coupon 15 March fixes the grid on the 15th; maturity on 1 October
  // leaves a short last period of 15 Sep .. 1 Oct.
  const int32_t type = 500;
  Bullet b(0.05, ymd(2029, 10, 1), ymd(2025, 1, 20), &type);
  const int32_t dated = ymd(2024, 9, 15), first = ymd(2025, 3, 15);
  b.args.dated_date = &dated;
  b.args.first_coupon = &first;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.odd_first, 1);
  EXPECT_EQ(d.whole_periods, 9);  // 15 Mar 2025 .. 15 Sep 2029
  EXPECT_EQ(d.partial_period, 1);
  // act/act: 16 days of the 181-day period 15 Sep 2029 .. 15 Mar 2030.
  EXPECT_NEAR(d.last_discount, 16.0 / 181.0, 1e-12);
  EXPECT_NEAR(d.last_coupon, 16.0 / 181.0, 1e-12);
}

TEST(BondSetupPeriods, JgbMergesTheBrokenLastPeriodWithTheWholeOneBefore) {
  const int32_t jgb = 200;
  Bullet b(0.01, ymd(2027, 6, 5), ymd(2025, 3, 3), &jgb);
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  // Grid on the 20th: 20 Dec 2024 .. 20 Dec 2026 is four whole periods,
  // one of which joins the 167 days (act/365) of 20 Dec 2026 .. 5 Jun 2027.
  EXPECT_EQ(d.period_start, ymd(2024, 12, 20));
  EXPECT_EQ(d.whole_periods, 3);
  EXPECT_EQ(d.partial_period, 1);
  EXPECT_NEAR(d.last_coupon, 1.0 + 167.0 * 2 / 365.0, 1e-12);
}

TEST(BondSetupTaxes, ItalianIssueDiscountTaxReducesRedemption) {
  // Pre-1997 BTP: the whole discount is taxed. 100 - (100 - 95) * 0.125.
  const int32_t btp_old = 264;
  Bullet b(0.08, ymd(2001, 1, 1), ymd(1996, 3, 1), &btp_old);
  const double issue = 95.0, tax = 0.125;
  b.args.issue_price = &issue;
  b.args.discount_tax = &tax;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption, 99.375);
  EXPECT_EQ(d.discount_tax, 0.0);

  // Current BTP dated 1 Jan 1995, maturing 1 Jan 2001: the tax is scaled by
  // the share of life before the grid date on or before 1 Jan 1997
  // (1 Jan 1997 itself): 731 of 2192 days.
  const int32_t btp = 260;
  b.args.type = &btp;
  const int32_t dated = ymd(1995, 1, 1);
  b.args.dated_date = &dated;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_NEAR(d.redemption, 100.0 - 5.0 * 0.125 * 731.0 / 2192.0, 1e-12);
  EXPECT_EQ(d.discount_tax, 0.0);

  // Issued after the reform: nothing deducted.
  const int32_t late_dated = ymd(1998, 1, 1);
  b.args.dated_date = &late_dated;
  b.args.settlement = ymd(1998, 3, 1);
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_DOUBLE_EQ(d.redemption, 100.0);

  // Other markets keep the tax for the capital-gains rule.
  const int32_t treasury = 0;
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

TEST(BondSetupMethod, YieldMethodArgumentIsNormalised) {
  const int32_t type = 0;
  Bullet b(0.05, ymd(2030, 3, 10), ymd(2025, 1, 31), &type);
  bond_desc d;
  const struct { int32_t given, stored; } cases[] = {{-1, -1}, {-6, -6}, {-7, 1}, {3, 1}, {0, 0}};
  for (const auto& c : cases) {
    b.args.yield_method = &c.given;
    ASSERT_EQ(bond_setup(b.args, d), 0);
    EXPECT_EQ(d.yield_method_arg, c.stored) << c.given;
  }
  const int32_t flags = 3;
  b.args.bd_flags = &flags;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.roll_forward, 1);
  EXPECT_EQ(d.roll_flag2, 1);
}

TEST(BondSetupValidation, MalformedArgumentsGiveError1) {
  const int32_t type = 0;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  bond_desc d;
  auto fresh = [&] { return Bullet(0.05, ymd(2030, 3, 10), ymd(2025, 1, 31), &type); };
  {
    Bullet b = fresh();
    b.args.coupons = nullptr;
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  {
    Bullet b = fresh();
    b.args.n_coupons = -1;
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  {
    Bullet b = fresh();
    b.args.dates = nullptr;
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  {
    Bullet b = fresh();
    b.coupon = nan;
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  {
    Bullet b = fresh();
    b.coupon = inf;
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  for (int32_t bad : {0, -5, dates::kMaxSerial + 1}) {
    Bullet b = fresh();
    b.args.settlement = bad;
    EXPECT_EQ(bond_setup(b.args, d), 1) << bad;
    Bullet m = fresh();
    m.maturity = bad;
    EXPECT_EQ(bond_setup(m.args, d), 1) << bad;
    Bullet f = fresh();
    f.args.first_coupon = &bad;
    EXPECT_EQ(bond_setup(f.args, d), bad == 0 ? 0 : 1) << bad;
  }
  {
    Bullet b = fresh();
    b.args.n_frequency = 1;  // frequency array missing
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  {
    Bullet b = fresh();
    b.args.n_holidays = -1;
    EXPECT_EQ(bond_setup(b.args, d), 1);
    b.args.n_holidays = 3;  // holiday list missing
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  for (const double* bad : {&nan, &inf}) {
    Bullet r = fresh();
    r.args.redemption = bad;
    EXPECT_EQ(bond_setup(r.args, d), 1);
    Bullet t = fresh();
    t.args.coupon_tax = bad;
    EXPECT_EQ(bond_setup(t.args, d), 1);
    Bullet i = fresh();
    i.args.issue_price = bad;
    EXPECT_EQ(bond_setup(i.args, d), 1);
  }
  {
    const double negative = -1.0;
    Bullet b = fresh();
    b.args.redemption = &negative;
    EXPECT_EQ(bond_setup(b.args, d), 1);
  }
  {
    const double rates[] = {0.05, 0.06};
    const int32_t unordered[] = {ymd(2028, 1, 1), ymd(2027, 1, 1)};
    bond_args a{.coupons = rates, .n_coupons = 2, .dates = unordered, .n_dates = 2,
                .settlement = ymd(2025, 1, 31), .type = &type};
    EXPECT_EQ(bond_setup(a, d), 1);
  }
}

}  // namespace
}  // namespace kbond::engine
