// Cash-and-carry measures on a 5 % U.S. Treasury maturing 15 November 2030
// (coupons 15 May / 15 November, actual/actual accrual, money-market basis
// 360) and a 7 % Gilt (7 June / 7 December, basis 365). Expected values are
// worked by hand in the comments from the repo desk's cash flows.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <utility>

#include "futures_test_support.h"

using futures_test::serial;

namespace {

// One bond and the carry exports' arguments, defaults NULL.
struct CarryBond {
  double coupon = 0.05;
  int32_t maturity = serial(2030, 11, 15), type = 0, settlement = serial(2009, 12, 1);
  const double* factor = nullptr;
  const int32_t *first_coupon = nullptr, *sink_dates = nullptr;
  int32_t n_sink = 0;
  const double *sink_amounts = nullptr, *basis = nullptr;
  const int32_t *days = nullptr, *mode = nullptr, *date_rule = nullptr;
  int32_t error = -12345;

// The arguments every carry export shares after its own.
#define KBOND_CARRY_REST                                                                                        \
  nullptr, first_coupon, &type, nullptr, 0, nullptr, factor, sink_dates, n_sink, nullptr, 0, sink_amounts, nullptr, \
      nullptr, basis, days, mode, date_rule, nullptr, 0, nullptr, &error
  double carry(int32_t end, double price, double repo) {
    return KVLbcarry1(&coupon, 1, &maturity, 1, settlement, end, price, repo, KBOND_CARRY_REST);
  }
  double forward(int32_t end, double price, double repo) {
    return KVLbfwd1(&coupon, 1, &maturity, 1, settlement, end, price, repo, KBOND_CARRY_REST);
  }
  double implied_futures(int32_t delivery, double price, double repo, double cf, const double* reinvest) {
    return KVLbifutp1(&coupon, 1, &maturity, 1, settlement, price, repo, cf, delivery, reinvest, KBOND_CARRY_REST);
  }
  double net_basis(int32_t end, double price, double repo, double futures, double cf) {
    return KVLbnbasis1(&coupon, 1, &maturity, 1, settlement, end, price, repo, futures, cf, KBOND_CARRY_REST);
  }
  double implied_repo(int32_t delivery, double price, double futures, double cf, const double* reinvest) {
    return KVLbirepo1(&coupon, 1, &maturity, 1, settlement, price, futures, cf, delivery, reinvest, KBOND_CARRY_REST);
  }
#undef KBOND_CARRY_REST
};

// Repaying 5 % of the original face at par on every coupon date from
// 15 November 2008, quoted on the outstanding face.
CarryBond sinking_fund(CarryBond bond) {
  static const double factor = 1.0;  // outstanding computed from the schedule
  static const int32_t sink_dates[] = {serial(2008, 11, 15)};
  static const double amounts[] = {0.05};
  bond.factor = &factor;
  bond.sink_dates = sink_dates;
  bond.n_sink = 1;
  bond.sink_amounts = amounts;
  return bond;
}

}  // namespace

// 1 December 2009 to 1 March 2010 (90 days) holds no coupon. Accrued:
// 16 of the 181 days from 15 November 2009 to 15 May 2010 at settlement,
// 106 at the end. Simple interest at 3 % over 90/360:
//   forward = (price + AI_s) (1 + r 90/360) - AI_e.
TEST(CarryMeasures, ForwardWithoutCouponIsFinancedFullPrice) {
  CarryBond bond;
  const double ai_s = 2.5 * 16.0 / 181.0, ai_e = 2.5 * 106.0 / 181.0, basis = 365.0;
  const double expected = (98.5 + ai_s) * (1.0 + 0.03 * 90.0 / 360.0) - ai_e;
  const int32_t end = serial(2010, 3, 1), whole_period = 2, ten = 10;
  EXPECT_NEAR(bond.forward(end, 98.5, 0.03), expected, 1e-10);
  EXPECT_NEAR(bond.carry(end, 98.5, 0.03), 98.5 - expected, 1e-10);
  EXPECT_EQ(bond.error, 0);
  // Interest on the whole period (mode 2) is the same without a coupon.
  bond.mode = &whole_period;
  EXPECT_NEAR(bond.forward(end, 98.5, 0.03), expected, 1e-10);
  // A day basis of 365 given by the caller.
  bond.basis = &basis;
  EXPECT_NEAR(bond.forward(end, 98.5, 0.03), (98.5 + ai_s) * (1.0 + 0.03 * 90.0 / 365.0) - ai_e, 1e-10);
  // The period may end some days before the end date.
  CarryBond shortened;
  shortened.days = &ten;
  EXPECT_DOUBLE_EQ(shortened.carry(serial(2010, 3, 11), 98.5, 0.03), CarryBond{}.carry(end, 98.5, 0.03));
}

