// Business days over a holiday list and the two weekend flags.
#include <gtest/gtest.h>

#include <vector>

#include "dates/business_days.h"
#include "dates/date_serial.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

// Independent reference: walk one calendar day at a time, checking the
// weekday and scanning the whole list.
bool naive_business_day(int32_t date, const std::vector<int32_t>& hols, bool sat, bool sun) {
  const int32_t wd = weekday_of(date);
  if (wd == kSaturday && !sat) return false;
  if (wd == kSunday && !sun) return false;
  for (int32_t h : hols)
    if (h == date) return false;
  return true;
}

int32_t naive_add(int32_t date, int32_t n, const std::vector<int32_t>& hols, bool sat, bool sun) {
  const int32_t step = n > 0 ? 1 : -1;
  for (int32_t left = n > 0 ? n : -n; left > 0; --left) {
    do date += step;
    while (!naive_business_day(date, hols, sat, sun));
  }
  return date;
}

TEST(BusinessDays, WeekendFlags) {
  const int32_t friday = S(29, 6, 2001);
  BusinessCalendar cal;
  EXPECT_EQ(add_business_days(friday, 1, cal), S(2, 7, 2001));  // Monday
  cal.sat_works = 1;
  EXPECT_EQ(add_business_days(friday, 1, cal), S(30, 6, 2001));  // Saturday
  EXPECT_EQ(add_business_days(friday, 2, cal), S(2, 7, 2001));
  cal.sat_works = 0;
  cal.sun_works = 1;
  EXPECT_EQ(add_business_days(friday, 1, cal), S(1, 7, 2001));   // Sunday
  EXPECT_TRUE(is_working_weekday(S(1, 7, 2001), cal));
  EXPECT_FALSE(is_working_weekday(S(30, 6, 2001), cal));
  EXPECT_EQ(add_business_days(friday, 0, cal), friday);
}

TEST(BusinessDays, AdjustmentConventions) {
  const int32_t saturday = S(30, 6, 2001);
  BusinessCalendar cal;
  EXPECT_EQ(adjust_business_day(saturday, kModifiedFollowing, cal), S(29, 6, 2001));
  EXPECT_EQ(adjust_business_day(saturday, kFollowing, cal), S(2, 7, 2001));
  EXPECT_EQ(adjust_business_day(saturday, kPreceding, cal), S(29, 6, 2001));
  EXPECT_EQ(adjust_business_day(saturday, kUnadjusted, cal), saturday);
  // Modified following stays put within the month.
  EXPECT_EQ(adjust_business_day(S(16, 6, 2001), kModifiedFollowing, cal), S(18, 6, 2001));
  // Modified following across a year end goes back.
  EXPECT_EQ(adjust_business_day(S(31, 12, 2000), kModifiedFollowing, cal), S(29, 12, 2000));

  const int32_t hols[] = {S(4, 7, 2001), S(3, 9, 2001)};
  BusinessCalendar us{hols, 2, 0, 0};
  EXPECT_EQ(adjust_business_day(S(4, 7, 2001), kFollowing, us), S(5, 7, 2001));
  EXPECT_EQ(adjust_business_day(S(4, 7, 2001), kPreceding, us), S(3, 7, 2001));
  EXPECT_EQ(adjust_business_day(S(1, 9, 2001), kFollowing, us), S(4, 9, 2001));
  EXPECT_EQ(adjust_business_day(S(5, 7, 2001), kPreceding, us), S(5, 7, 2001));
}

TEST(FindHolidayIndex, BisectsFromTheStartIndex) {
  const int32_t h[] = {100, 200, 300, 400};
  EXPECT_EQ(find_holiday_index(h, 250, 4, 0), 1);
  EXPECT_EQ(find_holiday_index(h, 300, 4, 0), 2);
  EXPECT_EQ(find_holiday_index(h, 999, 4, 0), 3);
  EXPECT_EQ(find_holiday_index(h, 100, 4, 0), 0);
  EXPECT_EQ(find_holiday_index(h, 99, 4, 0), -1);
  EXPECT_EQ(find_holiday_index(h, 250, 4, 2), -1);  // h[2] is already after
  EXPECT_EQ(find_holiday_index(h, 450, 4, 2), 3);
  EXPECT_EQ(find_holiday_index(h, 250, 4, -5), 1);
  EXPECT_EQ(find_holiday_index(h, 250, 4, 4), -2);
  EXPECT_EQ(find_holiday_index(h, 250, 0, 0), -2);
  EXPECT_EQ(find_holiday_index(h, 250, -3, 0), -2);
  EXPECT_EQ(find_holiday_index(nullptr, 250, 4, 0), -2);
}

