// Holiday rules as data. A rule is a small value - a kind plus its day,
// month, n-th, weekday, offset or year - and one evaluator turns a rule and a
// year into that year's holiday (a date serial), or 0 when the holiday does
// not fall, or is not observed, in that year.
//
//   constexpr HolidayRule kThanksgiving = nth_weekday_rule(4, kThursday, 11);
//   int32_t d = holiday_in_year(kThanksgiving, 2001);   // 22 November 2001
#pragma once
#include <cstdint>

#include "dates/date_serial.h"

namespace kbond::dates {

enum class RuleKind : uint8_t {
  kWeekdaysOnly,          // the day and month; none on Saturday or Sunday
  kSundayToMonday,        // a Sunday moves to Monday; none on Saturday
  kWeekendToMonday,       // Sunday +1, Saturday +2: observed on the Monday
  kNearestWeekday,        // Sunday to Monday, Saturday to Friday
  kNthWeekday,            // the n-th weekday of the month
  kLastWeekday,           // the last weekday of the month, plus an offset in days
  kEaster,                // Good Friday plus an offset in days
  kOnce,                  // a fixed date in one year only
  kWeekendToTuesday,      // Sunday +2, Saturday +3 (paired with a weekend-to-Monday 26 December)
  kWeekendPlusTwo,        // Saturday or Sunday moves two days later (paired with 1 January)
  kTuesdayToFriday,       // none on Saturday, Sunday or Monday
  kOnlyOnFriday,          // observed only when it falls on a Friday
  kEveryFifthYear,        // only in years divisible by 5, none on Saturday or Sunday
  kFirstFridayOnOrAfter,  // the first Friday on or after the day (midsummer eve)
  kEquinox,               // n = 0 the spring, n = 1 the autumn equinox; Sunday to Monday
  kNthMondayFrom2000,     // from 2000 the n-th Monday of the month; before, the fixed
                          // day with Sunday to Monday and none on Saturday
};

struct HolidayRule {
  RuleKind kind;
  int8_t day = 0;
  int8_t month = 0;
  int8_t n = 0;        // n-th weekday; equinox: 0 spring, 1 autumn
  int8_t weekday = 0;  // 1 = Saturday ... 7 = Friday
  int16_t offset = 0;  // days after Good Friday or after the last weekday
  int16_t year = 0;    // kOnce: the only year
};

// That year's holiday under the rule, or 0.
int32_t holiday_in_year(const HolidayRule& rule, int32_t year) noexcept;

constexpr HolidayRule weekdays_only_rule(int8_t day, int8_t month) {
  return {RuleKind::kWeekdaysOnly, day, month};
}
constexpr HolidayRule sunday_to_monday_rule(int8_t day, int8_t month) {
  return {RuleKind::kSundayToMonday, day, month};
}
constexpr HolidayRule weekend_to_monday_rule(int8_t day, int8_t month) {
  return {RuleKind::kWeekendToMonday, day, month};
}
constexpr HolidayRule nearest_weekday_rule(int8_t day, int8_t month) {
  return {RuleKind::kNearestWeekday, day, month};
}
constexpr HolidayRule nth_weekday_rule(int8_t n, int8_t weekday, int8_t month) {
  return {RuleKind::kNthWeekday, 0, month, n, weekday};
}
constexpr HolidayRule last_weekday_rule(int8_t weekday, int8_t month, int16_t offset = 0) {
  return {RuleKind::kLastWeekday, 0, month, 0, weekday, offset};
}
constexpr HolidayRule easter_rule(int16_t days_after_good_friday) {
  return {RuleKind::kEaster, 0, 0, 0, 0, days_after_good_friday};
}
constexpr HolidayRule once_rule(int8_t day, int8_t month, int16_t year) {
  return {RuleKind::kOnce, day, month, 0, 0, 0, year};
}
constexpr HolidayRule weekend_to_tuesday_rule(int8_t day, int8_t month) {
  return {RuleKind::kWeekendToTuesday, day, month};
}
constexpr HolidayRule weekend_plus_two_rule(int8_t day, int8_t month) {
  return {RuleKind::kWeekendPlusTwo, day, month};
}
constexpr HolidayRule tuesday_to_friday_rule(int8_t day, int8_t month) {
  return {RuleKind::kTuesdayToFriday, day, month};
}
constexpr HolidayRule only_on_friday_rule(int8_t day, int8_t month) {
  return {RuleKind::kOnlyOnFriday, day, month};
}
constexpr HolidayRule every_fifth_year_rule(int8_t day, int8_t month) {
  return {RuleKind::kEveryFifthYear, day, month};
}
constexpr HolidayRule first_friday_on_or_after_rule(int8_t day, int8_t month) {
  return {RuleKind::kFirstFridayOnOrAfter, day, month};
}
constexpr HolidayRule spring_equinox_rule() { return {RuleKind::kEquinox, 0, 3, 0}; }
constexpr HolidayRule autumn_equinox_rule() { return {RuleKind::kEquinox, 0, 9, 1}; }
constexpr HolidayRule nth_monday_from_2000_rule(int8_t n, int8_t month, int8_t day_before_2000) {
  return {RuleKind::kNthMondayFrom2000, day_before_2000, month, n, kMonday};
}

}  // namespace kbond::dates
