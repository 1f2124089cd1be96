// FRN conventions: placing the current coupon period, day spans and accrual
// years, the type registry, and the simple and discount margins.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>
#include <tuple>

#include "frn/frn_day_count.h"
#include "frn/frn_registry.h"
#include "frn/frn_schedule.h"
#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::ymd;

FrnType conventions(int32_t frequency, int32_t end_of_month = 0, int32_t rule = 3, int32_t saturday = 0) {
  FrnType t;
  t.frequency = frequency;
  t.end_of_month = end_of_month;
  t.business_day_rule = rule;
  t.holiday_option_a = saturday;
  return t;
}

struct ScheduleCase {
  const char* what;
  FrnType type;
  int32_t maturity, settlement;
  std::optional<int32_t> previous;
  std::vector<int32_t> resets, holidays;
  int32_t previous_out, next_out, later = -1;
};

TEST(FrnSchedule, PlacesTheCurrentPeriod) {
  const FrnType semi = conventions(2), eom = conventions(2, 1), following = conventions(2, 0, 0);
  const FrnType biweekly = conventions(26);
  const int32_t m = ymd(2030, 6, 15), s = ymd(2026, 3, 1), e = ymd(2026, 12, 31), m31 = ymd(2031, 2, 15);
  const int32_t jan1 = ymd(2026, 1, 1), jan20 = ymd(2026, 1, 20), jun1 = ymd(2026, 6, 1), aug15 = ymd(2026, 8, 15);
  const int32_t dec15 = ymd(2025, 12, 15), jun15 = ymd(2026, 6, 15), feb16 = ymd(2026, 2, 16);
  const ScheduleCase cases[] = {
      {"steps back from maturity", semi, m, s, {}, {}, {}, dec15, jun15},
      {"settling on a coupon date opens the period", semi, m, jun15, {}, {}, {}, jun15, ymd(2026, 12, 15)},
      {"maturity on the 31st keeps month ends", semi, ymd(2030, 5, 31), jan1, {}, {}, {}, ymd(2025, 11, 30),
       ymd(2026, 5, 31)},
      {"30 April with the flag", eom, ymd(2030, 4, 30), jan1, {}, {}, {}, ymd(2025, 10, 31), ymd(2026, 4, 30)},
      {"listed dates around settlement", semi, m, s, {}, {ymd(2025, 12, 12), ymd(2026, 6, 12), ymd(2026, 12, 14)},
       {}, ymd(2025, 12, 12), ymd(2026, 6, 12), 1},
      {"a later previous coupon replaces a stale list", semi, m, s, jan20, {ymd(2024, 12, 15)}, {}, jan20,
       ymd(2026, 7, 20)},
      {"an earlier previous coupon is ignored", semi, m, s, ymd(2024, 6, 15), {ymd(2024, 12, 15)}, {}, dec15, jun15},
      {"rolled past maturity the next is maturity", semi, ymd(2026, 5, 1), s, jan20, {}, {}, jan20, ymd(2026, 5, 1)},
      {"26 a year steps 14 days", biweekly, e, e - 30, {}, {}, {}, e - 42, e - 28},
      // 15 August 2026 is a Saturday, 15 February 2026 a Sunday.
      {"following", following, m31, jun1, {}, {}, {}, feb16, ymd(2026, 8, 17)},
      {"a Monday holiday", following, m31, jun1, {}, {}, {ymd(2026, 8, 17)}, feb16, ymd(2026, 8, 18)},
      {"listed dates are never adjusted", following, m31, jun1, {}, {aug15}, {}, 0, aug15},
  };
  for (ScheduleCase c : cases) {
    SCOPED_TRACE(c.what);
    FrnSchedule out;
    const int32_t* previous = c.previous ? &*c.previous : nullptr;
    ASSERT_EQ(frn_schedule_setup(&c.type, c.maturity, c.settlement, previous, c.resets.data(),
                                 static_cast<int32_t>(c.resets.size()), c.holidays.data(),
                                 static_cast<int32_t>(c.holidays.size()), &out),
              0);
    if (c.previous_out != 0) { EXPECT_EQ(out.previous_coupon, c.previous_out); }
    EXPECT_EQ(out.next_coupon, c.next_out);
    if (c.later >= 0) { EXPECT_EQ(out.later_count, c.later); }
  }
}

