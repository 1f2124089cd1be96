// Date library timings: conversions inside and outside the cached ranges,
// month arithmetic, schedule look-ups and year fractions.
// Medians over five runs:
//   ./build/release/dates_benchmark --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>

#include "dates/business_days.h"
#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/holiday_calendars.h"
#include "dates/month_arithmetic.h"

namespace kbond::dates {
namespace {

// Cycles through the days of a year so the loop is not a single repeated call.
void BM_DateToSerial(benchmark::State& state) {
  const int32_t year = static_cast<int32_t>(state.range(0));
  for (int32_t m = 1; m <= 12; ++m) benchmark::DoNotOptimize(date_to_serial(1, m, year));
  int32_t day = 1, month = 1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(date_to_serial(day, month, year));
    if (++day > 28) {
      day = 1;
      month = month % 12 + 1;
    }
  }
}
BENCHMARK(BM_DateToSerial)->Arg(2001)->Arg(2150)->ArgName("year");

void BM_SerialToDate(benchmark::State& state) {
  const int32_t first = static_cast<int32_t>(state.range(0));
  for (int32_t s = first; s < first + 4096; ++s) {
    int32_t d, m, y;
    serial_to_date(s, &d, &m, &y);  // warm the cache where there is one
  }
  int32_t s = first;
  for (auto _ : state) {
    int32_t d, m, y;
    benchmark::DoNotOptimize(serial_to_date(s, &d, &m, &y));
    benchmark::DoNotOptimize(d + m + y);
    if (++s == first + 4096) s = first;
  }
}
// 36526 = 2 January 2000 (cached); 80000 = 8 January 2119 (not cached).
BENCHMARK(BM_SerialToDate)->Arg(36526)->Arg(80000)->ArgName("serial");

void BM_AddMonths(benchmark::State& state) {
  const int32_t start = date_to_serial(31, 1, 2001);
  int32_t months = 1;
  for (auto _ : state) {
    benchmark::DoNotOptimize(add_months(start, months, 1));
    if (++months > 120) months = 1;
  }
}
BENCHMARK(BM_AddMonths);

void BM_ScheduleDate(benchmark::State& state) {
  const int32_t maturity = date_to_serial(15, 11, 2031);
  int32_t settlement = date_to_serial(1, 1, 2001);
  const int32_t last = date_to_serial(31, 12, 2030);
  for (auto _ : state) {
    int32_t index;
    benchmark::DoNotOptimize(schedule_date(settlement, 0, 6, maturity, 1, &index));
    settlement = settlement == last ? date_to_serial(1, 1, 2001) : settlement + 1;
  }
}
BENCHMARK(BM_ScheduleDate);

void BM_YearFraction(benchmark::State& state) {
  const int32_t code = static_cast<int32_t>(state.range(0));
  const int32_t start = date_to_serial(15, 3, 2001);
  int32_t end = date_to_serial(1, 1, 2002);
  for (auto _ : state) {
    benchmark::DoNotOptimize(year_fraction(start, end, code));
    if (++end > date_to_serial(31, 12, 2030)) end = date_to_serial(1, 1, 2002);
  }
}
BENCHMARK(BM_YearFraction)->Arg(1)->Arg(5)->Arg(13)->Arg(14)->ArgName("code");

void BM_AddBusinessDays(benchmark::State& state) {
  const int32_t uk[] = {5, 0};
  const int32_t* sets[] = {uk};
  int32_t* list = build_holiday_list(1, sets, date_to_serial(1, 1, 2000),
                                     date_to_serial(31, 12, 2030), nullptr);
  const BusinessCalendar cal{list + 1, list[0], 0, 0};
  int32_t date = date_to_serial(1, 1, 2001);
  for (auto _ : state) {
    benchmark::DoNotOptimize(add_business_days(date, static_cast<int32_t>(state.range(0)), cal));
    if (++date > date_to_serial(31, 12, 2020)) date = date_to_serial(1, 1, 2001);
  }
  std::free(list);
}
BENCHMARK(BM_AddBusinessDays)->Arg(7)->Arg(250)->ArgName("days");

}  // namespace
}  // namespace kbond::dates