// 1 April to 1 July 2010 holds the 15 May coupon of 2.5. Accrued 137/181
// at settlement, 47/184 at the end (15 May to 15 November has 184 days).
// Simple financing of A = price + AI_s compounds at the coupon: 44 days,
// then 47 days on A plus the interest so far.
TEST(CarryMeasures, CouponInsideThePeriod) {
  CarryBond bond;
  bond.settlement = serial(2010, 4, 1);
  const int32_t end = serial(2010, 7, 1), plain = 0, reinvest = 1, whole_period = 2, continuous = 5;
  const double price = 101.25, r = 0.04, ai_s = 2.5 * 137.0 / 181.0, ai_e = 2.5 * 47.0 / 184.0, a = price + ai_s;
  const double interest1 = a * r * 44.0 / 360.0, interest2 = (a + interest1) * r * 47.0 / 360.0;
  const double carry = ai_e - ai_s + 2.5 - interest1 - interest2;
  // Continuous compounding (mode 5, reinvesting) at the semiannual rate re-expressed: 2 ln(1.02).
  const double rc = 2.0 * std::log(1.0 + r / 2.0);
  const std::pair<const int32_t*, double> modes[] = {
      {&plain, carry},
      {&reinvest, carry + 2.5 * r * 47.0 / 360.0},                      // the coupon reinvested for 47 days
      {&whole_period, ai_e - ai_s + 2.5 - a * r * 91.0 / 360.0},       // A r 91/360, no compounding
      {&continuous, ai_e - ai_s + 2.5 * std::exp(rc * 47.0 / 360.0) - a * (std::exp(rc * 91.0 / 360.0) - 1.0)},
  };
  const double cf = 0.9123, negative = -1.0, reinvest_at = 0.01;
  for (const auto& [mode, expected] : modes) {
    SCOPED_TRACE(*mode);
    bond.mode = mode;
    EXPECT_NEAR(bond.carry(end, price, r), expected, 1e-10);
    // The forward is the price less the carry and the implied futures price
    // at factor 1 (a negative reinvestment rate means the repo rate); the
    // net basis at the implied futures price vanishes.
    const double forward = bond.forward(end, price, r), implied = bond.implied_futures(end, price, r, cf, nullptr);
    EXPECT_NEAR(forward, price - expected, 1e-10);
    EXPECT_DOUBLE_EQ(bond.implied_futures(end, price, r, 1.0, &negative), forward);
    EXPECT_NEAR(implied, forward / cf, 1e-12);
    EXPECT_NEAR(bond.net_basis(end, price, r, implied, cf), 0.0, 1e-10);
    // The implied repo gives back the rate (to the solver's 1e-6 of face),
    // negative rates and a separate reinvestment rate included.
    for (double rate : {r, -0.02}) {
      const double futures = bond.implied_futures(end, price, rate, cf, &reinvest_at);
      EXPECT_NEAR(bond.implied_repo(end, price, futures, cf, &reinvest_at), rate, 2e-5) << rate;
    }
    EXPECT_EQ(bond.error, 0);
  }
}

TEST(CarryMeasures, LastGridDateBeyondTheLastSerial) {
  // A 5 % bond (type 42, actual/365) maturing on the last date the library
  // knows, 4 September 6896, with a 29 June / 29 December grid from its
  // first coupon: the grid date after 29 June 6896 does not exist. The
  // coupon walk used to start over from the beginning there, for ever, and
  // the last period counted as a whole one (found by fuzzing).
  CarryBond bond;
  bond.maturity = 1825000;
  bond.type = 42;
  bond.settlement = bond.maturity - 200;  // 16 February 6896
  const int32_t first_coupon = 22826;
  bond.first_coupon = &first_coupon;
  const double carry = bond.carry(bond.maturity, 100.0, 0.0);
  ASSERT_EQ(bond.error, 0);
  // At a zero repo: the 29 June coupon (2.5) and the broken last one
  // (67 days, about 0.92), the accrued at the end (at most that again), less
  // the 49 days accrued at settlement (0.67). A whole last coupon would
  // put it above 5.
  EXPECT_GT(carry, 2.5 + 0.9 - 0.68);
  EXPECT_LT(carry, 2.5 + 2 * 0.92 - 0.67);
  // The implied repo walks the same coupons at every trial rate. Bought at
  // 100 and delivered at 99: the financing uses up what the carry earned
  // beyond that point, about 2.64 on 100.67 over 200 days, near 4.8 %.
  const double repo = bond.implied_repo(bond.maturity, 100.0, 99.0, 1.0, nullptr);
  ASSERT_EQ(bond.error, 0);
  EXPECT_NEAR(repo, 2.64 / 100.67 * 365.0 / 200.0, 0.002);
}

