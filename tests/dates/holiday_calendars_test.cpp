// The built-in calendars against holidays the markets published, and the
// holiday-list builder: merging sets, ranges, repeats and bad input.
#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "dates/date_serial.h"
#include "dates/holiday_calendars.h"
#include "dates/holiday_rules.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

// Builds the list for the given sets over [from, to]; the error goes to *err.
std::vector<int32_t> build(std::vector<std::vector<int32_t>> sets, int32_t from, int32_t to,
                           int32_t* err = nullptr) {
  std::vector<const int32_t*> ptrs;
  for (auto& s : sets) {
    s.push_back(0);
    ptrs.push_back(s.data());
  }
  int32_t* list = build_holiday_list(static_cast<int32_t>(ptrs.size()), ptrs.data(), from, to, err);
  if (list == nullptr) return {-1};
  std::vector<int32_t> out(list + 1, list + 1 + list[0]);
  std::free(list);
  return out;
}

std::vector<int32_t> year_of(int32_t code, int32_t year) {
  return build({{code}}, S(1, 1, year), S(31, 12, year));
}

// Federal Reserve holiday schedule for 2001 (11 November fell on a Sunday).
TEST(Calendars, UsGovernmentSecurities2001) {
  EXPECT_EQ(year_of(1, 2001),
            (std::vector<int32_t>{S(1, 1, 2001), S(15, 1, 2001), S(19, 2, 2001), S(28, 5, 2001),
                                  S(4, 7, 2001), S(3, 9, 2001), S(8, 10, 2001), S(12, 11, 2001),
                                  S(22, 11, 2001), S(25, 12, 2001)}));
}

// NYSE holidays of 2001. The exchange also stayed shut on 11-14 September
// 2001 after the attacks; such closures are not holiday rules.
TEST(Calendars, NewYorkStockExchange2001) {
  const auto got = year_of(2, 2001);
  EXPECT_EQ(got, (std::vector<int32_t>{S(1, 1, 2001), S(15, 1, 2001), S(19, 2, 2001),
                                       S(13, 4, 2001), S(28, 5, 2001), S(4, 7, 2001),
                                       S(3, 9, 2001), S(22, 11, 2001), S(25, 12, 2001)}));
}

// Juneteenth (19 June) became a Federal Reserve holiday in 2021 and an NYSE
// holiday in 2022. The rules predate it: they do not know it.
TEST(Calendars, UsRulesDoNotKnowJuneteenth) {
  for (int32_t code : {1, 2}) {
    const auto got = year_of(code, 2023);  // 19 June 2023 was a Monday
    for (int32_t d : got) EXPECT_NE(d, S(19, 6, 2023)) << code;
  }
}

// England and Wales bank holidays 2001 (UK Debt Management Office / gov.uk).
TEST(Calendars, UnitedKingdom2001) {
  EXPECT_EQ(year_of(5, 2001),
            (std::vector<int32_t>{S(1, 1, 2001), S(13, 4, 2001), S(16, 4, 2001), S(7, 5, 2001),
                                  S(28, 5, 2001), S(27, 8, 2001), S(25, 12, 2001),
                                  S(26, 12, 2001)}));
}

TEST(Calendars, UnitedKingdomChristmasOnAWeekendAndTheMillennium) {
  // Christmas 2004 fell on a Saturday: bank holidays Monday 27 and Tuesday 28 December.
  const auto y2004 = year_of(5, 2004);
  ASSERT_GE(y2004.size(), 2u);
  EXPECT_EQ(y2004[y2004.size() - 2], S(27, 12, 2004));
  EXPECT_EQ(y2004.back(), S(28, 12, 2004));
  // 31 December 1999 was a special millennium bank holiday.
  EXPECT_EQ(year_of(5, 1999).back(), S(31, 12, 1999));
  EXPECT_EQ(year_of(5, 2000).back(), S(26, 12, 2000));
}

// In 2002 the spring bank holiday moved to Tuesday 4 June and Monday 3 June
// was added for the Golden Jubilee. The rules keep the usual last Monday of May (27 May)
// and know neither June day.
TEST(Calendars, UnitedKingdomRulesDoNotKnowTheGoldenJubilee) {
  const auto got = year_of(5, 2002);
  EXPECT_EQ(got, (std::vector<int32_t>{S(1, 1, 2002), S(29, 3, 2002), S(1, 4, 2002),
                                       S(6, 5, 2002), S(27, 5, 2002), S(26, 8, 2002),
                                       S(25, 12, 2002), S(26, 12, 2002)}));
}

