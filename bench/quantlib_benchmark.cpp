// k_bond and QuantLib side by side, in one process, on the same bonds and
// from the same raw inputs (coupon, maturity, settlement, yield or price):
// each QuantLib call builds its schedule and bond as a k_bond call builds
// its bond description. After the timings the program prints how many
// times faster k_bond is, from the median of repeated runs.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "k_bond.h"

#ifdef KBOND_HAVE_QUANTLIB
#include <ql/instruments/bonds/fixedratebond.hpp>
#include <ql/pricingengines/bond/bondfunctions.hpp>
#include <ql/settings.hpp>
#include <ql/time/calendars/nullcalendar.hpp>
#include <ql/time/daycounters/actualactual.hpp>
#include <ql/time/schedule.hpp>
#endif

namespace {

struct Ymd {
  int y, m, d;
};

// k_bond date serial (1 = 1 January 1900) of a civil date.
int32_t serial_of(Ymd date) {
  const int y = date.m <= 2 ? date.y - 1 : date.y;
  const int era = y / 400;
  const int yoe = y - era * 400;
  const int mp = (date.m + 9) % 12;
  const int doy = (153 * mp + 2) / 5 + date.d - 1;
  const int doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 693900;  // days since 31 December 1899
}

struct RawTreasury {
  const char* name;
  double coupon;
  Ymd maturity;
  Ymd settlement;
  double yield;
  double clean_price;  // the price at `yield`, input of the yield runs
};

// 4.25 % note of 15 November 2034 and 4.625 % bond of 15 May 2054, both
// settled 15 January 2025.
RawTreasury ten_year{"treasury_10y", 0.0425, {2034, 11, 15}, {2025, 1, 15}, 0.045, 0.0};
RawTreasury thirty_year{"treasury_30y", 0.04625, {2054, 5, 15}, {2025, 1, 15}, 0.0475, 0.0};

double kbond_price(const RawTreasury& b) {
  const int32_t type = 0;
  const int32_t maturity = serial_of(b.maturity);
  int32_t error = 0;
  return KVLbpr(&b.coupon, 1, &maturity, 1, serial_of(b.settlement), b.yield, nullptr, nullptr,
                &type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &error);
}

void BM_kbond_price(benchmark::State& state, RawTreasury* b) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(kbond_price(*b));
  }
}

void BM_kbond_yield(benchmark::State& state, RawTreasury* b) {
  const int32_t type = 0;
  int32_t error = 0;
  for (auto _ : state) {
    const int32_t maturity = serial_of(b->maturity);
    double y = KVLbyld(&b->coupon, 1, &maturity, 1, serial_of(b->settlement), b->clean_price,
                       nullptr, nullptr, &type, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0,
                       nullptr, nullptr, nullptr, &error);
    benchmark::DoNotOptimize(y);
  }
  if (error != 0) state.SkipWithError("KVLbyld failed");
}

#ifdef KBOND_HAVE_QUANTLIB
namespace ql = QuantLib;

ql::Date ql_date(Ymd d) { return ql::Date(d.d, static_cast<ql::Month>(d.m), d.y); }

// The bond a U.S. Treasury quote describes: semi-annual act/act (ICMA)
// coupons stepped back from maturity; the schedule starts one period before
// settlement so that the coupon period holding settlement is a regular one.
ql::FixedRateBond ql_treasury(const RawTreasury& b, const ql::DayCounter& dc) {
  const ql::Date settlement = ql_date(b.settlement);
  ql::Schedule schedule(settlement - ql::Period(6, ql::Months), ql_date(b.maturity),
                        ql::Period(ql::Semiannual), ql::NullCalendar(), ql::Unadjusted,
                        ql::Unadjusted, ql::DateGeneration::Backward, false);
  return ql::FixedRateBond(0, 100.0, schedule, std::vector<ql::Rate>{b.coupon}, dc);
}

double quantlib_price(const RawTreasury& b) {
  const ql::ActualActual dc(ql::ActualActual::ISMA);
  const ql::FixedRateBond bond = ql_treasury(b, dc);
  return ql::BondFunctions::cleanPrice(bond, b.yield, dc, ql::Compounded, ql::Semiannual,
                                       ql_date(b.settlement));
}

void BM_quantlib_price(benchmark::State& state, RawTreasury* b) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(quantlib_price(*b));
  }
}

void BM_quantlib_yield(benchmark::State& state, RawTreasury* b) {
  for (auto _ : state) {
    const ql::ActualActual dc(ql::ActualActual::ISMA);
    const ql::FixedRateBond bond = ql_treasury(*b, dc);
    // Accuracy 1e-8 in yield: finer than the 8 decimals k_bond quotes.
    double y = ql::BondFunctions::yield(bond, b->clean_price, dc, ql::Compounded,
                                        ql::Semiannual, ql_date(b->settlement), 1e-8);
    benchmark::DoNotOptimize(y);
  }
}
#endif

void register_all() {
  for (RawTreasury* b : {&ten_year, &thirty_year}) {
    b->clean_price = kbond_price(*b);
    const std::string n = b->name;
    benchmark::RegisterBenchmark(("kbond_price/" + n).c_str(), BM_kbond_price, b);
#ifdef KBOND_HAVE_QUANTLIB
    benchmark::RegisterBenchmark(("quantlib_price/" + n).c_str(), BM_quantlib_price, b);
#endif
    benchmark::RegisterBenchmark(("kbond_yield/" + n).c_str(), BM_kbond_yield, b);
#ifdef KBOND_HAVE_QUANTLIB
    benchmark::RegisterBenchmark(("quantlib_yield/" + n).c_str(), BM_quantlib_yield, b);
#endif
  }
}

// Keeps the median time of every benchmark while the console shows them.
class MedianCollector : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
        medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> medians;
};

}  // namespace

int main(int argc, char** argv) {
  register_all();
  std::vector<char*> args(argv, argv + argc);
  std::string repetitions = "--benchmark_repetitions=5";
  args.push_back(repetitions.data());
  int n = static_cast<int>(args.size());
  benchmark::Initialize(&n, args.data());
  MedianCollector reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();

  std::printf("\nk_bond speed-up over QuantLib (median CPU times, raw inputs per call):\n");
  for (const char* measure : {"price", "yield"}) {
    for (const RawTreasury* b : {&ten_year, &thirty_year}) {
      const std::string suffix = std::string(measure) + "/" + b->name;
      const auto k = reporter.medians.find("kbond_" + suffix);
      const auto q = reporter.medians.find("quantlib_" + suffix);
      if (k == reporter.medians.end() || q == reporter.medians.end() || k->second <= 0) {
        std::printf("  %-22s not measured\n", suffix.c_str());
        continue;
      }
      std::printf("  %-22s k_bond %9.1f ns  QuantLib %10.1f ns  ratio %7.1fx\n",
                  suffix.c_str(), k->second, q->second, q->second / k->second);
    }
  }
  return 0;
}
