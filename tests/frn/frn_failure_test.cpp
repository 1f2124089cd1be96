// Bad input and overflowing results of the FRN analytics: the documented
// code and failure value, nothing handed out, no temporary type left behind.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>

#include "frn/frn_registry.h"
#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::Note;
using testing::ymd;

int32_t type_with(const double* year_length, const int32_t* extra_days) {
  int32_t err = -1;
  const int32_t type = KVLfrntype(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, year_length, extra_days,
                                  0, 0, 0, 0, 0, 0, &err);
  EXPECT_EQ(err, 0);
  return type;
}

// Every analytic of the note as (value, error); cash flows as (rows, error).
std::vector<std::pair<double, int32_t>> every_analytic(const Note& note) {
  std::vector<std::pair<double, int32_t>> out;
  int32_t err = 0, *dates = &err;  // a failed table must overwrite it with NULL
  double* amounts = nullptr;
  for (const auto& f : std::vector<std::function<double()>>{
           [&] { return note.accrued(&err); }, [&] { return note.price(0.05, &err); },
           [&] { return note.yield(99.0, &err); }, [&] { return note.duration(0.05, nullptr, &err); },
           [&] { return note.convexity(0.05, &err); }, [&] { return note.value_bp(0.05, nullptr, &err); },
           [&] { return double(note.cash_flows(&dates, &amounts, nullptr, &err)); }}) {
    err = -7;
    out.emplace_back(f(), err);
  }
  EXPECT_EQ(err == 0, dates != nullptr);
  if (err == 0) KVLfrncshflw_free(dates, amounts);
  return out;
}

struct BadCase {
  const char* what;
  std::function<void(Note&)> spoil;
  int32_t code;
  bool valuation_only = false;  // an argument of price, yield and the risk measures only
};

TEST(FrnBadInput, EveryAnalyticReportsTheCode) {
  static const int32_t bad_frequency = 5, bad_day_count = 6, bad_adjustment = 8,
                       bad_pay = 2, negative_holding = -2;
  static const double zero_redemption = 0.0;
  const BadCase cases[] = {
      {"no rates", [](Note& n) { n.rates.clear(); n.rate_dates.clear(); }, 60},
      {"settlement 0", [](Note& n) { n.settlement = 0; }, 150},
      {"coupon dates not increasing", [](Note& n) { n.coupon_dates = {ymd(2026, 6, 15), ymd(2026, 6, 1)}; }, 160},
      {"frequency", [](Note& n) { n.frequency = &bad_frequency; }, 301},
      {"day count", [](Note& n) { n.day_count = &bad_day_count; }, 300},
      {"adjustment code", [](Note& n) { n.adjustment_code = &bad_adjustment; }, 302},
      {"pay flag", [](Note& n) { n.pay_on_business_day = &bad_pay; }, 305, true},
      {"negative holding", [](Note& n) { n.holding = &negative_holding; }, 460, true},
      {"zero redemption", [](Note& n) { n.redemption = &zero_redemption; }, 350, true},
  };
  const int32_t registered = registry_size();
  every_analytic(Note{});  // the success path releases its temporary type too
  for (const BadCase& c : cases) {
    SCOPED_TRACE(c.what);
    Note note;
    c.spoil(note);
    const auto results = every_analytic(note);
    for (size_t i = c.valuation_only ? 1 : 0; i < (c.valuation_only ? 3 : results.size()); ++i) {
      EXPECT_EQ(results[i].first, i + 1 == results.size() ? 0.0 : -1.0) << "analytic " << i;
      EXPECT_EQ(results[i].second, c.code) << "analytic " << i;
    }
  }
  EXPECT_EQ(registry_size(), registered) << "temporary types left behind";
}

