// Bad input to the straight-bond exports: each returns its failure value
// and error code, never crashes, and a NULL error pointer is allowed. Many
// rows are extreme inputs found by the fuzz harnesses: descriptions that are
// valid yet have no price a double can hold, denormal factors and tick
// sizes, int32 extremes; each once came back as an infinity, a wrapped
// count or a failure value reported as success.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Every malformed description is error 1 and -1.0 from the price and both
// accrued-interest exports.
TEST(BondErrors, EachSpoiledDescriptionIsError1) {
  const std::pair<const char*, std::function<void(QuotedBond&)>> cases[] = {
      {"no coupons", [](QuotedBond& b) { b.rates.clear(); }},
      {"NaN coupon", [](QuotedBond& b) { b.rates = {kNaN}; }},
      {"no dates", [](QuotedBond& b) { b.dates.clear(); }},
      {"unknown type", [](QuotedBond& b) { b.type = 10; }},
      {"undefined custom type", [](QuotedBond& b) { b.type = 1077; }},
      {"frequency 5", [](QuotedBond& b) { b.frequency = {5}; }},
      {"dated after first coupon",
       [](QuotedBond& b) { b.dated = ymd(2025, 7, 1), b.first = ymd(2025, 6, 15); }},
      {"negative dated date", [](QuotedBond& b) { b.dated = -3; }},
      {"factor above 1",
       [](QuotedBond& b) {
         b.factor = 1.5, b.sink_dates = {ymd(2027, 6, 15)}, b.sink_amounts = {0.1};
       }},
      {"factor without sinking dates", [](QuotedBond& b) { b.factor = -1.0; }},
      {"NaN coupon tax", [](QuotedBond& b) { b.coupon_tax = kNaN; }},
      {"settlement after maturity", [](QuotedBond& b) { b.settlement = ymd(2030, 6, 16); }},
  };
  for (const auto& [what, spoil] : cases) {
    SCOPED_TRACE(what);
    QuotedBond b(0, 0.05, ymd(2030, 6, 15), ymd(2025, 3, 10));
    spoil(b);
    int32_t e = 0, e1 = 0, e2 = 0;
    EXPECT_EQ(b.price(0.05, &e), -1.0);
    EXPECT_EQ(b.accrued(&e1), -1.0);
    EXPECT_EQ(b.accrued1(&e2), -1.0);
    EXPECT_TRUE(e == 1 && e1 == 1 && e2 == 1) << e << " " << e1 << " " << e2;
    EXPECT_EQ(b.price(0.05), -1.0);
  }
}

