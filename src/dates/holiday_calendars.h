// The library's holiday rules and its 26 built-in calendars. A calendar code
// (1..26) names a fixed list of rules; each rule gives one holiday of a year.
#pragma once
#include <cstdint>

namespace kbond::dates {

inline constexpr int32_t kCalendarCount = 26;

struct HolidayRule;  // holiday_rules.h

// The rules of calendar `code` (1..26) in their listed order; {nullptr, 0}
// for any other code.
struct CalendarRules {
  const HolidayRule* rules = nullptr;
  int32_t count = 0;
};
CalendarRules calendar_rules(int32_t code) noexcept;

int32_t good_friday(int32_t year) noexcept;

// Holidays of all the given sets of calendar codes between `from` and `to`
// (inclusive). `code_lists` holds n sets (1..200), each a zero-terminated
// array of codes 1..26. Returns a malloc'd array: element 0 the count,
// elements 1..count ascending serials without repeats; the caller frees it
// with free(). NULL on failure; `error` (may be null) then receives 170 for
// an unknown code, 1 for any other failure.
int32_t* build_holiday_list(int32_t n, const int32_t* const* code_lists, int32_t from, int32_t to,
                            int32_t* error = nullptr) noexcept;

}  // namespace kbond::dates
