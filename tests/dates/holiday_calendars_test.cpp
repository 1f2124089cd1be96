// The built-in calendars against holidays the markets published, and the
// holiday-list builder's bad input.
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

// Holidays of 2001 as the markets published them.
TEST(Calendars, Published2001Holidays) {
  const struct {
    const char* source;
    int32_t code;
    std::vector<int32_t> holidays;
  } calendars[] = {
      // 11 November fell on a Sunday.
      {"Federal Reserve", 1,
       {S(1, 1, 2001), S(15, 1, 2001), S(19, 2, 2001), S(28, 5, 2001), S(4, 7, 2001),
        S(3, 9, 2001), S(8, 10, 2001), S(12, 11, 2001), S(22, 11, 2001), S(25, 12, 2001)}},
      // Without the closures of 11-14 September, which are not holiday rules.
      {"NYSE", 2,
       {S(1, 1, 2001), S(15, 1, 2001), S(19, 2, 2001), S(13, 4, 2001), S(28, 5, 2001),
        S(4, 7, 2001), S(3, 9, 2001), S(22, 11, 2001), S(25, 12, 2001)}},
      {"England and Wales bank holidays (gov.uk)", 5,
       {S(1, 1, 2001), S(13, 4, 2001), S(16, 4, 2001), S(7, 5, 2001), S(28, 5, 2001),
        S(27, 8, 2001), S(25, 12, 2001), S(26, 12, 2001)}},
      {"Hesse public holidays and Christmas Eve", 3,
       {S(1, 1, 2001), S(13, 4, 2001), S(16, 4, 2001), S(1, 5, 2001), S(24, 5, 2001),
        S(4, 6, 2001), S(14, 6, 2001), S(3, 10, 2001), S(24, 12, 2001), S(25, 12, 2001),
        S(26, 12, 2001)}},
      // Sunday holidays move to Monday, Saturday ones are lost; 4 May lies
      // between two holidays.
      {"Japanese bank holidays", 8,
       {S(1, 1, 2001), S(2, 1, 2001), S(3, 1, 2001), S(8, 1, 2001), S(12, 2, 2001),
        S(20, 3, 2001), S(30, 4, 2001), S(3, 5, 2001), S(4, 5, 2001), S(20, 7, 2001),
        S(24, 9, 2001), S(8, 10, 2001), S(23, 11, 2001), S(24, 12, 2001), S(31, 12, 2001)}},
  };
  for (const auto& c : calendars) EXPECT_EQ(year_of(c.code, 2001), c.holidays) << c.source;
  // Christmas 2004 on a Saturday: Monday 27 and Tuesday 28 December; the
  // millennium holiday 31 December 1999.
  const auto uk2004 = year_of(5, 2004);
  EXPECT_EQ(uk2004[uk2004.size() - 2], S(27, 12, 2004));
  EXPECT_EQ(uk2004.back(), S(28, 12, 2004));
  EXPECT_EQ(year_of(5, 1999).back(), S(31, 12, 1999));
  EXPECT_EQ(year_of(5, 2000).back(), S(26, 12, 2000));
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

TEST(BuildHolidayList, BadInputFailsWithErrorCodes) {
  const int32_t from = S(1, 1, 2001), to = S(31, 12, 2001);
  const struct {
    std::vector<std::vector<int32_t>> sets;
    int32_t from, to, err;
  } bad[] = {
      {{{27}}, from, to, 170},     {{{5}, {1, -3}}, from, to, 170},
      {{{5, 1, 5}}, from, to, 1},  // calendar repeated
      {{{5}}, to, from, 1},        {{{5}}, kMinConvertibleSerial, to, 1},
      {{{5}}, INT32_MIN, INT32_MAX, 1},
  };
  for (const auto& b : bad) {
    int32_t err = 0;
    EXPECT_EQ(build(b.sets, b.from, b.to, &err), std::vector<int32_t>{-1});
    EXPECT_EQ(err, b.err);
  }
  const int32_t uk[] = {5, 0};
  const int32_t* sets[] = {uk};
  const int32_t* null_set[] = {nullptr};
  int32_t err = 0;
  for (int32_t n : {0, 201}) EXPECT_EQ(build_holiday_list(n, sets, from, to, &err), nullptr);
  EXPECT_EQ(build_holiday_list(1, nullptr, from, to, &err), nullptr);
  EXPECT_EQ(build_holiday_list(1, null_set, from, to, nullptr), nullptr);  // no error pointer
  EXPECT_EQ(err, 1);
  std::vector<const int32_t*> many(200, uk);  // 200 sets is the most allowed
  int32_t* list = build_holiday_list(200, many.data(), from, to, &err);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list[0], 8);
  std::free(list);
}

}  // namespace
}  // namespace kbond::dates
