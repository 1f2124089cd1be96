// Bad input to the FRN analytics gives the documented code and failure value.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "frn/frn_registry.h"
#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::Note;
using testing::ymd;

struct BadCase {
  const char* what;
  std::function<void(Note&)> spoil;
  int32_t code;
};

TEST(FrnBadInput, EveryAnalyticReportsTheCode) {
  static const int32_t bad_frequency = 5, bad_day_count = 6, bad_adjustment = 8, negative_code = -1,
                       bad_holiday_option = 3, bad_pay = 2, negative_holding = -2;
  static const double negative_tax = -0.1, zero_redemption = 0.0;
  static const int32_t late_previous = ymd(2026, 3, 2);
  const BadCase cases[] = {
      {"no rates", [](Note& n) { n.rates.clear(); n.rate_dates.clear(); }, 60},
      {"negative rate", [](Note& n) { n.rates = {-0.01}; }, 250},
      {"rate not a number", [](Note& n) { n.rates = {std::nan("")}; }, 250},
      {"first rate date before day 1", [](Note& n) { n.rate_dates = {0}; }, 150},
      {"rate dates not increasing",
       [](Note& n) { n.rates = {0.05, 0.05}; n.rate_dates = {ymd(2026, 1, 1), ymd(2026, 1, 1)}; }, 160},
      {"settlement 0", [](Note& n) { n.settlement = 0; }, 150},
      {"maturity before settlement", [](Note& n) { n.maturity = n.settlement - 1; }, 160},
      {"coupon dates not increasing",
       [](Note& n) { n.coupon_dates = {ymd(2026, 6, 15), ymd(2026, 6, 1)}; }, 160},
      {"coupon date after maturity", [](Note& n) { n.coupon_dates = {ymd(2031, 1, 1)}; }, 160},
      {"previous coupon after settlement", [](Note& n) { n.previous_coupon = &late_previous; }, 160},
      {"holidays not increasing", [](Note& n) { n.holidays = {ymd(2026, 5, 1), ymd(2026, 4, 1)}; }, 160},
      {"frequency", [](Note& n) { n.frequency = &bad_frequency; }, 301},
      {"day count", [](Note& n) { n.day_count = &bad_day_count; }, 300},
      {"adjustment code", [](Note& n) { n.adjustment_code = &bad_adjustment; }, 302},
      {"negative adjustment code", [](Note& n) { n.adjustment_code = &negative_code; }, 302},
      {"holiday option", [](Note& n) { n.holiday_options = &bad_holiday_option; }, 304},
      {"unknown type", [](Note& n) { n.type = 77777777; }, 901},
  };
  const int32_t registered = registry_size();
  for (const BadCase& c : cases) {
    Note note;
    c.spoil(note);
    int32_t err = 0;
    EXPECT_EQ(note.accrued(&err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    err = 0;
    EXPECT_EQ(note.price(0.05, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    err = 0;
    EXPECT_EQ(note.yield(99.0, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    err = 0;
    EXPECT_EQ(note.duration(0.05, nullptr, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    err = 0;
    EXPECT_EQ(note.convexity(0.05, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    err = 0;
    EXPECT_EQ(note.value_bp(0.05, nullptr, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    int32_t* dates = nullptr;
    double* amounts = nullptr;
    EXPECT_EQ(note.cash_flows(&dates, &amounts, nullptr, &err), 0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    EXPECT_EQ(dates, nullptr);
  }
  EXPECT_EQ(registry_size(), registered) << "temporary types left behind";

  // Arguments of the valuation functions only.
  const BadCase valuation_cases[] = {
      {"pay flag", [](Note& n) { n.pay_on_business_day = &bad_pay; }, 305},
      {"negative holding", [](Note& n) { n.holding = &negative_holding; }, 460},
      {"negative tax", [](Note& n) { n.income_tax = &negative_tax; }, 250},
      {"zero redemption", [](Note& n) { n.redemption = &zero_redemption; }, 350},
  };
  for (const BadCase& c : valuation_cases) {
    Note note;
    c.spoil(note);
    int32_t err = 0;
    EXPECT_EQ(note.price(0.05, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
    err = 0;
    EXPECT_EQ(note.yield(99.0, &err), -1.0) << c.what;
    EXPECT_EQ(err, c.code) << c.what;
  }
}

TEST(FrnBadInput, MissingArraysAndMarketInputs) {
  int32_t err = 0;
  const int32_t m = ymd(2030, 6, 15), s = ymd(2026, 3, 1);
  const double rate = 0.05;
  const int32_t rate_date = ymd(2025, 12, 15);
  EXPECT_EQ(KVLfrnpr(nullptr, &rate_date, 1, m, s, 0.05, nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  EXPECT_EQ(KVLfrnai(&rate, nullptr, 1, m, s, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                     nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 50);
  EXPECT_EQ(KVLfrnai(&rate, &rate_date, 1, m, s, nullptr, nullptr, 2, nullptr, nullptr, nullptr, nullptr,
                     nullptr, 0, &err),
            -1.0);
  EXPECT_EQ(err, 50) << "coupon count without dates";
  EXPECT_EQ(KVLfrnai(&rate, &rate_date, 1, m, s, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                     nullptr, 4, &err),
            -1.0);
  EXPECT_EQ(err, 50) << "holiday count without holidays";
  EXPECT_EQ(KVLfrnai(&rate, &rate_date, -1, m, s, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                     nullptr, 0, nullptr),
            -1.0) << "NULL error pointer";

  Note note;
  EXPECT_EQ(note.price(std::nan(""), &err), -1.0);
  EXPECT_EQ(err, 250);
  for (double price : {0.0, -5.0, std::nan("")}) {
    EXPECT_EQ(note.yield(price, &err), -1.0);
    EXPECT_EQ(err, 350);
  }
  // No discount factor at a yield of -2 with two periods a year.
  EXPECT_EQ(note.price(-2.0, &err), -1.0);
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::frn
