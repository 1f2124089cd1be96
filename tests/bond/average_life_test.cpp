// KVLbal: average life of sinking funds worked by hand.
#include <gtest/gtest.h>

#include "bond/quoted_bond.h"

namespace kbond::testing {
namespace {

double average_life(const QuotedBond& b, int32_t* error = nullptr) {
  return KVLbal(b.maturity(), b.settlement, b.p_dated(), b.p_first(), b.p_type(), b.p_freq(),
                b.n_freq(), b.p_redemption(), b.p_factor(), b.p_sink_dates(), b.n_sink(),
                b.p_sink_ends(), b.n_sink_ends(), b.p_sink_amounts(), nullptr, error);
}

// A 6 % bond maturing 15 June 2034, settled on its 15 June 2024 coupon
// date, repaying 10 % each June 2026..2033 and 20 % at maturity:
//   0.1 x (2 + 3 + ... + 9) + 0.2 x 10 = 4.4 + 2.0 = 6.4 years.
TEST(AverageLife, SinkingFundByHand) {
  QuotedBond sinker;
  sinker.type = 500;
  sinker.matures(civil_serial(2034, 6, 15)).settles(civil_serial(2024, 6, 15));
  sinker.factor = 1.0;
  sinker.sink_dates = {civil_serial(2026, 6, 15)};
  sinker.sink_amounts = {0.10};
  sinker.frequency = 2;
  sinker.sink_frequency = 1;
  int32_t err = -1;
  EXPECT_NEAR(average_life(sinker, &err), 6.4, 1e-12);
  EXPECT_EQ(err, 0);
  // The 2026 repayment ends the run after one date (end 15 June 2026):
  // 0.1 x 2 + 0.9 x 10 = 9.2 years.
  sinker.sink_ends = {civil_serial(2026, 6, 15)};
  EXPECT_NEAR(average_life(sinker), 9.2, 1e-12);
  // Settled after two repayments (16 June 2027): the 80 % still out is
  // repaid 0.1 at 1 .. 6 years less a day, 0.2 at 7: measured in periods
  // from settlement, t0 = 182 / 183 of a period (16 Jun..15 Dec 2027).
  QuotedBond later = sinker;
  later.sink_ends.clear();
  later.settles(civil_serial(2027, 6, 16));
  const double t0 = 182.0 / 183.0;
  double weighted = 0.0;
  for (int year = 1; year <= 6; ++year) weighted += 0.1 * (t0 + 2 * year - 1);
  weighted += 0.2 * (t0 + 13);
  EXPECT_NEAR(average_life(later), weighted / 0.8 / 2, 1e-12);
}

// Without a sinking fund the life is the time to maturity: a Treasury
// settled 12 March 2024, maturing 15 November 2034: 64 / 182 of a period
// to 15 May 2024, then 21 periods.
TEST(AverageLife, BulletIsTimeToMaturity) {
  QuotedBond note;
  note.matures(civil_serial(2034, 11, 15)).settles(civil_serial(2024, 3, 12));
  EXPECT_NEAR(average_life(note), (64.0 / 182.0 + 21.0) / 2.0, 1e-12);
}

// A broken last period: coupons each 15 February and 15 August from the
// first coupon, maturity 1 October 2039. Settled 15 August 2039 the whole
// face is repaid after the broken period: 47 days of the 184-day period
// 15 Aug 2039 .. 15 Feb 2040, in periods of half a year.
TEST(AverageLife, OddLastPeriod) {
  QuotedBond bond;
  bond.matures(civil_serial(2039, 10, 1)).settles(civil_serial(2039, 3, 1));
  bond.dated_date = civil_serial(2024, 2, 20);
  bond.first_coupon = civil_serial(2025, 2, 15);
  // 1 March .. 15 August 2039 is 167 days of the 181-day period from
  // 15 February, then 47 of 184 days to maturity.
  EXPECT_NEAR(average_life(bond), (167.0 / 181.0 + 47.0 / 184.0) / 2.0, 1e-12);
}

TEST(AverageLife, FailureReturnsZero) {
  QuotedBond bond;
  bond.matures(civil_serial(2034, 11, 15)).settles(-3);
  int32_t err = 0;
  EXPECT_EQ(average_life(bond, &err), 0.0);
  EXPECT_EQ(err, 1);
  bond.settles(civil_serial(2024, 3, 12));
  bond.factor = 0.5;  // a schedule without its dates
  EXPECT_EQ(average_life(bond, &err), 0.0);
  EXPECT_EQ(err, 1);
}

}  // namespace
}  // namespace kbond::testing