// Public holidays of Hesse (Frankfurt) in 2001 plus Christmas Eve, on which
// German banks close.
TEST(Calendars, Germany2001) {
  const std::vector<int32_t> expected{S(1, 1, 2001),   S(13, 4, 2001),  S(16, 4, 2001),
                                      S(1, 5, 2001),   S(24, 5, 2001),  S(4, 6, 2001),
                                      S(14, 6, 2001),  S(3, 10, 2001),  S(24, 12, 2001),
                                      S(25, 12, 2001), S(26, 12, 2001)};
  EXPECT_EQ(year_of(3, 2001), expected);
  // Calendar 4 adds New Year's Eve (a Monday in 2001).
  std::vector<int32_t> with_eve = expected;
  with_eve.push_back(S(31, 12, 2001));
  EXPECT_EQ(year_of(4, 2001), with_eve);
}

// 31 October 2017 (500 years of the Reformation) was a one-off public
// holiday throughout Germany; the rules do not know it.
TEST(Calendars, GermanRulesDoNotKnowReformationDay2017) {
  for (int32_t d : year_of(3, 2017)) EXPECT_NE(d, S(31, 10, 2017));
}

// Japanese bank holidays 2001: Coming of Age Day on the 2nd Monday of
// January (since 2000); 11 Feb, 29 Apr, 23 Sep and 23 Dec fell on Sundays and
// moved to Monday; 5 May, 15 Sep and 3 Nov fell on Saturdays and were lost;
// 4 May (a Friday between two holidays) was a national holiday.
TEST(Calendars, Japan2001) {
  EXPECT_EQ(year_of(8, 2001),
            (std::vector<int32_t>{S(1, 1, 2001), S(2, 1, 2001), S(3, 1, 2001), S(8, 1, 2001),
                                  S(12, 2, 2001), S(20, 3, 2001), S(30, 4, 2001), S(3, 5, 2001),
                                  S(4, 5, 2001), S(20, 7, 2001), S(24, 9, 2001), S(8, 10, 2001),
                                  S(23, 11, 2001), S(24, 12, 2001), S(31, 12, 2001)}));
}

// Japan has changed its holidays since: Marine Day became the 3rd Monday of
// July (2003), the Emperor's Birthday moved to 23 February (2020), Mountain
// Day (11 August, 2016) was added. In 2024 the rules still give 23 December
// (a Monday) and miss 23 February and Monday 15 July; Marine Day on its old
// date, Saturday 20 July 2024, is not observed.
TEST(Calendars, JapaneseRulesPredateLaterChanges) {
  const auto got = year_of(8, 2024);
  auto has = [&got](int32_t d) {
    for (int32_t x : got)
      if (x == d) return true;
    return false;
  };
  EXPECT_TRUE(has(S(23, 12, 2024)));
  EXPECT_FALSE(has(S(23, 2, 2024)));
  EXPECT_FALSE(has(S(15, 7, 2024)));
  EXPECT_FALSE(has(S(12, 8, 2024)));
}

TEST(Calendars, RepeatedRuleGivesOneDate) {
  // Calendar 21 lists 16 February twice (a Friday in 2001).
  const auto got = year_of(21, 2001);
  int32_t times = 0;
  for (int32_t d : got) times += d == S(16, 2, 2001);
  EXPECT_EQ(times, 1);
  EXPECT_EQ(got.size(), 7u);
}

// Every calendar over 1950..2100: strictly ascending, inside the range, and
// never on a Saturday or Sunday (every rule moves or drops weekend dates).
TEST(Calendars, AllCalendarsGiveAscendingWeekdayHolidays) {
  for (int32_t code = 1; code <= kCalendarCount; ++code) {
    const int32_t from = S(1, 1, 1950), to = S(31, 12, 2100);
    const auto got = build({{code}}, from, to);
    ASSERT_FALSE(got.empty()) << code;
    ASSERT_NE(got[0], -1) << code;
    EXPECT_GE(got.front(), from);
    EXPECT_LE(got.back(), to);
    for (size_t i = 1; i < got.size(); ++i) ASSERT_LT(got[i - 1], got[i]) << code;
    for (int32_t d : got) {
      const int32_t wd = weekday_of(d);
      EXPECT_TRUE(wd != kSaturday && wd != kSunday) << "calendar " << code << " serial " << d;
    }
    // Each calendar's rules give at most one date per rule and year.
    EXPECT_LE(got.size(), static_cast<size_t>(calendar_rules(code).count) * 151) << code;
  }
}

