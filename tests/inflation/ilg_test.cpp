// Index-linked gilts (8-month lag): the DMO price/yield formula, accrued
// interest and the ex-dividend rule, projected flows, round trips and
// argument checks.
#include <gtest/gtest.h>

#include <cmath>

#include "k_bond.h"
#include "dates/date_serial.h"

namespace {

using kbond::dates::date_to_serial;

// 2½% Index-linked Treasury Stock 2016 (coupons 26 January / 26 July, base
// RPI 81.6), settling 15 March 2005 with the July 2005 coupon fixed at
// 2.8952 per 100 and a latest RPI of 188.9.
struct IlgCall {
  double real_coupon = 0.025, next_amount = 2.8952, base = 81.6, latest = 188.9;
  int32_t maturity = date_to_serial(26, 7, 2016), settlement = date_to_serial(15, 3, 2005);
  const int32_t *previous = nullptr, *next = nullptr, *exdiv_override = nullptr;
  double inflation = 0.03;
  int32_t pay_on_business_day = 0, holiday_count = 0;

#define KBOND_ILG_HEAD real_coupon, next_amount, base, latest, maturity, settlement
#define KBOND_ILG_TAIL \
  previous, next, &inflation, &pay_on_business_day, nullptr, nullptr, holiday_count, exdiv_override, nullptr, 0, err
  double price(double y, int32_t* err) const { return KVLilgpr(KBOND_ILG_HEAD, y, KBOND_ILG_TAIL); }
  double price2(double y, const int32_t* month, int32_t* err) const {
    return KVLilgpr2(KBOND_ILG_HEAD, y, month, KBOND_ILG_TAIL);
  }
  double yield(double p, int32_t* err) const { return KVLilgyld(KBOND_ILG_HEAD, p, KBOND_ILG_TAIL); }
  double yield2(double p, const int32_t* month, int32_t* err) const {
    return KVLilgyld2(KBOND_ILG_HEAD, p, month, KBOND_ILG_TAIL);
  }
  int32_t cashflows(int32_t** dates, double** amounts, double* redemption, int32_t* err) const {
    return KVLilgcshflw(dates, amounts, redemption, KBOND_ILG_HEAD, KBOND_ILG_TAIL);
  }
#undef KBOND_ILG_HEAD
#undef KBOND_ILG_TAIL
  double accrued(int32_t* err) const {
    return KVLilgai(real_coupon, next_amount, maturity, settlement, previous, next, nullptr, nullptr, holiday_count,
                    exdiv_override, nullptr, err);
  }
};

struct Table {
  int32_t rows = 0, *dates = nullptr;
  double *amounts = nullptr, redemption = 0.0;
  explicit Table(const IlgCall& call) {
    int32_t err = -1;
    rows = call.cashflows(&dates, &amounts, &redemption, &err);
    EXPECT_EQ(err, 0);
  }
  ~Table() { KVLilgcshflw_free(dates, amounts); }
};

TEST(IlgPrice, DebtManagementOfficeFormula) {
  // Independent computation (Python) of the DMO 8-month-lag formula: r/s =
  // 133/181, v = 1 / ((1 + 0.015/2) * sqrt(1.03)); the 22 later coupons and
  // the redemption carry 188.9/81.6 * 1.03^(4/12 + (k-1)/2) (four whole months
  // from settlement to the July coupon). Dirty 252.371355 (6 decimals) less
  // accrued 2.8952 * 48/181 = 0.767788 gives 251.603567.
  IlgCall call;
  int32_t err = -1;
  EXPECT_NEAR(call.price(0.015, &err), 251.603567, 1e-9);
  EXPECT_NEAR(call.accrued(&err), 0.767788, 1e-12);
  EXPECT_EQ(err, 0);
  // The latest index month: January 2005, two months before settlement, is
  // what KVLilgpr assumes; a December 2004 index is five months from May
  // 2005, which fixes the January 2006 coupon: one month more inflation,
  // 252.218959 (Python).
  const int32_t january = date_to_serial(1, 1, 2005), december = date_to_serial(15, 12, 2004);
  EXPECT_NEAR(call.price2(0.015, &january, &err), 251.603567, 1e-9);
  EXPECT_NEAR(call.price2(0.015, nullptr, &err), 251.603567, 1e-9);
  EXPECT_NEAR(call.price2(0.015, &december, &err), 252.218959, 1e-9);
  EXPECT_NEAR(call.yield2(252.218959, &december, &err), 0.015, 1e-8);
  EXPECT_EQ(err, 0);
  for (double y : {-0.01, 0.0, 0.04}) EXPECT_NEAR(call.yield(call.price(y, &err), &err), y, 1e-7) << y;
  EXPECT_EQ(err, 0);
}

TEST(IlgPrice, MoneyMarketPriceWhenOnlyTheRedemptionRemains) {
  // Last period, 26 January to 26 July 2016, settling 15 March 2016: the
  // final coupon 3.3 fixes the ratio 2 * 0.033 / 0.025 = 2.64. Dirty =
  // 100 * (0.033 + 2.64) / (1 + 133/365 * 0.005) = 266.813887; accrued
  // 3.3 * 49/182 = 0.888462; clean 265.925425 (independent computation).
  IlgCall call;
  call.next_amount = 3.3;
  call.settlement = date_to_serial(15, 3, 2016);
  const int32_t previous = date_to_serial(26, 1, 2016);
  call.previous = &previous;
  int32_t err = -1;
  EXPECT_NEAR(call.price(0.005, &err), 265.925425, 1e-9);
  EXPECT_NEAR(call.yield(265.925425, &err), 0.005, 1e-8);
  EXPECT_EQ(err, 0);
  // 1 + t * y = 0 has no price.
  EXPECT_EQ(call.price(-365.0 / 133.0, &err), -100.0);
  EXPECT_EQ(err, 1);
}

TEST(IlgExDividend, SevenBusinessDaysOrTheOverride) {
  // 26 July 2005 is a Tuesday; seven business days earlier is Friday 15 July
  // and the ex-dividend date the day after, so Friday settles cum-dividend
  // and Monday 18 July ex-dividend with accrued 2.8952 * (173/181 - 1). An
  // override of 10 counts business days (ex from Tuesday 12 July); one
  // below 1 calendar days after the coupon date (-3: 23 July).
  const int32_t ten = 10, minus_three = -3;
  struct Case { const int32_t* days; int32_t cum, ex; } const cases[] = {
      {nullptr, date_to_serial(15, 7, 2005), date_to_serial(18, 7, 2005)},
      {&ten, date_to_serial(11, 7, 2005), date_to_serial(12, 7, 2005)},
      {&minus_three, date_to_serial(22, 7, 2005), date_to_serial(23, 7, 2005)},
  };
  IlgCall call;
  int32_t err = -1;
  for (const Case& c : cases) {
    call.exdiv_override = c.days, call.settlement = c.cum;
    EXPECT_GT(call.accrued(&err), 0.0);
    call.settlement = c.ex;
    EXPECT_LT(call.accrued(&err), 0.0);
    EXPECT_EQ(err, 0);
  }
  call.exdiv_override = nullptr, call.settlement = date_to_serial(18, 7, 2005);
  EXPECT_NEAR(call.accrued(&err), -0.127965, 1e-12);
  {
    const Table t(call);  // the July coupon is no longer the buyer's
    ASSERT_EQ(t.rows, 23);
    EXPECT_EQ(t.amounts[0], 0.0);
    EXPECT_GT(t.amounts[1], 0.0);
  }
  // At one settlement, ex-dividend (by an override) against cum-dividend:
  // the dirty prices differ by the July coupon discounted over the 8 days
  // left, 2.8952 * v^(8/181), v = 1 / (1.0075 * sqrt(1.03)).
  const int32_t one_day = 1, twenty_days_earlier = -20;
  call.exdiv_override = &one_day;
  const double cum = call.price(0.015, &err) + call.accrued(&err);
  call.exdiv_override = &twenty_days_earlier;
  const double ex = call.price(0.015, &err) + call.accrued(&err);
  EXPECT_NEAR(cum - ex, 2.8952 * std::pow(1.0 / (1.0075 * std::sqrt(1.03)), 8.0 / 181.0), 3e-6);
}

TEST(IlgCashflows, ProjectedFromTheLatestIndexAndRepriceTheBond) {
  IlgCall call;
  int32_t err = -1;
  {
    const Table t(call);
    ASSERT_EQ(t.rows, 23);  // July 2005 and the 22 coupons to July 2016
    EXPECT_EQ(t.dates[0], date_to_serial(26, 7, 2005));
    EXPECT_EQ(t.amounts[0], 2.8952);
    // 1.25 * 188.9/81.6 * 1.03^(4/12) on 26 January 2006, then half a year of 3 % per row.
    EXPECT_NEAR(t.amounts[1], 2.922340972304498, 1e-9);
    EXPECT_EQ(t.dates[15], date_to_serial(26, 1, 2013));  // a Saturday, unadjusted
    EXPECT_EQ(t.dates[22], call.maturity);
    EXPECT_NEAR(t.redemption, 318.8685841975839, 1e-8);  // 100 * the last row's factor
    // The table reprices the bond at the DMO discount factor.
    const double v = 1.0 / ((1.0 + 0.0075) * std::sqrt(1.03));
    double dirty = t.redemption * std::pow(v, 133.0 / 181.0 + 22);
    for (int32_t i = 0; i < t.rows; ++i) dirty += t.amounts[i] * std::pow(v, 133.0 / 181.0 + i);
    EXPECT_NEAR(std::floor(dirty * 1e6 + 0.5) / 1e6 - 0.767788, call.price(0.015, &err), 1e-6);
  }
  // On request payments move to the next business day: Monday 28 January 2013.
  call.pay_on_business_day = 1;
  EXPECT_EQ(Table(call).dates[15], date_to_serial(28, 1, 2013));
}

TEST(IlgCashflows, BrokenFinalPeriodCarriesItsFraction) {
  // An off-cycle schedule: previous 10 September 2015, next 10 March 2016,
  // maturity 26 July 2016. The March coupon 2.9 fixes the ratio 2.32; the
  // final row runs 138 of 184 days and grows by 1.03^(4/12):
  // 1.25 * 2.32 * 1.03^(1/3) * 138/184 = 2.196536; redemption 234.297179.
  IlgCall call;
  call.next_amount = 2.9;
  call.settlement = date_to_serial(15, 1, 2016);
  const int32_t previous = date_to_serial(10, 9, 2015), next = date_to_serial(10, 3, 2016);
  call.previous = &previous;
  call.next = &next;
  const Table t(call);
  ASSERT_EQ(t.rows, 2);
  EXPECT_EQ(t.dates[1], call.maturity);
  EXPECT_NEAR(t.amounts[1], 2.1965360540586647, 1e-9);
  EXPECT_NEAR(t.redemption, 234.2971790995909, 1e-8);
}

TEST(IlgArguments, BadInputsFailWithErrorOne) {
  static const int32_t july05 = date_to_serial(26, 7, 2005);
  struct Bad { const char* what; void (*spoil)(IlgCall&); } const cases[] = {
      {"zero coupon", [](IlgCall& c) { c.real_coupon = 0.0; }},
      {"zero base", [](IlgCall& c) { c.base = 0.0; }},
      {"inflation of -50 %", [](IlgCall& c) { c.inflation = -0.5; }},
      {"negative holiday count", [](IlgCall& c) { c.holiday_count = -1; }},
      {"previous not before next", [](IlgCall& c) { c.previous = c.next = &july05; }},
      // A base RPI of 3.4e-322 makes the index ratio overflow; one of 3.56e-306
      // leaves it finite (5.3e307) but not the uplifted redemption (both found
      // by fuzzing).
      {"denormal base", [](IlgCall& c) { c.base = 3.3596463917204765e-322; }},
      {"redemption overflows", [](IlgCall& c) { c.base = 3.5604468283196269e-306; }},
  };
  for (const Bad& c : cases) {
    IlgCall call;
    c.spoil(call);
    int32_t err = 0, *dates = &err;
    double* amounts = reinterpret_cast<double*>(&err), redemption = -12345.0;
    EXPECT_EQ(call.price(0.015, &err), -1.0) << c.what;
    EXPECT_EQ(err, 1) << c.what;
    EXPECT_EQ(call.yield(250.0, &err), -1.0) << c.what;
    EXPECT_EQ(err, 1) << c.what;
    EXPECT_EQ(call.cashflows(&dates, &amounts, &redemption, &err), 0) << c.what;
    EXPECT_EQ(err, 1) << c.what;
    EXPECT_TRUE(dates == nullptr && amounts == nullptr && redemption == -12345.0) << c.what;
  }
  IlgCall call;
  int32_t err = 0;
  const int32_t bad_month = -5;
  EXPECT_EQ(call.price(std::nan(""), &err), -1.0);
  EXPECT_EQ(err, 1);
  EXPECT_EQ(call.price2(0.015, &bad_month, &err), -1.0);
  EXPECT_EQ(err, 1);
  call.inflation = -0.49;
  EXPECT_GT(call.price(0.015, &err), 0.0);
  EXPECT_EQ(err, 0);
  // Any real coupon above 0 is a coupon: at 150 % the 22 later coupons of
  // DebtManagementOfficeFormula are 60 times larger, the dirty price
  // v^(133/181) (2.8952 + sum_k 75 f_k v^k + 100 f_22 v^22) = 3630.341236,
  // clean 3629.573448 (Python, same f_k and v).
  IlgCall rich;
  rich.real_coupon = 1.5;
  EXPECT_NEAR(rich.price(0.015, &err), 3629.573448, 1e-6);
  EXPECT_EQ(err, 0);
  // A given period that settlement has passed (26 January to 26 July 2005,
  // settled 15 August): ex the July coupon, accrued 2.8952 (201/181 - 1).
  const int32_t january05 = date_to_serial(26, 1, 2005);
  IlgCall passed;
  passed.previous = &january05, passed.next = &july05;
  passed.settlement = date_to_serial(15, 8, 2005);
  EXPECT_NEAR(passed.accrued(&err), 2.8952 * 20 / 181, 1e-6);
  EXPECT_TRUE(std::isfinite(passed.price(0.015, &err)));
  EXPECT_EQ(err, 0);
  call.settlement = call.maturity + 1;
  EXPECT_EQ(call.accrued(&err), -1.0);
  EXPECT_EQ(err, 1);
  KVLilgcshflw_free(nullptr, nullptr);
}

}  // namespace
