// date_demo: a tour of the date library - serials, month arithmetic, day
// counts and the UK and U.S. holidays of the current year.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "dates/business_days.h"
#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/holiday_calendars.h"
#include "dates/month_arithmetic.h"

namespace {

using namespace kbond::dates;

constexpr const char* kWeekdayNames[8] = {"", "Sat", "Sun", "Mon", "Tue", "Wed", "Thu", "Fri"};
constexpr const char* kMonthNames[13] = {"",    "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// "Mon 15 Jan 2001"; "invalid" for a serial that does not convert.
const char* format_date(int32_t serial, char* buf, size_t size) {
  int32_t d, m, y;
  if (serial_to_date(serial, &d, &m, &y) != 0) {
    std::snprintf(buf, size, "invalid (%d)", serial);
  } else {
    std::snprintf(buf, size, "%s %2d %s %d", kWeekdayNames[weekday_of(serial)], d, kMonthNames[m], y);
  }
  return buf;
}

// Serial of today's date (UTC): 1 January 1970 is serial 25568.
int32_t today_serial() {
  const auto now = std::chrono::system_clock::now();
  const auto days = std::chrono::duration_cast<std::chrono::days>(now.time_since_epoch()).count();
  return static_cast<int32_t>(days + 25568);
}

void print_conversions(int32_t today) {
  char a[40], b[40];
  std::printf("Date serials (1 = 1 January 1900)\n");
  const int32_t samples[][3] = {{1, 1, 1900}, {1, 3, 1900}, {29, 2, 1904}, {31, 12, 2069},
                                {31, 2, 2001}, {4, 9, 6896}};
  for (const auto& s : samples)
    std::printf("  date_to_serial(%2d, %2d, %4d) = %7d  %s\n", s[0], s[1], s[2],
                date_to_serial(s[0], s[1], s[2]), format_date(date_to_serial(s[0], s[1], s[2]), a, sizeof a));
  std::printf("  today                        = %7d  %s\n", today, format_date(today, a, sizeof a));

  std::printf("\nMonth arithmetic\n");
  const int32_t jan31 = date_to_serial(31, 1, 2001), feb28 = date_to_serial(28, 2, 2001);
  std::printf("  %s + 1 month              = %s\n", format_date(jan31, a, sizeof a),
              format_date(add_months(jan31, 1, 0), b, sizeof b));
  std::printf("  %s + 1 month              = %s\n", format_date(feb28, a, sizeof a),
              format_date(add_months(feb28, 1, 0), b, sizeof b));
  std::printf("  %s + 1 month, month end   = %s\n", format_date(feb28, a, sizeof a),
              format_date(add_months(feb28, 1, 1), b, sizeof b));
  const int32_t maturity = date_to_serial(15, 11, 2031);
  std::printf("  coupons of a bond maturing %s around today:\n", format_date(maturity, a, sizeof a));
  std::printf("    previous %s, next %s\n", format_date(schedule_date(today, 0, 6, maturity, 1, nullptr), a, sizeof a),
              format_date(schedule_date(today, 1, 6, maturity, 1, nullptr), b, sizeof b));
}

void print_day_counts() {
  const int32_t start = date_to_serial(31, 8, 2003), end = date_to_serial(29, 2, 2004);
  char a[40], b[40];
  std::printf("\nDay counts from %s to %s\n", format_date(start, a, sizeof a), format_date(end, b, sizeof b));
  std::printf("  code  name            days  year fraction\n");
  for (int32_t code = 0; code < kDayCountCodes; ++code) {
    std::printf("  %4d  %-14s %5d  %.10f\n", code, day_count_name(code),
                day_count(start, end, code, nullptr), year_fraction(start, end, code));
  }
}

void print_holidays(const char* market, int32_t code, int32_t year) {
  const int32_t set[] = {code, 0};
  const int32_t* sets[] = {set};
  int32_t err = 0;
  int32_t* list = build_holiday_list(1, sets, date_to_serial(1, 1, year), date_to_serial(31, 12, year), &err);
  if (list == nullptr) {
    std::printf("\n%s holidays %d: error %d\n", market, year, err);
    return;
  }
  std::printf("\n%s holidays %d (calendar %d)\n", market, year, code);
  char a[40];
  for (int32_t i = 1; i <= list[0]; ++i) std::printf("  %s\n", format_date(list[i], a, sizeof a));

  // The business day after the last holiday, skipping weekends and holidays.
  const BusinessCalendar cal{list + 1, list[0], 0, 0};
  if (list[0] > 0)
    std::printf("  next business day after the last one: %s\n",
                format_date(adjust_business_day(list[list[0]], kFollowing, cal), a, sizeof a));
  std::free(list);
}

}  // namespace

int main() {
  const int32_t today = today_serial();
  int32_t d, m, year;
  if (serial_to_date(today, &d, &m, &year) != 0) year = 2001;

  print_conversions(today);
  print_day_counts();
  print_holidays("United Kingdom", 5, year);
  print_holidays("United States (government securities)", 1, year);
  return 0;
}