// A Gilt settling 1 April 2010 and carried to 2 June 2010: the 7 June
// coupon went ex on 28 May (seven business days back from Monday 7 June is
// Thursday 27 May, plus a day). The forward buyer gets the gilt ex-coupon;
// the coupon (3.5) stays with the position, worth 3.5 / (1 + r 5/365) on
// 2 June. Accrued at settlement: 115 of the 182 days since 7 December;
// at the end, minus 5 of 182.
TEST(CarryMeasures, EndDateInTheExDividendPeriod) {
  CarryBond bond;
  bond.coupon = 0.07;
  bond.type = 40;
  bond.maturity = serial(2020, 6, 7);
  bond.settlement = serial(2010, 4, 1);
  const double price = 112.0, r = 0.045, ai_s = 3.5 * 115.0 / 182.0, ai_e = -3.5 * 5.0 / 182.0;
  const double financing = (price + ai_s) * r * 62.0 / 365.0, coupon = 3.5 / (1.0 + r * 5.0 / 365.0);
  EXPECT_NEAR(bond.carry(serial(2010, 6, 2), price, r), ai_e - ai_s + coupon - financing, 1e-10);
  EXPECT_EQ(bond.error, 0);
  // Settling already ex-dividend: the coupon is the seller's.
  bond.settlement = serial(2010, 5, 31);
  const double ai_s2 = -3.5 * 7.0 / 182.0;
  EXPECT_NEAR(bond.carry(serial(2010, 6, 2), price, r), ai_e - ai_s2 - (price + ai_s2) * r * 2.0 / 365.0, 1e-10);
}

TEST(CarryMeasures, BondQuotedOnOutstandingFace) {
  CarryBond sinking = sinking_fund(CarryBond{});
  // April to July 2010 crosses the 15 May repayment. At settlement 85 % is
  // outstanding (three repayments made), 80 % at the end. The position
  // costs (price + AI_s) x 0.85, receives the coupon on 85 % and 5 % of
  // face at par on 15 May, and holds 80 % at the end; the forward is the
  // remaining cost per outstanding face, less the accrued interest.
  sinking.settlement = serial(2010, 4, 1);
  const double r = 0.04, ai_s = 0.025 * 137.0 / 181.0, ai_e = 0.025 * 47.0 / 184.0;
  const double cash = (1.0125 + ai_s) * 0.85, fin1 = cash * r * 44.0 / 360.0;
  const double fin2 = (cash + fin1) * r * 47.0 / 360.0, income = 0.025 * 0.85 + 0.05;
  const double forward = ((cash + fin1 + fin2 - income) / 0.80 - ai_e) * 100.0;
  const int32_t end = serial(2010, 7, 1);
  EXPECT_NEAR(sinking.forward(end, 101.25, r), forward, 1e-9);
  EXPECT_EQ(sinking.error, 0);
  EXPECT_NEAR(sinking.carry(end, 101.25, r), 101.25 - forward, 1e-9);
  EXPECT_NEAR(sinking.implied_repo(end, 101.25, forward / 0.95, 0.95, nullptr), r, 2e-5);
}

// Per 100 outstanding a sinking fund carries as the plain bond over a
// period without a coupon or repayment (December to March), and carried to
// its maturity, where the face still outstanding is redeemed to the forward
// buyer as for a bullet bond, with no principal counted as received.
TEST(CarryMeasures, SinkingFundWithoutARepaymentCarriesAsThePlainBond) {
  CarryBond ending;
  ending.maturity = serial(2011, 11, 15);
  ending.settlement = serial(2011, 6, 1);  // 70 % outstanding after May 2011
  for (const auto& [plain, end] :
       {std::pair{CarryBond{}, serial(2010, 3, 1)}, {ending, ending.maturity - 1}, {ending, ending.maturity}}) {
    CarryBond bullet = plain, sinking = sinking_fund(plain);
    EXPECT_NEAR(sinking.carry(end, 99.5, 0.04), bullet.carry(end, 99.5, 0.04), 1e-10) << end;
    EXPECT_EQ(sinking.error, 0);
    EXPECT_NEAR(sinking.forward(end, 99.5, 0.04), bullet.forward(end, 99.5, 0.04), 1e-10) << end;
  }
}

