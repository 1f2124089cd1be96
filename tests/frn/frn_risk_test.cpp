// FRN duration, convexity and the values of a basis point and a 32nd,
// checked against finite differences of the exported price.
#include <gtest/gtest.h>

#include <cmath>

#include "frn_test_support.h"

namespace kbond::frn {
namespace {

using testing::Note;
using testing::ymd;

constexpr double kStep = 1e-5;  // yield step of the central differences

Note quarterly_note(int32_t maturity) {
  static const int32_t quarterly = 4;
  Note note;
  note.rates = {0.05, 0.052, 0.055};
  note.rate_dates = {ymd(2025, 12, 15), ymd(2026, 6, 15), ymd(2027, 6, 15)};
  note.maturity = maturity;
  note.frequency = &quarterly;
  return note;
}

struct Differences {
  double dirty, first, second;  // per unit of par
};

Differences differences(const Note& note, double y) {
  int32_t err = 0;
  const double ai = note.accrued(&err) / 100.0;
  const double mid = note.price(y, &err) / 100.0;
  const double up = note.price(y + kStep, &err) / 100.0;
  const double down = note.price(y - kStep, &err) / 100.0;
  return {mid + ai, (up - down) / (2 * kStep), (up - 2 * mid + down) / (kStep * kStep)};
}

TEST(FrnRisk, DurationAndConvexityMatchFiniteDifferences) {
  for (int32_t maturity : {ymd(2026, 6, 15), ymd(2028, 3, 15), ymd(2035, 12, 15)}) {
    const Note note = quarterly_note(maturity);
    for (double y : {0.02, 0.055, 0.09}) {
      const Differences fd = differences(note, y);
      int32_t err = -1;
      EXPECT_NEAR(note.duration(y, nullptr, &err), -fd.first / fd.dirty, 1e-7);
      EXPECT_EQ(err, 0);
      EXPECT_NEAR(note.convexity(y, &err), fd.second / fd.dirty, 2e-3 * (1.0 + fd.second / fd.dirty));
      EXPECT_EQ(err, 0);
    }
  }
}

TEST(FrnRisk, DurationWithGainTaxFollowsTheTaxedPrice) {
  Note note = quarterly_note(ymd(2030, 6, 15));
  const double gain = 0.3;
  note.gain_tax = &gain;
  const double y = 0.09;  // below par: the gain is taxed
  const Differences fd = differences(note, y);
  int32_t err = -1;
  EXPECT_NEAR(note.duration(y, nullptr, &err), -fd.first / fd.dirty, 1e-7);
}

TEST(FrnRisk, MacaulayUsesTheCallsFrequencyOrTwo) {
  int32_t err = 0;
  const int32_t quarterly = 4, one = 1;
  const int32_t handle = KVLfrntype(0, &quarterly, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, 0, 0, 0, 0, 0, 0, &err);
  Note note = quarterly_note(ymd(2030, 6, 15));
  note.type = handle;
  note.frequency = nullptr;  // quarterly through the type
  const double y = 0.05;
  const double modified = note.duration(y, nullptr, &err);
  // Without a frequency argument the factor is 1 + y/2, not the type's 1 + y/4.
  EXPECT_NEAR(note.duration(y, &one, &err), modified * (1.0 + y / 2.0), 1e-14);
  note.frequency = &quarterly;
  EXPECT_NEAR(note.duration(y, &one, &err), modified * (1.0 + y / 4.0), 1e-14);
  const int32_t zero = 0;
  EXPECT_EQ(note.duration(y, &zero, &err), modified);
  KVLfreefrntype(handle);
}

TEST(FrnRisk, ValueOfABasisPointAndOfA32nd) {
  const Note note = quarterly_note(ymd(2030, 6, 15));
  const double y = 0.05;
  const Differences fd = differences(note, y);
  int32_t err = -1;
  // Price change per 100 for one basis point: -dP/dy (per unit) / 100.
  EXPECT_NEAR(note.value_bp(y, nullptr, &err), -fd.first / 100.0, 1e-8);
  EXPECT_NEAR(note.value_32(y, nullptr, &err), -fd.first / 32.0, 1e-8);
  const double ten = 10.0;
  EXPECT_NEAR(note.value_bp(y, &ten, &err), -fd.first / 10.0, 1e-7);
  for (double bad : {0.0, -1.0, std::nan("")}) {
    EXPECT_EQ(note.value_bp(y, &bad, &err), -999.0);
    EXPECT_EQ(err, 1);
    EXPECT_EQ(note.value_32(y, &bad, &err), -999.0);
    EXPECT_EQ(err, 1);
  }
}

}  // namespace
}  // namespace kbond::frn
