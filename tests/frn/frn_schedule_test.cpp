// Placing the current coupon period: listed reset dates, a known previous
// coupon, stepping back from maturity, day stepping for 26 and 52 resets a
// year, business-day adjustment, and the dates the set-up refuses.
#include <gtest/gtest.h>

#include "frn/frn_schedule.h"
#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::ymd;

struct Placed {
  int32_t error;
  int32_t previous;
  int32_t next;
  int32_t later_count;
};

Placed place(FrnType type, int32_t maturity, int32_t settlement, const int32_t* previous,
             std::vector<int32_t> resets = {}, std::vector<int32_t> holidays = {}) {
  FrnSchedule s;
  const int32_t err = frn_schedule_setup(&type, maturity, settlement, previous,
                                         resets.empty() ? nullptr : resets.data(),
                                         static_cast<int32_t>(resets.size()),
                                         holidays.empty() ? nullptr : holidays.data(),
                                         static_cast<int32_t>(holidays.size()), &s);
  return {err, s.previous_coupon, s.next_coupon, s.later_count};
}

FrnType with_frequency(int32_t frequency) {
  FrnType t;
  t.frequency = frequency;
  return t;
}

TEST(FrnSchedule, StepsBackFromMaturityByDefault) {
  const Placed p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), nullptr);
  ASSERT_EQ(p.error, 0);
  EXPECT_EQ(p.next, ymd(2026, 6, 15));
  EXPECT_EQ(p.previous, ymd(2025, 12, 15));
  // Settlement on a coupon date opens the new period.
  const Placed on = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 6, 15), nullptr);
  EXPECT_EQ(on.previous, ymd(2026, 6, 15));
  EXPECT_EQ(on.next, ymd(2026, 12, 15));
}

TEST(FrnSchedule, MonthEndsFollowTheAnchor) {
  // Maturity on the 31st keeps month ends: 30 November, 31 May.
  Placed p = place(FrnType{}, ymd(2030, 5, 31), ymd(2026, 1, 1), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 5, 31));
  EXPECT_EQ(p.previous, ymd(2025, 11, 30));
  // Maturity on 30 April (a shorter month's end): the type's flag decides.
  p = place(FrnType{}, ymd(2030, 4, 30), ymd(2026, 1, 1), nullptr);
  EXPECT_EQ(p.previous, ymd(2025, 10, 30));
  FrnType eom;
  eom.end_of_month = 1;
  p = place(eom, ymd(2030, 4, 30), ymd(2026, 1, 1), nullptr);
  EXPECT_EQ(p.previous, ymd(2025, 10, 31));
  EXPECT_EQ(p.next, ymd(2026, 4, 30));
  // 28 February 2030 is a month end: with the flag the grid runs on month ends.
  p = place(eom, ymd(2030, 2, 28), ymd(2026, 1, 1), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 2, 28));
  EXPECT_EQ(p.previous, ymd(2025, 8, 31));
  // An anchor inside its month never keeps month ends, whatever the flag.
  p = place(eom, ymd(2030, 2, 27), ymd(2026, 1, 1), nullptr);
  EXPECT_EQ(p.previous, ymd(2025, 8, 27));
}

TEST(FrnSchedule, ListedResetDateAfterSettlementIsTakenAsGiven) {
  // An off-grid listed date wins over stepping back from maturity.
  Placed p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), nullptr, {ymd(2026, 6, 10)});
  EXPECT_EQ(p.next, ymd(2026, 6, 10));
  EXPECT_EQ(p.previous, ymd(2025, 12, 10));
  // The listed date before it is the previous coupon; later ones stay listed.
  p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), nullptr,
            {ymd(2025, 12, 12), ymd(2026, 6, 12), ymd(2026, 12, 14)});
  EXPECT_EQ(p.previous, ymd(2025, 12, 12));
  EXPECT_EQ(p.next, ymd(2026, 6, 12));
  EXPECT_EQ(p.later_count, 1);
  // A previous coupon given with a list that starts after settlement is used.
  const int32_t previous = ymd(2025, 12, 20);
  p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), &previous, {ymd(2026, 6, 10)});
  EXPECT_EQ(p.previous, previous);
  EXPECT_EQ(p.next, ymd(2026, 6, 10));
}