TEST(FrnDayCount, AccrualYearsAndThirtyDaySpans) {
  struct Year { int32_t code, from, to, frequency; double days; } const years[] = {
      {5, ymd(2026, 1, 15), ymd(2026, 7, 15), 2, 362.0},  // 181 days x 2 periods a year
      // Code 2: a half-year period ending in a leap year is 366, whether or
      // not it contains 29 February; one ending in a common year is 365.
      {2, ymd(2027, 8, 15), ymd(2028, 2, 15), 2, 366.0},
      // Annual periods look at February: ending after it in a leap year or on
      // 29 February, or starting in a leap February, is 366.
      {2, ymd(2027, 2, 28), ymd(2028, 2, 29), 1, 366.0},
      {2, ymd(2028, 2, 15), ymd(2029, 2, 15), 1, 366.0},
  };
  for (const Year& y : years) EXPECT_EQ(frn_accrual_year(y.code, y.from, y.to, y.frequency), y.days) << y.from;
  const int32_t jan15 = ymd(2026, 1, 15), jan31 = ymd(2026, 1, 31), mar15 = ymd(2026, 3, 15);
  const int32_t mar31 = ymd(2026, 3, 31), feb28 = ymd(2027, 2, 28), mar31_27 = ymd(2027, 3, 31);
  // U.S. rule keeps the 31st when the start is not the 30th or 31st: 76; the Eurobond rule: 75.
  EXPECT_EQ(frn_day_span(jan15, jan15, mar31, 3), 76);
  EXPECT_EQ(frn_day_span(jan15, jan15, mar31, 4), 75);
  // Measured from the period start: 60 - 16 = 44 (actual days would be 43).
  EXPECT_EQ(frn_day_span(jan15, jan31, mar15, 3), 44);
  // From the last day of February to 31 March: 30 days (actual 31).
  EXPECT_EQ(frn_day_span(feb28, feb28, mar31_27, 3), 30);
}

// Registers a type from the defaults, or from `base`, with the fields given
// (-1 or NaN: not given).
int32_t register_type(std::array<int32_t, 6> fields, double year_length = NAN, int32_t base = 0,
                      int32_t* err = nullptr) {
  const int32_t* p[6];
  for (int i = 0; i < 6; ++i) p[i] = fields[i] == -1 ? nullptr : &fields[i];
  const double* year = std::isnan(year_length) ? nullptr : &year_length;
  return KVLfrntype(base, p[0], p[1], p[2], p[3], p[4], p[5], year, nullptr, 0, 0, 0, 0, 0, 0, err);
}
constexpr int32_t N = -1;