TEST(BusinessDays, BadListsActAsEmpty) {
  BusinessCalendar null_list{nullptr, 5, 0, 0};
  BusinessCalendar negative{nullptr, -5, 0, 0};
  const int32_t h[] = {S(2, 7, 2001)};
  BusinessCalendar negative_count{h, -1, 0, 0};
  for (const BusinessCalendar& cal : {null_list, negative, negative_count}) {
    EXPECT_TRUE(is_business_day(S(2, 7, 2001), cal));
    EXPECT_EQ(add_business_days(S(29, 6, 2001), 1, cal), S(2, 7, 2001));
    EXPECT_EQ(adjust_business_day(S(30, 6, 2001), kFollowing, cal), S(2, 7, 2001));
  }
}

// Property: jumping whole weeks gives exactly what walking one business day
// at a time gives, forward and backward, from business days, weekends and
// holidays, with holidays on weekends and a repeated entry in the list.
TEST(BusinessDays, AddAgreesWithWalkingDayByDay) {
  std::vector<int32_t> hols = {S(1, 1, 2001),  S(15, 1, 2001), S(19, 2, 2001), S(13, 4, 2001),
                               S(16, 4, 2001), S(17, 4, 2001), S(28, 5, 2001), S(4, 7, 2001),
                               S(4, 7, 2001),  S(7, 7, 2001),  S(8, 7, 2001),  S(3, 9, 2001),
                               S(8, 10, 2001), S(12, 11, 2001), S(22, 11, 2001), S(24, 12, 2001),
                               S(25, 12, 2001), S(26, 12, 2001), S(31, 12, 2001)};
  std::vector<int32_t> none;
  // Without a list the five-day week is stepped by arithmetic: same answers.
  for (const std::vector<int32_t>* list : {&hols, &none}) {
    for (int32_t flags = 0; flags < 4; ++flags) {
      const bool sat = flags & 1, sun = flags & 2;
      BusinessCalendar cal{list->data(), static_cast<int32_t>(list->size()), sat, sun};
      for (int32_t start = S(1, 3, 2001); start <= S(31, 10, 2001); start += 1) {
        for (int32_t n = -60; n <= 60; ++n) {
          ASSERT_EQ(add_business_days(start, n, cal), naive_add(start, n, *list, sat, sun))
              << "start " << start << " n " << n << " flags " << flags;
        }
      }
    }
  }
}

TEST(BusinessDays, LongMovesStayInRange) {
  BusinessCalendar cal;
  // 260 business days = 52 weeks of five.
  EXPECT_EQ(add_business_days(S(2, 7, 2001), 260, cal), S(2, 7, 2001) + 364);
  EXPECT_EQ(add_business_days(S(2, 7, 2001), INT32_MAX, cal), -1);
  EXPECT_EQ(add_business_days(S(2, 7, 2001), INT32_MIN, cal), -1);
  // Absurd dates at the ends of the integer range do not wrap around.
  EXPECT_EQ(add_business_days(INT32_MAX, 3, cal), -1);
  EXPECT_EQ(add_business_days(INT32_MIN, -3, cal), -1);
}

TEST(LastBusinessDay, OfTheMonth) {
  BusinessCalendar cal;
  EXPECT_EQ(last_business_day_of_month(S(10, 6, 2001), cal), S(29, 6, 2001));
  EXPECT_EQ(last_business_day_of_month(S(10, 8, 2001), cal), S(31, 8, 2001));
  const int32_t h[] = {S(29, 6, 2001)};
  BusinessCalendar with_holiday{h, 1, 0, 0};
  EXPECT_EQ(last_business_day_of_month(S(1, 6, 2001), with_holiday), S(28, 6, 2001));
  BusinessCalendar saturday_works{nullptr, 0, 1, 0};
  EXPECT_EQ(last_business_day_of_month(S(1, 6, 2001), saturday_works), S(30, 6, 2001));

  // A month without a single business day.
  std::vector<int32_t> february;
  for (int32_t d = S(1, 2, 2001); d <= S(28, 2, 2001); ++d) february.push_back(d);
  BusinessCalendar closed{february.data(), static_cast<int32_t>(february.size()), 0, 0};
  EXPECT_EQ(last_business_day_of_month(S(14, 2, 2001), closed), -1);
  EXPECT_EQ(last_business_day_of_month(-200000, cal), -1);
}

}  // namespace
}  // namespace kbond::dates