// The other exports, by the kind of input they refuse. A holiday list that
// is NULL is an empty list whatever its count, and a bullet's sinking-fund
// arrays are never read: the plain bond's price; only a negative holiday
// count is an error.
TEST(BondErrors, EachExportReturnsItsFailureValueAndCode) {
  const QuotedBond b(0, 0.05, ymd(2034, 6, 15), ymd(2024, 3, 12));
  const QuotedBond after = b.at(ymd(2035, 1, 1));  // settled after maturity
  const QuotedBond on_coupon = b.at(ymd(2024, 6, 15));  // nothing accrued
  // A Gilt in its last period, ex-dividend (from 28 February before the
  // 7 March coupon), priced at simple interest as asked.
  QuotedBond gilt(40, 0.04, ymd(2024, 3, 7), ymd(2024, 3, 1));
  gilt.method = 1;
  QuotedBond no_dates = sinking_fund(ymd(2024, 6, 15));
  no_dates.dates.clear();
  QuotedBond no_schedule = b;
  no_schedule.factor = 0.5;
  const int32_t m = b.maturity(), s = b.settlement, d1 = ymd(2027, 11, 15), d2 = ymd(2029, 11, 15);
  const int32_t dated = ymd(2024, 2, 1), first = ymd(2024, 11, 15);
  const auto coupon = [m, s](int32_t k, const int32_t* dated, const int32_t* first, int32_t* e) {
    return KVLbcpn(m, s, &k, dated, first, nullptr, nullptr, nullptr, e);
  };
  const auto exdiv = [m](int32_t type, int32_t settle, int32_t n_holidays, int32_t* e) {
    return KVLbexdiv(m, settle, &type, nullptr, nullptr, n_holidays, nullptr, e);
  };
  const double zero = 0.0, minus_one = -1.0, denormal_tick = 2e-311;
  const auto unread = [&](int32_t n_holidays, const double* factor, int32_t n_sink, int32_t* e) {
    return KVLbpr(b.rates.data(), 1, &m, 1, s, 0.05, nullptr, nullptr, nullptr, nullptr, 0,
                  nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                  n_holidays, factor, nullptr, n_sink, nullptr, n_sink, nullptr, nullptr,
                  nullptr, e);
  };
  const double bullet = b.price(0.05);
  // {rate, a, b} is redeemed at 100 b / a: 4.7e305 per 100, beyond any
  // bond (a Treasury's rounding would overflow); 1e308 a year is a
  // semi-annual coupon of 5e309 per 100; an outstanding fraction that is a
  // denormal would be divided by when quoting per outstanding face.
  const auto with = [&b](int32_t type, std::vector<double> rates) {
    QuotedBond r = b;
    r.type = type;
    r.rates = std::move(rates);
    return r;
  };
  const double a = 1.0684727529772892e-305;
  QuotedBond repaid = b;
  repaid.factor = 1.3813695267487486e-312;
  repaid.sink_dates = {ymd(2028, 11, 15)};
  repaid.sink_amounts = {0.5};
  // Settled on its maturity date (1 January 1901) the price no longer moves
  // with the yield: a tick is worth no finite yield change.
  const QuotedBond matured(0, 0.05, 366, 366), matured_zero(0, 0.0, 366, 366);
  const int32_t int_min = INT32_MIN, int_max = INT32_MAX, gilt_type = 40, first_2021 = 44330;
  const auto coupon_at = [](int32_t end, int32_t settle, int32_t k, const int32_t* first,
                            int32_t* e) {
    return KVLbcpn(end, settle, &k, nullptr, first, nullptr, nullptr, nullptr, e);
  };
  const auto exdiv_period = [&](const int32_t* period, int32_t settle, int32_t* e) {
    return KVLbexdiv(m, settle, &gilt_type, period, nullptr, 0, nullptr, e);
  };
  // Brady values of a bond whose later coupon step is +-1e308 (the first
  // step alone used to be checked).
  const int32_t step_dates[] = {46340, 47071, 47801};
  const auto brady = [&](auto export_fn, double step, int32_t* e) {
    const double coupons[] = {0.04, step, 0.06};
    return export_fn(coupons, 3, step_dates, 3, s, 0.045, 0.04, 0.09, nullptr, nullptr, nullptr,
                     nullptr, &gilt_type, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                     0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, e);
  };
  struct Case {
    const char* what;
    std::function<double(int32_t*)> call;
    double value;
    int32_t error;
  };
#define CALL(expr) [&](int32_t* e) { return static_cast<double>(expr); }
  const Case cases[] = {
      {"holiday count without a list", CALL(unread(3, nullptr, 0, e)), bullet, 0},
      {"sinking count without arrays", CALL(unread(0, nullptr, 2, e)), bullet, 0},
      {"zero factor, sinking count", CALL(unread(0, &zero, 2, e)), bullet, 0},
      {"negative holiday count", CALL(unread(-1, nullptr, 0, e)), -1.0, 1},
      {"yield of price 0", CALL(b.yield(0.0, e)), -1.0, 350},
      // No yield above -90 % a period (10^20 x 100 after 20 periods)
      // reaches a price of 1e30.
      {"yield of 1e30", CALL(b.yield(1e30, e)), -999.0, 1},
      // A clean price that does not cover the negative accrued interest.
      {"Gilt ex-dividend", CALL(gilt.yield(-gilt.accrued() * 0.5, e)), -1.0, 350},
      {"yield after maturity", CALL(after.yield(99.0, e)), -1.0, 1},
      {"price at an infinite yield", CALL(b.price(HUGE_VAL, e)), -1.0, 1},
      {"horizon after maturity", CALL(b.horizon_yield(99.0, m + 1, 101.0, e)), -1.0, 160},
      {"reinvested at -200 %", CALL(b.realized_yield(100.0, -2.0, e)), -1.0, 250},
      {"realized from price 0", CALL(on_coupon.realized_yield(0.0, 0.04, e)), -1.0, 1},
      {"more call prices than dates",
       CALL(b.yield_to_worst(104.0, {d1}, {101.0, 100.0, 99.0}, e)), -1.0, 70},
      {"calls out of order", CALL(b.yield_to_worst(104.0, {d2, d1}, {101.0}, e)), -1.0, 160},
      {"call date 0", CALL(b.yield_to_worst(104.0, {0}, {}, e)), -1.0, 150},
      {"call price 0", CALL(b.yield_to_worst(104.0, {d1}, {0.0}, e)), -1.0, 460},
      {"average-life yield, no dates", CALL(no_dates.yield_to_average_life(97, e)), -1.0, 60},
      {"life of price 1e30", CALL(b.remaining_life(1e30, e)), -1.0, 1},
      {"bp per 0", CALL(b.value_of_bp(0.05, &zero, e)), -999.0, 310},
      {"tick of -1", CALL(b.value_of_tick(0.05, &minus_one, e)), -999.0, 310},
      // A yield of -100 % a period leaves no price: the computation fails,
      // and the tick value takes the basis-point failure value as it comes.
      {"duration at -200 %", CALL(b.duration(-2.0, nullptr, e)), -1.0, 401},
      {"convexity at -200 %", CALL(b.convexity(-2.0, e)), -999.0, 401},
      {"bp at -200 %", CALL(b.value_of_bp(-2.0, nullptr, e)), -999.0, 401},
      {"tick at -200 %", CALL(b.value_of_tick(-2.0, nullptr, e)), 1.0 / (-999.0 * 32.0), 401},
      {"duration after maturity", CALL(after.duration(0.05, nullptr, e)), -1.0, 1},
      {"coupon amount after maturity", CALL(after.coupon_amount(e)), -1.0, 1},
      {"average life, negative settlement", CALL(b.at(-3).average_life(e)), 0.0, 1},
      {"average life, schedule without dates", CALL(no_schedule.average_life(e)), 0.0, 1},
      // 22 coupons are left; none before the first coupon of a new issue.
      {"coupon 23 of 22", CALL(coupon(23, nullptr, nullptr, e)), -1.0, 1},
      {"coupon before the first", CALL(coupon(0, &dated, &first, e)), -1.0, 1},
      {"ex-dividend, unknown type", CALL(exdiv(10, s, 0, e)), -1.0, 460},
      {"ex-dividend, bad settlement", CALL(exdiv(40, -5, 0, e)), -1.0, 1},
      // Failure values survive the yield rounding of the rounding types.
      {"municipal yield of 1e30", CALL(with(2, {0.05}).yield(1e30, e)), -999.0, 1},
      {"South African yield of price 0", CALL(with(380, {0.05}).yield(0.0, e)), -1.0, 350},
      {"Treasury redeemed at 4.7e305", CALL(with(0, {0.05, a, 0.05}).price(0.045, e)), -1.0, 1},
      {"Gilt redeemed at 4.7e305", CALL(with(40, {0.05, a, 0.05}).price(0.045, e)), -1.0, 1},
      {"coupon of 1e308 a year", CALL(with(40, {1e308}).price(0.045, e)), -1.0, 1},
      {"denormal outstanding fraction", CALL(repaid.price(0.045, e)), -1.0, 1},
      {"accrued of -7.6e307 a year", CALL(with(200, {-7.6e307}).accrued(e)), -1.0, 1},
      // A JGB's simple yield (received / price - 1) / years overflows.
      {"JGB yield of 5e-310", CALL(with(200, {0.05}).yield(5e-310, e)), -1.0, 1},
      {"tick settled at maturity", CALL(matured.value_of_tick(0.05, nullptr, e)), -999.0, 401},
      {"tick of a zero coupon at maturity", CALL(matured_zero.value_of_tick(0.05, nullptr, e)),
       -999.0, 401},
      {"tick of 2e-311", CALL(b.value_of_tick(0.05, &denormal_tick, e)), -999.0, 401},
      {"reinvested at 1e100", CALL(b.realized_yield(101.5, 1e100, e)), -1.0, 250},
      {"reinvested at infinity", CALL(b.realized_yield(101.5, HUGE_VAL, e)), -1.0, 250},
      // A call-date count of 2^31 - 1 without dates is no array (50), not a
      // count that wraps past the prices' (70).
      {"2^31 - 1 call dates missing",
       CALL(KVLbyworst(b.rates.data(), 1, b.dates.data(), 1, s, 101.5, nullptr, nullptr, nullptr,
                       nullptr, 0, nullptr, INT32_MAX, nullptr, 0, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                       nullptr, nullptr, e)),
       -1.0, 50},
      {"coupon INT32_MIN", CALL(coupon_at(47801, 45351, INT32_MIN, nullptr, e)), -1.0, 1},
      {"coupon INT32_MAX at maturity", CALL(coupon_at(47806, 47806, INT32_MAX, &first_2021, e)),
       -1.0, 1},
      {"ex-dividend period INT32_MIN", CALL(exdiv_period(&int_min, s, e)), -1.0, 1},
      {"ex-dividend period INT32_MAX", CALL(exdiv_period(&int_max, s, e)), -1.0, 1},
      {"ex-dividend beyond the last date", CALL(exdiv_period(nullptr, 1825000, e)), -1.0, 1},
      {"Brady price, step 1e308", CALL(brady(KVLbradypr, 1e308, e)), -1.0, 1},
      {"Brady price, step -1e308", CALL(brady(KVLbradypr, -1e308, e)), -1.0, 1},
      {"Brady duration, step 1e308", CALL(brady(KVLbradydur, 1e308, e)), -1.0, 1},
      // An index-linked gilt with a real coupon of 1e300, and one whose next
      // coupon of 5.5e303 per 100 overflows in its accrued part.
      {"index-linked real coupon 1e300",
       CALL(KVLilgpr(1e300, 1.5, 200.0, 250.0, m, s, 0.01, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, 0, nullptr, nullptr, 0, e)),
       -1.0, 1},
      {"index-linked next coupon 5.5e303",
       CALL(KVLilgai(0.025, 5.4861240764577203e303, m, s, nullptr, nullptr, nullptr, nullptr, 0,
                     nullptr, nullptr, e)),
       -1.0, 1},
  };
#undef CALL
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    int32_t e = 0;
    EXPECT_DOUBLE_EQ(c.call(&e), c.value);
    EXPECT_EQ(e, c.error);
    c.call(nullptr);  // a NULL error pointer is allowed
  }
}

}  // namespace
}  // namespace kbond::testing