TEST(FrnSchedule, ResetDateOnOrBeforeSettlementRollsForward) {
  Placed p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), nullptr, {ymd(2024, 12, 15)});
  EXPECT_EQ(p.next, ymd(2026, 6, 15));
  EXPECT_EQ(p.previous, ymd(2025, 12, 15));
  // A later previous coupon replaces the stale list.
  const int32_t later = ymd(2026, 1, 20);
  p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), &later, {ymd(2024, 12, 15)});
  EXPECT_EQ(p.previous, later);
  EXPECT_EQ(p.next, ymd(2026, 7, 20));
  // An earlier one is ignored: the list is rolled forward.
  const int32_t earlier = ymd(2024, 6, 15);
  p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), &earlier, {ymd(2024, 12, 15)});
  EXPECT_EQ(p.previous, ymd(2025, 12, 15));
  EXPECT_EQ(p.next, ymd(2026, 6, 15));
}

TEST(FrnSchedule, PreviousCouponAnchorsTheSchedule) {
  const int32_t previous = ymd(2026, 1, 20);
  const Placed p = place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), &previous);
  EXPECT_EQ(p.previous, previous);
  EXPECT_EQ(p.next, ymd(2026, 7, 20));
  // Rolled past maturity, the next coupon is maturity itself.
  const Placed last = place(FrnType{}, ymd(2026, 5, 1), ymd(2026, 3, 1), &previous);
  EXPECT_EQ(last.next, ymd(2026, 5, 1));
  // A zero previous coupon counts as none.
  const int32_t zero = 0;
  EXPECT_EQ(place(FrnType{}, ymd(2030, 6, 15), ymd(2026, 3, 1), &zero).next, ymd(2026, 6, 15));
}

TEST(FrnSchedule, BiweeklyAndWeeklyResetsStepByDays) {
  const int32_t maturity = ymd(2026, 12, 31);
  // 26 a year: 14-day periods back from maturity; 30 days to go.
  Placed p = place(with_frequency(26), maturity, maturity - 30, nullptr);
  EXPECT_EQ(p.next, maturity - 28);
  EXPECT_EQ(p.previous, maturity - 42);
  // 52 a year: 7-day periods; 10 days to go.
  p = place(with_frequency(52), maturity, maturity - 10, nullptr);
  EXPECT_EQ(p.next, maturity - 7);
  EXPECT_EQ(p.previous, maturity - 14);
  // Settlement exactly on a reset date starts the new period.
  p = place(with_frequency(26), maturity, maturity - 28, nullptr);
  EXPECT_EQ(p.previous, maturity - 28);
  EXPECT_EQ(p.next, maturity - 14);
  // Rolling forward from a previous coupon 20 days back: 28 days after it.
  const int32_t previous = maturity - 100;
  p = place(with_frequency(26), maturity, previous + 20, &previous);
  EXPECT_EQ(p.next, previous + 28);
  // The end-of-month rule plays no part: maturity on 31 May.
  FrnType weekly_eom = with_frequency(52);
  weekly_eom.end_of_month = 1;
  p = place(weekly_eom, ymd(2026, 5, 31), ymd(2026, 5, 21), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 5, 24));
  EXPECT_EQ(p.previous, ymd(2026, 5, 17));
}

