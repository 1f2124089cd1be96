// Sinking funds: equal amortisation (kind 1) and schedules (kind 2), the
// outstanding factor, the amount due on each amortisation date, the next
// amortisation date and the ownership of the copied schedule.
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "engine/bond_desc.h"

namespace kbond::engine {
namespace {

int32_t ymd(int32_t y, int32_t m, int32_t d) { return dates::date_to_serial(d, m, y); }

constexpr double kTight = 1e-12;

// 6% semi-annual generic bond maturing 15 Jun 2030, repaid once a year.
struct SinkingBond {
  double coupon = 0.06;
  int32_t maturity = ymd(2030, 6, 15);
  int32_t type = 500;
  int32_t frequency[2] = {2, 1};
  double factor = 0.0;
  bond_args args;
  explicit SinkingBond(int32_t settlement) {
    args.coupons = &coupon;
    args.n_coupons = 1;
    args.dates = &maturity;
    args.n_dates = 1;
    args.settlement = settlement;
    args.type = &type;
    args.frequency = frequency;
    args.n_frequency = 2;
    args.factor = &factor;
  }
  SinkingBond(const SinkingBond&) = delete;
};

// Prices of these bonds are checked in the bond area; here the schedule itself.
TEST(AmortisationEqual, FiveEqualRepaymentsFromAnOffGridDate) {
  // First sinking date 1 Jun 2026 moves to the coupon date 15 Jun; yearly
  // to maturity 2030, each 1/5 of the face.
  SinkingBond b(ymd(2026, 7, 1));
  b.factor = -1.0;
  const int32_t sink[] = {ymd(2026, 6, 1)};
  b.args.sink_dates = sink;
  b.args.n_sink = 1;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.amort_kind, kEqualAmortisation);
  EXPECT_EQ(first_amortisation_date(d, nullptr), ymd(2026, 6, 15));
  EXPECT_NEAR(d.factor, 0.8, kTight);
  EXPECT_EQ(d.next_sink, ymd(2027, 6, 15));
  EXPECT_NEAR(outstanding_factor(d, ymd(2029, 6, 15)), 0.2, kTight);
  EXPECT_NEAR(outstanding_factor(d, ymd(2030, 6, 15)), 1.0, kTight);  // after maturity
  EXPECT_NEAR(amortisation_due(d, ymd(2028, 12, 15)), 0.0, kTight);   // coupon, no repayment
  EXPECT_NEAR(amortisation_due(d, ymd(2030, 6, 15)), 0.2, kTight);    // remainder at maturity
  bond_release(d);
}

TEST(AmortisationSchedule, AmountsRepeatUntilTheNextEntryOrItsEnd) {
  // 25% on 15 Jun 2027 only (its end date), then 10% a year from 2028,
  // with a 2% premium; maturity repays what is left.
  SinkingBond b(ymd(2028, 6, 15));
  b.factor = 1.0;
  const int32_t sink[] = {ymd(2027, 6, 15), ymd(2028, 6, 15)};
  const int32_t ends[] = {ymd(2027, 6, 15), 0};
  const double amounts[] = {0.25, 0.10};
  const double premium = 0.02;
  b.args.sink_dates = sink;
  b.args.n_sink = 2;
  b.args.sink_ends = ends;
  b.args.n_sink_ends = 2;
  b.args.sink_amounts = amounts;
  b.args.sink_premium = &premium;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_EQ(d.amort_kind, kScheduledAmortisation);
  EXPECT_NEAR(amortisation_due(d, ymd(2027, 6, 15)), 0.255, kTight);
  EXPECT_NEAR(amortisation_due(d, ymd(2028, 6, 15)), 0.102, kTight);
  EXPECT_NEAR(amortisation_due(d, ymd(2029, 6, 15)), 0.102, kTight);
  EXPECT_NEAR(amortisation_due(d, ymd(2030, 6, 15)), 1.0 - 0.255 - 2 * 0.102, kTight);
  // Settling on a repayment date buys the bond after that repayment.
  EXPECT_NEAR(d.factor, 1.0 - 0.255 - 0.102, kTight);
  EXPECT_EQ(d.next_sink, ymd(2029, 6, 15));
  bond_release(d);
  EXPECT_EQ(d.sink_dates_owned, nullptr);
  EXPECT_EQ(d.amort_kind, kNoAmortisation);
  bond_release(d);  // harmless twice
}

TEST(AmortisationSchedule, FactorGivenOrAbsent) {
  SinkingBond b(ymd(2028, 3, 15));
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);  // no factor: no amortisation
  EXPECT_EQ(d.amort_kind, kNoAmortisation);
  EXPECT_EQ(d.next_sink, d.maturity);
  EXPECT_EQ(outstanding_factor(d, ymd(2029, 1, 1)), 1.0);
  const int32_t sink[] = {ymd(2026, 6, 15)};
  const double amounts[] = {0.6};
  b.args.sink_dates = sink;
  b.args.n_sink = 1;
  b.args.sink_amounts = amounts;
  b.factor = 0.75;  // given: kept
  ASSERT_EQ(bond_setup(b.args, d), 0);
  EXPECT_DOUBLE_EQ(d.factor, 0.75);
  bond_release(d);
  // Computed: 60% in 2026 and again in 2027 repays everything before
  // settlement, so nothing is left to value.
  b.factor = 1.0;
  EXPECT_EQ(bond_setup(b.args, d), 1);
  EXPECT_EQ(d.sink_dates_owned, nullptr);
}

