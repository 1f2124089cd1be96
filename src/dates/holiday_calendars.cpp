// The 26 built-in holiday calendars, each a constant list of rule values, and
// the builder that turns sets of calendar codes into one sorted holiday list.
#include "dates/holiday_calendars.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "dates/date_serial.h"
#include "dates/holiday_rules.h"
#include "k_bond.h"

namespace kbond::dates {
namespace {

constexpr int8_t Jan = 1, Feb = 2, Mar = 3, Apr = 4, May = 5, Jun = 6, Jul = 7, Aug = 8,
                 Sep = 9, Oct = 10, Nov = 11, Dec = 12;

// Shorthands for the table below.
constexpr HolidayRule wd(int8_t d, int8_t m) { return weekdays_only_rule(d, m); }
constexpr HolidayRule sun_mon(int8_t d, int8_t m) { return sunday_to_monday_rule(d, m); }
constexpr HolidayRule wkend_mon(int8_t d, int8_t m) { return weekend_to_monday_rule(d, m); }
constexpr HolidayRule nearest(int8_t d, int8_t m) { return nearest_weekday_rule(d, m); }
constexpr HolidayRule gf(int16_t offset) { return easter_rule(offset); }
constexpr HolidayRule mon(int8_t n, int8_t m) { return nth_weekday_rule(n, kMonday, m); }

// Good Friday offsets: -45 Shrove Tuesday, -1 Maundy Thursday, 0 Good Friday,
// +3 Easter Monday, +28 Great Prayer Day, +41 Ascension Day, +42 the Saturday
// after it, +52 Whit Monday, +62 Corpus Christi.

// 1: U.S. government securities (Federal Reserve holidays).
constexpr HolidayRule kCalendar1[] = {
    sun_mon(1, Jan), mon(3, Jan), mon(3, Feb), last_weekday_rule(kMonday, May), sun_mon(4, Jul),
    mon(1, Sep), mon(2, Oct), sun_mon(11, Nov), nth_weekday_rule(4, kThursday, Nov),
    sun_mon(25, Dec)};
// 2: New York Stock Exchange.
constexpr HolidayRule kCalendar2[] = {
    sun_mon(1, Jan), mon(3, Jan), mon(3, Feb), gf(0), last_weekday_rule(kMonday, May),
    nearest(4, Jul), mon(1, Sep), nth_weekday_rule(4, kThursday, Nov), nearest(25, Dec)};
// 3: Germany (Frankfurt banks).
constexpr HolidayRule kCalendar3[] = {
    wd(1, Jan), wd(1, May), gf(0), gf(3), gf(41), gf(52), gf(62), wd(3, Oct), wd(24, Dec),
    wd(25, Dec), wd(26, Dec)};
// 4: Germany with New Year's Eve (Frankfurt exchange).
constexpr HolidayRule kCalendar4[] = {
    wd(1, Jan), wd(1, May), gf(0), gf(3), gf(41), gf(52), gf(62), wd(3, Oct), wd(24, Dec),
    wd(25, Dec), wd(26, Dec), wd(31, Dec)};
// 5: United Kingdom (England and Wales bank holidays).
constexpr HolidayRule kCalendar5[] = {
    wkend_mon(1, Jan), gf(0), gf(3), mon(1, May), last_weekday_rule(kMonday, May),
    last_weekday_rule(kMonday, Aug), weekend_to_tuesday_rule(25, Dec), wkend_mon(26, Dec),
    once_rule(31, Dec, 1999)};
// 6: Switzerland.
constexpr HolidayRule kCalendar6[] = {
    wd(1, Jan), wd(2, Jan), gf(0), gf(3), wd(1, May), gf(41), gf(52), wd(1, Aug),
    wd(25, Dec), wd(26, Dec)};
// 7: Canada.
constexpr HolidayRule kCalendar7[] = {
    wkend_mon(1, Jan), gf(0), last_weekday_rule(kMonday, May, -7), wkend_mon(1, Jul),
    mon(1, Aug), mon(1, Sep), mon(2, Oct), wkend_mon(11, Nov), weekend_to_tuesday_rule(25, Dec),
    wkend_mon(26, Dec)};
// 8: Japan (Tokyo banks).
constexpr HolidayRule kCalendar8[] = {
    wd(1, Jan), wd(2, Jan), wd(3, Jan), nth_monday_from_2000_rule(2, Jan, 15), sun_mon(11, Feb),
    spring_equinox_rule(), sun_mon(29, Apr), sun_mon(3, May), tuesday_to_friday_rule(4, May),
    sun_mon(5, May), sun_mon(20, Jul), sun_mon(15, Sep), autumn_equinox_rule(),
    nth_monday_from_2000_rule(2, Oct, 10), sun_mon(3, Nov), sun_mon(23, Nov), sun_mon(23, Dec),
    wd(31, Dec)};
// 9: France.
constexpr HolidayRule kCalendar9[] = {
    wd(1, Jan), gf(3), wd(1, May), wd(8, May), gf(41), gf(52), wd(14, Jul), wd(15, Aug),
    wd(1, Nov), wd(11, Nov), wd(25, Dec)};
// 10: Italy.
constexpr HolidayRule kCalendar10[] = {
    wd(1, Jan), wd(6, Jan), gf(3), wd(25, Apr), wd(1, May), wd(15, Aug), wd(1, Nov),
    wd(8, Dec), wd(25, Dec), wd(26, Dec)};
// 11: Netherlands (Liberation Day every fifth year).
constexpr HolidayRule kCalendar11[] = {
    wd(1, Jan), gf(0), gf(3), wd(30, Apr), gf(41), gf(52), every_fifth_year_rule(5, May),
    wd(25, Dec), wd(26, Dec)};
// 12: Finland.
constexpr HolidayRule kCalendar12[] = {
    wd(1, Jan), wd(6, Jan), gf(0), gf(3), wd(1, May), gf(41), first_friday_on_or_after_rule(19, Jun),
    wd(6, Dec), wd(24, Dec), wd(25, Dec), wd(26, Dec)};
// 13: Sweden.
constexpr HolidayRule kCalendar13[] = {
    wd(1, Jan), wd(6, Jan), gf(0), gf(3), wd(1, May), gf(41), gf(52),
    first_friday_on_or_after_rule(19, Jun), wd(24, Dec), wd(25, Dec), wd(26, Dec), wd(31, Dec)};
// 14: Australia (Sydney).
constexpr HolidayRule kCalendar14[] = {
    wkend_mon(1, Jan), wkend_mon(26, Jan), gf(0), gf(3), wkend_mon(25, Apr), mon(2, Jun),
    mon(1, Aug), mon(1, Oct), weekend_to_tuesday_rule(25, Dec), wkend_mon(26, Dec)};
// 15: Belgium.
constexpr HolidayRule kCalendar15[] = {
    wkend_mon(1, Jan), gf(3), wd(1, May), gf(41), gf(42), gf(52), sun_mon(21, Jul),
    wkend_mon(15, Aug), wkend_mon(1, Nov), sun_mon(11, Nov), wd(25, Dec), sun_mon(26, Dec)};
// 16: Spain (Madrid).
constexpr HolidayRule kCalendar16[] = {
    wd(1, Jan), wd(6, Jan), only_on_friday_rule(19, Mar), gf(-1), gf(0), wd(1, May),
    wd(2, May), wd(15, May), only_on_friday_rule(25, Jul), wd(15, Aug), once_rule(9, Sep, 1997),
    wd(12, Oct), wd(1, Nov), wd(9, Nov), wd(6, Dec), wd(8, Dec), wd(25, Dec)};
// 17: New Year's Day and Christmas Day only.
constexpr HolidayRule kCalendar17[] = {wd(1, Jan), wd(25, Dec)};
// 18: Czech Republic.
constexpr HolidayRule kCalendar18[] = {
    wd(1, Jan), gf(3), wd(1, May), wd(8, May), wd(5, Jul), wd(6, Jul), wd(28, Oct),
    wd(24, Dec), wd(25, Dec), wd(26, Dec)};
// 19: South Africa.
constexpr HolidayRule kCalendar19[] = {
    sun_mon(1, Jan), once_rule(3, Jan, 2000), sun_mon(21, Mar), gf(0), gf(3), sun_mon(27, Apr),
    sun_mon(1, May), sun_mon(16, Jun), sun_mon(9, Aug), sun_mon(24, Sep), sun_mon(16, Dec),
    wd(25, Dec), sun_mon(26, Dec), once_rule(31, Dec, 1999)};
// 20: Iceland.
constexpr HolidayRule kCalendar20[] = {
    wd(1, Jan), gf(-1), gf(0), gf(3), gf(41), gf(52), wd(17, Jun), mon(1, Aug), wd(25, Dec)};
// 21: Lithuania. The 16 February rule is listed twice; the builder drops the repeat.
constexpr HolidayRule kCalendar21[] = {
    wd(1, Jan), wd(16, Feb), wd(16, Feb), gf(3), wd(6, Jul), wd(1, Nov), wd(25, Dec),
    wd(26, Dec)};
// 22: New Zealand.
constexpr HolidayRule kCalendar22[] = {
    wkend_mon(1, Jan), weekend_plus_two_rule(2, Jan), wd(6, Feb), gf(0), gf(3), wd(25, Apr),
    mon(1, Jun), mon(4, Oct), weekend_to_tuesday_rule(25, Dec), wkend_mon(26, Dec)};
// 23: Norway.
constexpr HolidayRule kCalendar23[] = {
    wd(1, Jan), gf(-1), gf(0), gf(3), wd(1, May), gf(41), wd(17, May), gf(52), wd(25, Dec),
    wd(26, Dec)};
// 24: Austria.
constexpr HolidayRule kCalendar24[] = {
    wd(1, Jan), wd(6, Jan), gf(0), gf(3), wd(1, May), gf(41), gf(52), gf(62), wd(15, Aug),
    wd(26, Oct), wd(1, Nov), wd(8, Dec), wd(25, Dec), wd(26, Dec)};
// 25: Portugal.
constexpr HolidayRule kCalendar25[] = {
    wd(1, Jan), gf(-45), gf(0), wd(25, Apr), wd(1, May), wd(10, Jun), gf(62), wd(15, Aug),
    wd(5, Oct), wd(1, Nov), wd(1, Dec), wd(8, Dec), wd(24, Dec), wd(25, Dec),
    once_rule(31, Dec, 1999)};
// 26: Denmark.
constexpr HolidayRule kCalendar26[] = {
    wd(1, Jan), gf(-1), gf(0), gf(3), gf(28), gf(41), gf(52), wd(5, Jun), wd(24, Dec),
    wd(25, Dec), wd(26, Dec)};

#define KBOND_CALENDAR(rules) CalendarRules{rules, static_cast<int32_t>(std::size(rules))}
constexpr CalendarRules kCalendars[kCalendarCount] = {
    KBOND_CALENDAR(kCalendar1),  KBOND_CALENDAR(kCalendar2),  KBOND_CALENDAR(kCalendar3),
    KBOND_CALENDAR(kCalendar4),  KBOND_CALENDAR(kCalendar5),  KBOND_CALENDAR(kCalendar6),
    KBOND_CALENDAR(kCalendar7),  KBOND_CALENDAR(kCalendar8),  KBOND_CALENDAR(kCalendar9),
    KBOND_CALENDAR(kCalendar10), KBOND_CALENDAR(kCalendar11), KBOND_CALENDAR(kCalendar12),
    KBOND_CALENDAR(kCalendar13), KBOND_CALENDAR(kCalendar14), KBOND_CALENDAR(kCalendar15),
    KBOND_CALENDAR(kCalendar16), KBOND_CALENDAR(kCalendar17), KBOND_CALENDAR(kCalendar18),
    KBOND_CALENDAR(kCalendar19), KBOND_CALENDAR(kCalendar20), KBOND_CALENDAR(kCalendar21),
    KBOND_CALENDAR(kCalendar22), KBOND_CALENDAR(kCalendar23), KBOND_CALENDAR(kCalendar24),
    KBOND_CALENDAR(kCalendar25), KBOND_CALENDAR(kCalendar26)};
#undef KBOND_CALENDAR

// A set can name each calendar at most once, so one year of a set never
// yields more dates than all calendars' rules together.
constexpr int32_t total_rule_count() {
  int32_t n = 0;
  for (const CalendarRules& c : kCalendars) n += c.count;
  return n;
}
constexpr int32_t kMaxRulesPerSet = total_rule_count();

constexpr int32_t kMaxSets = 200;
constexpr int32_t kBufferStep = 1024;

// Growable heap array of serials; frees itself unless released.
struct SerialBuffer {
  int32_t* data = nullptr;
  int32_t size = 0;
  int32_t capacity = 0;