TEST(FrnBadInput, MissingArraysMarketInputsAndMargins) {
  const int32_t m = ymd(2030, 6, 15), s = ymd(2026, 3, 1), rate_date = ymd(2025, 12, 15), bad_frequency = 5;
  const double rate = 0.05, negative = -1.0, nan = std::nan("");
  const Note note;
  int32_t* dates = nullptr;
  // Accrued interest without rate dates, with a coupon count but no dates, with a holiday count but no holidays.
  auto accrued = [&](const int32_t* rate_dates, int32_t coupons, int32_t holidays, int32_t* err) {
    return KVLfrnai(&rate, rate_dates, 1, m, s, nullptr, nullptr, coupons, nullptr, nullptr, nullptr, nullptr,
                    nullptr, holidays, err);
  };
  struct Case { const char* what; std::function<double(int32_t*)> call; double value; int32_t code; } const cases[] = {
      {"no rates", [&](int32_t* e) { return KVLfrnpr(nullptr, &rate_date, 1, m, s, 0.05, nullptr, nullptr, 0, nullptr,
                                                    nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                    nullptr, nullptr, 0, e); }, -1.0, 50},
      {"no rate dates", [&](int32_t* e) { return accrued(nullptr, 0, 0, e); }, -1.0, 50},
      {"coupon count without dates", [&](int32_t* e) { return accrued(&rate_date, 2, 0, e); }, -1.0, 50},
      {"holiday count without dates", [&](int32_t* e) { return accrued(&rate_date, 0, 4, e); }, -1.0, 50},
      {"no amounts array", [&](int32_t* e) { return double(note.cash_flows(&dates, nullptr, nullptr, e)); }, 0.0, 50},
      {"yield NaN", [&](int32_t* e) { return note.price(nan, e); }, -1.0, 250},
      // No discount factor at a yield of -2 with two periods a year.
      {"yield -2", [&](int32_t* e) { return note.price(-2.0, e); }, -1.0, 1},
      {"negative price", [&](int32_t* e) { return note.yield(-5.0, e); }, -1.0, 350},
      {"price NaN", [&](int32_t* e) { return note.yield(nan, e); }, -1.0, 350},
      {"negative 32nd divisor", [&](int32_t* e) { return note.value_32(0.05, &negative, e); }, -999.0, 1},
      {"NaN basis-point divisor", [&](int32_t* e) { return note.value_bp(0.05, &nan, e); }, -999.0, 1},
      {"simple margin, bad frequency", [&](int32_t* e) {
         return KVLfrnsm(m, s, 0.05, 99.0, 0.045, 0.005, nullptr, nullptr, nullptr, &bad_frequency, nullptr, e); },
       -1.0, 301},
      {"discount margin, unknown type", [&](int32_t* e) {
         return KVLtfrndm(424242, m, s, 0.05, 99.0, 0.05, 0.045, 0.005, nullptr, nullptr, nullptr, nullptr, nullptr, e); },
       -1.0, 901},
  };
  for (const Case& c : cases) {
    int32_t err = 0;
    EXPECT_EQ(c.call(&err), c.value) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    EXPECT_EQ(c.call(nullptr), c.value) << c.what << ": NULL error pointer";
  }
}

// Found by fuzzing: a registered year length of 0.0001 days is a valid field
// yet turns every accrual fraction enormous. Each analytic either succeeds
// with a finite value or fails with error 1 and -1, never NaN or infinity.
TEST(FrnOverflow, TinyYearLengthFailsInsteadOfNaN) {
  const double year_length = 0.0001;
  Note note;
  note.type = type_with(&year_length, nullptr);
  const auto results = every_analytic(note);
  for (size_t i = 0; i < results.size(); ++i) {
    if (results[i].second == 0) {
      EXPECT_TRUE(std::isfinite(results[i].first)) << "analytic " << i;
    } else {
      EXPECT_EQ(results[i].second, 1) << "analytic " << i;
      EXPECT_EQ(results[i].first, i + 1 == results.size() ? 0.0 : -1.0) << "analytic " << i;
    }
  }
  KVLfreefrntype(note.type);
}

TEST(FrnOverflow, ExtremeExtraAccrualDaysAddWithoutWrapping) {
  // Any int32 is a valid count of extra accrual days; near the limits the
  // count plus the days since the last coupon must not wrap (found by
  // fuzzing). Each extra day adds a day's interest at the rate in force.
  int32_t error = -1;
  const double base = Note{}.accrued(&error);
  ASSERT_EQ(error, 0);
  for (const int32_t extra : {1, INT32_MAX - 1, INT32_MIN}) {
    Note note;
    note.type = type_with(nullptr, &extra);
    const double accrued = note.accrued(&error);
    EXPECT_EQ(error, 0);
    EXPECT_NEAR(accrued, base + 0.05 * extra / 360.0 * 100.0, 1e-6 * std::fabs(accrued));
    KVLfreefrntype(note.type);
  }
}

TEST(FrnOverflow, HugeYearLengthMarginAndHugeRateTableFail) {
  // A year length of 1e300 days shrinks the note's life to a denormal; a
  // price far from par then gave a simple margin of minus infinity with
  // error 0 (found by fuzzing). The same type at par has a finite margin.
  const double year_length = 1e300;
  const int32_t type = type_with(&year_length, nullptr), m = ymd(2030, 6, 15), s = ymd(2026, 3, 1);
  int32_t error = -1;
  EXPECT_EQ(KVLtfrnsm(type, m, s, 0.05, 1.2484450978421138e55, 0.048, 0.002, nullptr, nullptr, nullptr, nullptr,
                      nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  EXPECT_TRUE(std::isfinite(
      KVLtfrnsm(type, m, s, 0.05, 100.0, 0.048, 0.002, nullptr, nullptr, nullptr, nullptr, nullptr, &error)));
  EXPECT_EQ(error, 0);
  KVLfreefrntype(type);
  // A rate of 3e307 is finite, its coupon per 100 is not: the whole table
  // fails with error 1 and hands out nothing (found by fuzzing).
  Note note;
  note.rates = {2.9542949574154552e307};
  int32_t* dates = nullptr;
  double* amounts = nullptr;
  EXPECT_EQ(note.cash_flows(&dates, &amounts, nullptr, &error), 0);
  EXPECT_EQ(error, 1);
  EXPECT_EQ(dates, nullptr);
  EXPECT_EQ(amounts, nullptr);
}

}  // namespace
}  // namespace kbond::frn
