// The holiday-rule evaluator and the Easter computus.
#include "dates/holiday_rules.h"

#include <cmath>

#include "dates/holiday_calendars.h"
#include "dates/month_arithmetic.h"

namespace kbond::dates {
namespace {

// Japan's equinox days follow the astronomical equinox; the mean tropical
// year from a 1992 base (serials of the 1992 equinox instants, plus 9 hours
// for Japan Standard Time) tracks them closely enough.
constexpr double kTropicalYear = 365.24284;
constexpr double kSpringEquinox1992 = 33682.36666666667;
constexpr double kAutumnEquinox1992 = 33868.779861111114;
constexpr double kJapanOffset = 0.375;

int32_t weekdays_only(int32_t date) {
  const int32_t wd = weekday_of(date);
  return (wd == kSaturday || wd == kSunday) ? 0 : date;
}

int32_t sunday_to_monday(int32_t date) {
  switch (weekday_of(date)) {
    case kSunday: return date + 1;
    case kSaturday: return 0;
    default: return date;
  }
}

int32_t equinox(int32_t year, bool autumn) {
  const double base = autumn ? kAutumnEquinox1992 : kSpringEquinox1992;
  return static_cast<int32_t>(std::floor(kTropicalYear * (year - 1992) + base + kJapanOffset));
}

}  // namespace

int32_t good_friday(int32_t year) noexcept {
  const int32_t h = year / 100;
  const int32_t w = (year / 400 + year / 4 - h + year) % 7;
  const int32_t golden = year % 19 + 1;
  int32_t epact = ((14 - h) * 8 / 25 - 11 * golden - h / 4 + h - 9) % 30;
  if (epact < 0) epact += 30;
  if (epact == 29 || (epact == 28 && golden > 11)) --epact;
  int32_t k = (4 - epact - w) % 7;
  if (k < 0) k += 7;
  const int32_t march_21 = date_to_serial(21, 3, year);
  return march_21 < 0 ? 0 : march_21 + k + epact - 1;
}

int32_t holiday_in_year(const HolidayRule& rule, int32_t year) noexcept {
  // Years below 200 would be read as two-digit years; beyond the last
  // serial no date exists.
  if (year < 200 || year > 6896) return 0;

  switch (rule.kind) {
    case RuleKind::kNthWeekday:
      return nth_weekday_of_month(rule.n, rule.weekday, rule.month, year, 0);
    case RuleKind::kLastWeekday: {
      const int32_t last = last_weekday_of_month(rule.weekday, rule.month, year, 0);
      return last > 0 ? last + rule.offset : 0;
    }
    case RuleKind::kEaster: {
      const int32_t friday = good_friday(year);
      return friday > 0 ? friday + rule.offset : 0;
    }
    case RuleKind::kEquinox: {
      const int32_t day = equinox(year, rule.n != 0);
      return day > 0 ? sunday_to_monday(day) : 0;
    }
    case RuleKind::kNthMondayFrom2000:
      if (year >= 2000) return nth_weekday_of_month(rule.n, kMonday, rule.month, year, 0);
      break;
    default:
      break;
  }

  // The remaining kinds start from a fixed day and month.
  const int32_t date = date_to_serial(rule.day, rule.month, year);
  if (date <= 0) return 0;
  const int32_t wd = weekday_of(date);
  switch (rule.kind) {
    case RuleKind::kWeekdaysOnly:
      return weekdays_only(date);
    case RuleKind::kSundayToMonday:
    case RuleKind::kNthMondayFrom2000:  // before 2000
      return sunday_to_monday(date);
    case RuleKind::kWeekendToMonday:
      return wd == kSunday ? date + 1 : wd == kSaturday ? date + 2 : date;
    case RuleKind::kNearestWeekday:
      return wd == kSunday ? date + 1 : wd == kSaturday ? date - 1 : date;
    case RuleKind::kOnce:
      return year == rule.year ? date : 0;
    case RuleKind::kWeekendToTuesday:
      return wd == kSunday ? date + 2 : wd == kSaturday ? date + 3 : date;
    case RuleKind::kWeekendPlusTwo:
      return (wd == kSaturday || wd == kSunday) ? date + 2 : date;
    case RuleKind::kTuesdayToFriday:
      return (wd == kSaturday || wd == kSunday || wd == kMonday) ? 0 : date;
    case RuleKind::kOnlyOnFriday:
      return wd == kFriday ? date : 0;
    case RuleKind::kEveryFifthYear:
      return year % 5 == 0 ? weekdays_only(date) : 0;
    case RuleKind::kFirstFridayOnOrAfter:
      return date + (kFriday - wd + 7) % 7;
    default:
      return 0;
  }
}

}  // namespace kbond::dates