// Factors and counts the bond area feeds to the exports are not repeated here.
TEST(AmortisationSchedule, InvalidSinkingArgumentsGiveError1) {
  static const int32_t sink[] = {ymd(2027, 6, 15), ymd(2028, 6, 15)},
                       unordered[] = {ymd(2028, 6, 15), ymd(2027, 6, 15)}, one_end[] = {sink[0]};
  static const double amounts[] = {0.1, 0.1}, negative[] = {0.1, -0.1}, below_par = -0.01;
  void (*const changes[])(SinkingBond&) = {
      [](SinkingBond& b) { b.args.n_sink = 0; },
      [](SinkingBond& b) { b.args.sink_amounts = nullptr; },
      [](SinkingBond& b) { b.args.sink_amounts = negative; },
      [](SinkingBond& b) { b.args.sink_dates = unordered; },
      [](SinkingBond& b) { b.args.sink_premium = &below_par; },
      [](SinkingBond& b) { b.args.sink_ends = one_end; b.args.n_sink_ends = 1; },  // two needed
      [](SinkingBond& b) { b.frequency[1] = 4; },  // more often than coupons
      [](SinkingBond& b) { b.frequency[0] = 4; b.frequency[1] = 3; },  // does not divide
  };
  for (auto change : changes) {
    SinkingBond b(ymd(2026, 3, 15));
    b.factor = 1.0;
    b.args.sink_dates = sink;
    b.args.n_sink = 2;
    b.args.sink_amounts = amounts;
    change(b);
    bond_desc d;
    EXPECT_EQ(bond_setup(b.args, d), 1);
    EXPECT_EQ(d.sink_dates_owned, nullptr);
  }
}

// A cursor walked forward day by day must agree with a fresh evaluation at
// every date, for both kinds: the carry walk relies on it.
TEST(OutstandingCursor, AgreesWithAFreshEvaluationAtEveryDate) {
  for (const bool scheduled : {false, true}) {
    SinkingBond b(ymd(2026, 1, 10));
    b.factor = scheduled ? 1.0 : -1.0;
    const int32_t sink[] = {ymd(2026, 6, 15), ymd(2028, 6, 15)};
    const int32_t ends[] = {ymd(2026, 6, 15), 0};
    const double amounts[] = {0.25, 0.10};
    b.args.sink_dates = sink;
    b.args.n_sink = scheduled ? 2 : 1;
    if (scheduled) {
      b.args.sink_ends = ends;
      b.args.n_sink_ends = 2;
      b.args.sink_amounts = amounts;
    }
    bond_desc d;
    ASSERT_EQ(bond_setup(b.args, d), 0);
    OutstandingCursor cursor(d);
    for (int32_t t = ymd(2026, 1, 1); t <= ymd(2030, 7, 1); ++t) {
      ASSERT_EQ(cursor.at(t), outstanding_factor(d, t)) << "scheduled " << scheduled << " t " << t;
    }
    // 2026 once, then 10% in 2028 and 2029.
    if (scheduled) {
      EXPECT_NEAR(outstanding_factor(d, ymd(2030, 6, 14)), 0.55, kTight);
    }
    bond_release(d);
  }
}

// A monthly schedule that runs to the calendar's last day: the grid date
// after the last one does not exist, and the cursor must stop there.
TEST(OutstandingCursor, ScheduleRunningToTheLastSerialStops) {
  SinkingBond b(ymd(1999, 12, 1));
  b.maturity = dates::kMaxSerial;
  b.frequency[0] = b.frequency[1] = 12;
  b.factor = 1.0;
  const int32_t sink[] = {ymd(2000, 1, 4)};
  const double amount[] = {1e-6};
  b.args.sink_dates = sink;
  b.args.sink_amounts = amount;
  b.args.n_sink = 1;
  const int32_t maturity = b.maturity;
  bond_desc d;
  ASSERT_EQ(bond_setup(b.args, d), 0);
  OutstandingCursor cursor(d);
  const int32_t probes[] = {ymd(2000, 1, 3), ymd(2000, 1, 4), ymd(2100, 1, 4), maturity - 40,
                            maturity - 1};
  for (const int32_t t : probes) {
    const double fresh = outstanding_factor(d, t);
    EXPECT_EQ(cursor.at(t), fresh) << t;
  }
  // One repayment a month, on the 4th, from January 2000 to August 6896.
  const int32_t months = (6896 - 2000) * 12 + 8;
  EXPECT_NEAR(outstanding_factor(d, maturity - 1), 1.0 - months * 1e-6, 1e-9);
  bond_release(d);
}

}  // namespace
}  // namespace kbond::engine