TEST(BuildHolidayList, MergesSetsWithoutRepeats) {
  // UK and U.S. 2001: 1 January, 28 May and 25 December are shared.
  const auto uk = year_of(5, 2001), us = year_of(1, 2001);
  const auto both = build({{5}, {1}}, S(1, 1, 2001), S(31, 12, 2001));
  EXPECT_EQ(both.size(), uk.size() + us.size() - 3);
  for (size_t i = 1; i < both.size(); ++i) EXPECT_LT(both[i - 1], both[i]);
  // Two calendars in one set give the same union.
  EXPECT_EQ(build({{5, 1}}, S(1, 1, 2001), S(31, 12, 2001)), both);
  // Calendar 4 is calendar 3 plus 31 December.
  EXPECT_EQ(build({{3, 4}}, S(1, 1, 2001), S(31, 12, 2001)), year_of(4, 2001));
}

TEST(BuildHolidayList, RangeIsInclusive) {
  EXPECT_EQ(build({{5}}, S(13, 4, 2001), S(16, 4, 2001)),
            (std::vector<int32_t>{S(13, 4, 2001), S(16, 4, 2001)}));
  EXPECT_EQ(build({{5}}, S(14, 4, 2001), S(15, 4, 2001)), std::vector<int32_t>{});
  EXPECT_EQ(build({{5}}, S(25, 12, 2001), S(25, 12, 2001)), std::vector<int32_t>{S(25, 12, 2001)});
  // Across a year end.
  EXPECT_EQ(build({{5}}, S(20, 12, 2001), S(5, 1, 2002)),
            (std::vector<int32_t>{S(25, 12, 2001), S(26, 12, 2001), S(1, 1, 2002)}));
  // An empty set gives an empty list.
  EXPECT_EQ(build({{}}, S(1, 1, 2001), S(31, 12, 2001)), std::vector<int32_t>{});
}

TEST(BuildHolidayList, LongRangesGrowTheBuffer) {
  // Well over 1024 dates: the U.S. calendar over two centuries.
  const auto got = build({{1}}, S(1, 1, 1900), S(31, 12, 2099));
  EXPECT_GT(got.size(), 1800u);
  for (size_t i = 1; i < got.size(); ++i) ASSERT_LT(got[i - 1], got[i]);
  // Every calendar at once over the whole convertible range.
  std::vector<int32_t> all;
  for (int32_t c = 1; c <= kCalendarCount; ++c) all.push_back(c);
  int32_t err = -1;
  const auto everything = build({all}, kMinConvertibleSerial + 1, kMaxSerial - 1, &err);
  EXPECT_EQ(err, 0);
  EXPECT_GT(everything.size(), 100000u);
}

TEST(BuildHolidayList, BadInputFailsWithErrorCodes) {
  const int32_t from = S(1, 1, 2001), to = S(31, 12, 2001);
  int32_t err = 0;
  EXPECT_EQ(build({{27}}, from, to, &err), std::vector<int32_t>{-1});
  EXPECT_EQ(err, 170);
  EXPECT_EQ(build({{5}, {1, -3}}, from, to, &err), std::vector<int32_t>{-1});
  EXPECT_EQ(err, 170);
  EXPECT_EQ(build({{5, 1, 5}}, from, to, &err), std::vector<int32_t>{-1});  // calendar repeated
  EXPECT_EQ(err, 1);
  EXPECT_EQ(build({{5}}, to, from, &err), std::vector<int32_t>{-1});  // misordered
  EXPECT_EQ(err, 1);
  EXPECT_EQ(build({{5}}, kMinConvertibleSerial, to, &err), std::vector<int32_t>{-1});
  EXPECT_EQ(err, 1);
  EXPECT_EQ(build({{5}}, from, kMaxSerial, &err), std::vector<int32_t>{-1});
  EXPECT_EQ(build({{5}}, INT32_MIN, INT32_MAX, &err), std::vector<int32_t>{-1});

  const int32_t uk[] = {5, 0};
  const int32_t* sets[] = {uk};
  EXPECT_EQ(build_holiday_list(0, sets, from, to, &err), nullptr);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(build_holiday_list(-4, sets, from, to, &err), nullptr);
  EXPECT_EQ(build_holiday_list(201, sets, from, to, &err), nullptr);
  EXPECT_EQ(build_holiday_list(1, nullptr, from, to, &err), nullptr);
  const int32_t* null_set[] = {nullptr};
  EXPECT_EQ(build_holiday_list(1, null_set, from, to, &err), nullptr);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(build_holiday_list(1, null_set, from, to, nullptr), nullptr);  // no error pointer

  // 200 sets is the most allowed.
  std::vector<const int32_t*> many(200, uk);
  int32_t* list = build_holiday_list(200, many.data(), from, to, &err);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(err, 0);
  EXPECT_EQ(list[0], 8);
  std::free(list);
}

}  // namespace
}  // namespace kbond::dates