  SerialBuffer() = default;
  SerialBuffer(const SerialBuffer&) = delete;
  SerialBuffer& operator=(const SerialBuffer&) = delete;
  ~SerialBuffer() { std::free(data); }

  bool push(int32_t value) {
    if (size == capacity) {
      const int64_t grown = static_cast<int64_t>(capacity) + kBufferStep;
      if (grown > INT32_MAX / static_cast<int64_t>(sizeof(int32_t))) return false;
      void* p = std::realloc(data, static_cast<size_t>(grown) * sizeof(int32_t));
      if (p == nullptr) return false;
      data = static_cast<int32_t*>(p);
      capacity = static_cast<int32_t>(grown);
    }
    data[size++] = value;
    return true;
  }
};

// Reads one zero-terminated set of codes into `codes`; returns the number of
// codes, or a negative error (-170 unknown code, -1 repeated calendar).
int32_t read_code_set(const int32_t* set, int32_t codes[kCalendarCount]) {
  bool seen[kCalendarCount + 1] = {};
  int32_t n = 0;
  for (const int32_t* p = set; *p != 0; ++p) {
    const int32_t code = *p;
    if (code < 1 || code > kCalendarCount) return -KVL_ERR_CALENDAR;
    if (seen[code]) return -KVL_ERR_INVALID;
    seen[code] = true;
    codes[n++] = code;
  }
  return n;
}

// Appends the holidays of one set in [from, to], year by year, ascending.
bool append_set(const int32_t* codes, int32_t n_codes, int32_t first_year, int32_t last_year,
                int32_t from, int32_t to, SerialBuffer& out) {
  int32_t year_dates[kMaxRulesPerSet];
  int32_t last_kept = 0;
  for (int32_t year = first_year; year <= last_year; ++year) {
    int32_t n = 0;
    for (int32_t c = 0; c < n_codes; ++c) {
      const CalendarRules cal = kCalendars[codes[c] - 1];
      for (int32_t r = 0; r < cal.count; ++r) {
        const int32_t date = holiday_in_year(cal.rules[r], year);
        if (date > 0) year_dates[n++] = date;
      }
    }
    std::sort(year_dates, year_dates + n);
    for (int32_t i = 0; i < n; ++i) {
      const int32_t date = year_dates[i];
      // A holiday moved into the next year is met again there: keep it once.
      if (date < from || date > to || date == last_kept) continue;
      if (!out.push(date)) return false;
      last_kept = date;
    }
  }
  return true;
}

}  // namespace

CalendarRules calendar_rules(int32_t code) noexcept {
  if (code < 1 || code > kCalendarCount) return {};
  return kCalendars[code - 1];
}

int32_t* build_holiday_list(int32_t n, const int32_t* const* code_lists, int32_t from, int32_t to,
                            int32_t* error) noexcept {
  int32_t local_error = 0;
  int32_t& err = error ? *error : local_error;
  err = KVL_ERR_INVALID;
  if (n < 1 || n > kMaxSets || code_lists == nullptr) return nullptr;

  // Validate every set before any work.
  for (int32_t s = 0; s < n; ++s) {
    int32_t codes[kCalendarCount];
    if (code_lists[s] == nullptr) return nullptr;
    const int32_t count = read_code_set(code_lists[s], codes);
    if (count < 0) {
      err = -count;
      return nullptr;
    }
  }

  // The range must be ordered and its neighbours convertible.
  if (to < from || static_cast<int64_t>(from) - 1 < kMinConvertibleSerial ||
      static_cast<int64_t>(to) + 1 > kMaxSerial)
    return nullptr;
  int32_t d, m, first_year, last_year;
  if (serial_to_date(from - 1, &d, &m, &first_year) != 0 ||
      serial_to_date(to + 1, &d, &m, &last_year) != 0)
    return nullptr;

  SerialBuffer all;
  for (int32_t s = 0; s < n; ++s) {
    int32_t codes[kCalendarCount];
    const int32_t count = read_code_set(code_lists[s], codes);
    if (!append_set(codes, count, first_year, last_year, from, to, all)) return nullptr;
  }

  // Merge the sets: one ascending list without repeats.
  std::sort(all.data, all.data + all.size);
  const int32_t unique = static_cast<int32_t>(std::unique(all.data, all.data + all.size) - all.data);

  int32_t* result = static_cast<int32_t*>(std::malloc((static_cast<size_t>(unique) + 1) * sizeof(int32_t)));
  if (result == nullptr) return nullptr;
  result[0] = unique;
  std::copy(all.data, all.data + unique, result + 1);
  err = 0;
  return result;
}

}  // namespace kbond::dates