TEST(FrnSchedule, BusinessDayRulesMoveComputedDates) {
  // Grid of 15 February / 15 August to 2031: 15 August 2026 is a Saturday,
  // 15 February 2026 a Sunday.
  const int32_t maturity = ymd(2031, 2, 15);
  FrnType following;
  following.business_day_rule = 0;
  Placed p = place(following, maturity, ymd(2026, 6, 1), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 8, 17));
  EXPECT_EQ(p.previous, ymd(2026, 2, 16));
  FrnType preceding;
  preceding.business_day_rule = 1;
  p = place(preceding, maturity, ymd(2026, 6, 1), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 8, 14));
  EXPECT_EQ(p.previous, ymd(2026, 2, 13));
  // A holiday on Monday 17 August pushes the coupon to Tuesday.
  p = place(following, maturity, ymd(2026, 6, 1), nullptr, {}, {ymd(2026, 8, 17)});
  EXPECT_EQ(p.next, ymd(2026, 8, 18));
  // Saturday working: 15 August stays.
  FrnType saturday_works = following;
  saturday_works.holiday_option_a = 1;
  p = place(saturday_works, maturity, ymd(2026, 6, 1), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 8, 15));
  // Settling on Saturday 15 August itself: the coupon is paid on Monday 17th,
  // after settlement, so it is still the next coupon.
  p = place(following, maturity, ymd(2026, 8, 15), nullptr);
  EXPECT_EQ(p.next, ymd(2026, 8, 17));
  EXPECT_EQ(p.previous, ymd(2026, 2, 16));
  // Unadjusted, the same settlement opens the new period.
  p = place(FrnType{}, maturity, ymd(2026, 8, 15), nullptr);
  EXPECT_EQ(p.previous, ymd(2026, 8, 15));
  EXPECT_EQ(p.next, ymd(2027, 2, 15));
  // Listed reset dates are never adjusted.
  p = place(following, maturity, ymd(2026, 6, 1), nullptr, {ymd(2026, 8, 15)});
  EXPECT_EQ(p.next, ymd(2026, 8, 15));
}

TEST(FrnSchedule, YearLengthComesFromTheDayCountUnlessGiven) {
  const double expected[] = {360.0, 365.0, 365.25, 360.0, 360.0, 365.25};
  for (int32_t code = 0; code <= 5; ++code) {
    FrnType type;
    type.day_count = code;
    FrnSchedule s;
    ASSERT_EQ(frn_schedule_setup(&type, ymd(2030, 6, 15), ymd(2026, 3, 1), nullptr, nullptr, 0,
                                 nullptr, 0, &s),
              0);
    EXPECT_EQ(type.year_length, expected[code]) << "day count " << code;
  }
  FrnType given;
  given.year_length = 364.0;
  FrnSchedule s;
  frn_schedule_setup(&given, ymd(2030, 6, 15), ymd(2026, 3, 1), nullptr, nullptr, 0, nullptr, 0, &s);
  EXPECT_EQ(given.year_length, 364.0);
}

TEST(FrnSchedule, RefusedDates) {
  const int32_t m = ymd(2030, 6, 15), s = ymd(2026, 3, 1);
  EXPECT_EQ(place(FrnType{}, m, 0, nullptr).error, 150);
  EXPECT_EQ(place(FrnType{}, m, s, nullptr, {-5, ymd(2026, 6, 15)}).error, 150);
  EXPECT_EQ(place(FrnType{}, m, s, nullptr, {ymd(2026, 6, 15), ymd(2026, 6, 15)}).error, 160);
  EXPECT_EQ(place(FrnType{}, m, s, nullptr, {ymd(2030, 12, 15)}).error, 160);
  EXPECT_EQ(place(FrnType{}, m, s, nullptr, {}, {ymd(2026, 5, 1), ymd(2026, 4, 1)}).error, 160);
  EXPECT_EQ(place(FrnType{}, m, s, nullptr, {}, {-1}).error, 150);
  const int32_t after = s + 1;
  EXPECT_EQ(place(FrnType{}, m, s, &after).error, 160);
  EXPECT_EQ(place(FrnType{}, s, s, nullptr).error, 160);
  EXPECT_EQ(place(FrnType{}, s - 10, s, nullptr).error, 160);
  EXPECT_EQ(place(with_frequency(5), m, s, nullptr).error, 301);
  FrnType bad_day_count;
  bad_day_count.day_count = 6;
  EXPECT_EQ(place(bad_day_count, m, s, nullptr).error, 300);

  FrnSchedule schedule;
  FrnType type;
  EXPECT_EQ(frn_schedule_setup(nullptr, m, s, nullptr, nullptr, 0, nullptr, 0, &schedule), 50);
  EXPECT_EQ(frn_schedule_setup(&type, m, s, nullptr, nullptr, 2, nullptr, 0, &schedule), 50);
  EXPECT_EQ(frn_schedule_setup(&type, m, s, nullptr, nullptr, 0, nullptr, 3, &schedule), 50);
  EXPECT_EQ(frn_schedule_setup(&type, m, s, nullptr, nullptr, -1, nullptr, 0, &schedule), 60);
}

}  // namespace
}  // namespace kbond::frn
