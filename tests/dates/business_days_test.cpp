// Business days over a holiday list and the two weekend flags.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "dates/business_days.h"
#include "dates/date_serial.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

// Independent reference: walk one calendar day at a time, checking the
// weekday and scanning the whole list.
int32_t naive_add(int32_t date, int32_t n, const std::vector<int32_t>& hols, bool sat, bool sun) {
  for (int32_t left = std::abs(n); left > 0;) {
    date += n > 0 ? 1 : -1;
    const int32_t wd = weekday_of(date);
    if ((wd == kSaturday && !sat) || (wd == kSunday && !sun)) continue;
    if (std::find(hols.begin(), hols.end(), date) == hols.end()) --left;
  }
  return date;
}

TEST(BusinessDays, AdjustmentConventions) {
  const int32_t saturday = S(30, 6, 2001), hols[] = {S(4, 7, 2001), S(3, 9, 2001)};
  const BusinessCalendar cal, us{hols, 2, 0, 0};
  EXPECT_EQ(adjust_business_day(saturday, kModifiedFollowing, cal), S(29, 6, 2001));
  EXPECT_EQ(adjust_business_day(saturday, kFollowing, cal), S(2, 7, 2001));
  EXPECT_EQ(adjust_business_day(S(16, 6, 2001), kModifiedFollowing, cal), S(18, 6, 2001));
  EXPECT_EQ(adjust_business_day(S(31, 12, 2000), kModifiedFollowing, cal), S(29, 12, 2000));
  EXPECT_EQ(adjust_business_day(S(4, 7, 2001), kPreceding, us), S(3, 7, 2001));
  // A NULL list or a negative count acts as an empty list.
  const BusinessCalendar null_list{nullptr, 5, 0, 0}, negative{hols, -1, 0, 0};
  for (const BusinessCalendar& bad : {null_list, negative}) {
    EXPECT_TRUE(is_business_day(S(4, 7, 2001), bad));
    EXPECT_EQ(adjust_business_day(S(4, 7, 2001), kFollowing, bad), S(4, 7, 2001));
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
  const int32_t h[] = {S(29, 6, 2001)};
  EXPECT_EQ(last_business_day_of_month(S(10, 6, 2001), BusinessCalendar{}), S(29, 6, 2001));
  EXPECT_EQ(last_business_day_of_month(S(1, 6, 2001), BusinessCalendar{h, 1, 0, 0}),
            S(28, 6, 2001));
  EXPECT_EQ(last_business_day_of_month(S(1, 6, 2001), BusinessCalendar{nullptr, 0, 1, 0}),
            S(30, 6, 2001));  // Saturday works
  std::vector<int32_t> february;  // a month without a single business day
  for (int32_t d = S(1, 2, 2001); d <= S(28, 2, 2001); ++d) february.push_back(d);
  BusinessCalendar closed{february.data(), static_cast<int32_t>(february.size()), 0, 0};
  EXPECT_EQ(last_business_day_of_month(S(14, 2, 2001), closed), -1);
  EXPECT_EQ(last_business_day_of_month(-200000, BusinessCalendar{}), -1);
}

}  // namespace
}  // namespace kbond::dates
