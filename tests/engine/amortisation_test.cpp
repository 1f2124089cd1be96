// Sinking funds: the outstanding factor read by a forward cursor against a
// fresh evaluation. Prices of sinking-fund bonds are checked in the bond area.
#include <gtest/gtest.h>

#include "dates/date_serial.h"
#include "engine/amortisation.h"

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