TEST(CarryMeasures, DateRules) {
  CarryBond bond, monday;
  const int32_t rule1 = 1, rule2 = 2, rule3 = 3, saturday = serial(2010, 2, 27), march1 = serial(2010, 3, 1);
  // Rule 2 refuses a Saturday end date.
  bond.date_rule = &rule2;
  bond.carry(saturday, 98.5, 0.03);
  EXPECT_EQ(bond.error, 160);
  bond.carry(march1, 98.5, 0.03);
  EXPECT_EQ(bond.error, 0);
  // Rule 1 rolls a Saturday settlement (28 November 2009) and end date to Monday.
  bond.date_rule = &rule1;
  bond.settlement = serial(2009, 11, 28);
  monday.settlement = serial(2009, 11, 30);
  EXPECT_DOUBLE_EQ(bond.carry(saturday, 98.5, 0.03), monday.carry(march1, 98.5, 0.03));
  EXPECT_EQ(bond.error, 0);
  // Rule 3 fails at once, whatever else is wrong, except for the implied
  // repo, which goes on with Saturday 27 February counted as Monday 1 March.
  int32_t error = 0;
  EXPECT_EQ(KVLbcarry1(nullptr, 0, nullptr, 0, 0, 0, 0.0, 0.0, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                       nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &rule3,
                       nullptr, 0, nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 460);
  bond.date_rule = &rule3;
  bond.forward(march1, 98.5, 0.03);
  EXPECT_EQ(bond.error, 460);
  bond.implied_futures(march1, 98.5, 0.03, 0.9, nullptr);
  EXPECT_EQ(bond.error, 460);
  const double implied = monday.implied_futures(march1, 98.5, 0.03, 0.9, nullptr);
  bond.settlement = serial(2009, 11, 30);
  EXPECT_NEAR(bond.implied_repo(saturday, 98.5, implied, 0.9, nullptr), 0.03, 2e-5);
  EXPECT_EQ(bond.error, 0);
}

TEST(CarryMeasures, BadInputs) {
  const int32_t far_back = INT32_MIN, far_on = INT32_MAX, march1 = serial(2010, 3, 1);
  struct Bad { const char* what; std::function<double(CarryBond&)> call; double value; int32_t code; } const cases[] = {
      {"end after maturity", [](CarryBond& b) { return b.carry(serial(2031, 1, 1), 98.5, 0.03); }, -1.0, 160},
      {"end not after settlement", [](CarryBond& b) { return b.forward(serial(2009, 12, 1), 98.5, 0.03); }, -999.0, 160},
      {"delivery before settlement",
       [](CarryBond& b) { return b.implied_repo(serial(2009, 11, 1), 98.5, 110.0, 0.9, nullptr); }, -999.0, 160},
      {"zero factor", [&](CarryBond& b) { return b.implied_futures(march1, 98.5, 0.03, 0.0, nullptr); }, -1.0, 401},
      // (price - carry) / 5e-324 and an invoice price of 1e300 x 1e300 overflow.
      {"denormal factor", [&](CarryBond& b) { return b.implied_futures(march1, 101.0, 0.04, 5e-324, nullptr); }, -1.0, 1},
      {"invoice price overflows", [&](CarryBond& b) { return b.net_basis(march1, 98.5, 0.03, 1e300, 1e300); }, -1.0, 1},
      {"price not a number", [&](CarryBond& b) { return b.carry(march1, std::nan(""), 0.03); }, -1.0, 1},
      // Days before the end date that would end the period before settlement (no overflow).
      {"INT32_MAX days", [&](CarryBond& b) { b.days = &far_on; return b.carry(march1, 98.5, 0.03); }, -999.0, 160},
      {"not a bond type", [&](CarryBond& b) { b.type = 14; return b.carry(march1, 98.5, 0.03); }, -1.0, 1},
      // No repo rate reproduces an absurd futures price: all three brackets fail.
      {"absurd futures price", [&](CarryBond& b) { return b.implied_repo(march1, 98.5, 1e6, 0.9, nullptr); }, -999.0, 1},
  };
  for (const Bad& c : cases) {
    CarryBond bond;
    EXPECT_EQ(c.call(bond), c.value) << c.what;
    EXPECT_EQ(bond.error, c.code) << c.what;
  }
  CarryBond bond;
  bond.days = &far_back;  // the period would end after maturity: capped there
  bond.carry(march1, 98.5, 0.03);
  EXPECT_EQ(bond.error, 0);
  int32_t error = 0;
  EXPECT_EQ(KVLbcarry(nullptr, 1, nullptr, 1, serial(2009, 12, 1), march1, 98.5, 0.03, nullptr, nullptr, nullptr,
                      nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, &error),
            -1.0);
  EXPECT_EQ(error, 1);
  // Short form with a NULL error pointer.
  const double c = 0.05;
  const int32_t m = serial(2030, 11, 15), t = 0;
  EXPECT_DOUBLE_EQ(KVLbfwd(&c, 1, &m, 1, serial(2009, 12, 1), march1, 98.5, 0.03, nullptr, nullptr, &t, nullptr, 0,
                           nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                           nullptr, nullptr),
                   CarryBond{}.forward(march1, 98.5, 0.03));
}