TEST(FrnType, DerivedTypeKeepsBaseFieldsItDoesNotOverride) {
  int32_t err = -1;
  // Quarterly, act/365, modified following, month ends, both weekend days working, pay on business days.
  const int32_t base = register_type({4, 1, 2, 1, 2, 1}, 364.0, 0, &err);
  const int32_t derived = register_type({12, N, N, N, N, N}, NAN, base, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NE(derived, base);
  FrnType r;
  ASSERT_TRUE(registry_lookup(derived, &r));
  // The Sunday bit keeps its value 2.
  EXPECT_EQ(std::make_tuple(r.frequency, r.day_count, r.business_day_rule, r.end_of_month, r.holiday_option_a,
                            r.holiday_option_b, r.option_flag, r.year_length),
            std::make_tuple(12, 1, 2, 1, 0, 2, 1, 364.0));
  KVLfreefrntype(derived);
  KVLfreefrntype(base);
  // A freed handle is no longer known to the registry or the typed calls.
  EXPECT_FALSE(registry_lookup(base, &r));
  testing::Note note;
  note.type = base;
  EXPECT_EQ(note.accrued(&err), -1.0);
  EXPECT_EQ(err, 901);
}

TEST(FrnType, HandlesSkipZeroAndLiveEntriesWhenTheyWrap) {
  const std::array<int32_t, 6> defaults{N, N, N, N, N, N};
  // One below the wrap point: the next handle is 2^31 - 1, then 1 again.
  registry_restart_handles(0x7FFFFFFEu);
  const int32_t last = register_type(defaults), wrapped = register_type(defaults);
  EXPECT_EQ(last, 0x7FFFFFFF);
  EXPECT_EQ(wrapped, 1);
  // Counter back at 1: handle 1 is live, so the next one must skip it.
  registry_restart_handles(0x7FFFFFFFu * 2);
  const int32_t after = register_type(defaults);
  EXPECT_EQ(after, 2);
  for (int32_t h : {last, wrapped, after}) KVLfreefrntype(h);
}

// Default conventions: semi-annual, act/360. Maturity 15 June 2030,
// settlement 1 March 2026: previous coupon 15 December 2025 (76 days back),
// next 15 June 2026 (106 days on), 1567 days to maturity.
const int32_t kMaturity = ymd(2030, 6, 15);
const int32_t kSettlement = ymd(2026, 3, 1);

TEST(FrnSimpleMargin, MatchesHandComputation) {
  int32_t err = -1;
  // 0.005 + [106/360 x (0.052 - 0.045 - 0.005) + (1 - 0.995)] / (1567/360)
  EXPECT_NEAR(KVLfrnsm(kMaturity, kSettlement, 0.052, 99.5, 0.045, 0.005, nullptr, nullptr, nullptr, nullptr,
                       nullptr, &err),
              0.005 + (106.0 / 360.0 * 0.002 + 0.005) / (1567.0 / 360.0), 1e-15);
  // Day count 2: the stub to 15 June 2028 counts in a 366-day accrual year
  // (period ending in a leap year), the life in years of 365.25 days.
  const int32_t settlement = ymd(2028, 3, 1), code2 = 2;
  const double stub = (ymd(2028, 6, 15) - settlement) / 366.0, life = (kMaturity - settlement) / 365.25;
  EXPECT_NEAR(KVLfrnsm(kMaturity, settlement, 0.04, 101.0, 0.045, 0.01, nullptr, nullptr, &code2, nullptr,
                       nullptr, &err),
              0.01 + (stub * (0.04 - 0.045 - 0.01) + (1.0 - 1.01)) / life, 1e-15);
  EXPECT_EQ(err, 0);
}

// The note's dirty value per unit at margin d written out period by period:
// redemption and the projected coupons (index + quoted margin) discounted at
// index + d per period to the next coupon date, the current coupon added,
// then discounted over the stub at stub + d; solved by bisection.
struct IndependentNote {
  double first_coupon, stub_time, periods_per_year, index, quoted, stub;
  int periods;
  double value(double d) const {
    const double per_period = 1.0 + (index + d) / periods_per_year;
    double pv = 1.0 / std::pow(per_period, periods);
    for (int i = 1; i <= periods; ++i) pv += (index + quoted) / periods_per_year / std::pow(per_period, i);
    return (pv + first_coupon) / (1.0 + stub_time * (stub + d));
  }
  double solve(double target) const {
    double lo = -0.5, hi = 0.5;  // value falls as d rises
    for (int i = 0; i < 200; ++i) (value(0.5 * (lo + hi)) > target ? lo : hi) = 0.5 * (lo + hi);
    return 0.5 * (lo + hi);
  }
};

TEST(FrnDiscountMargin, AgreesWithIndependentBisection) {
  const double current = 0.0515, stub = 0.047, index = 0.045, quoted = 0.005;
  // Eight semi-annual periods from 15 June 2026 to maturity; act/360 with a
  // 360-day year gives 2 x 360/365.25 periods per year on the actual basis.
  const IndependentNote note{current * 182.0 / 360.0, 106.0 / 360.0, 2.0 * 360.0 / 365.25, index, quoted, stub, 8};
  for (double price : {97.0, 99.5, 100.0, 101.25}) {
    int32_t err = -1;
    const double dm = KVLfrndm(kMaturity, kSettlement, current, price, stub, index, quoted, nullptr, nullptr,
                               nullptr, nullptr, nullptr, &err);
    ASSERT_EQ(err, 0);
    EXPECT_NEAR(dm, note.solve(price / 100.0 + current * 76.0 / 360.0), 1e-12) << "price " << price;
  }
  // Day count 2 (2 periods a year exactly): an index of -2 with margin 0
  // makes 1 + (index + d)/2 zero at the first step: 400, margin reached.
  const int32_t code2 = 2;
  int32_t err = -1;
  EXPECT_EQ(KVLfrndm(kMaturity, kSettlement, 0.05, 100.0, 0.05, -2.0, 0.0, nullptr, nullptr, &code2, nullptr,
                     nullptr, &err),
            0.0);
  EXPECT_EQ(err, 400);
}

}  // namespace
}  // namespace kbond::frn
