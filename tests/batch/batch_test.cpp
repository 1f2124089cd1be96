// KVLbbatch against the single-bond exports, row by row; thread counts that
// must not change a byte; calls refused before any row is valued.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>

#include "batch/batch_table.h"
#include "bond/quoted_bond.h"

namespace {

using namespace kbond_batch_test;
using kbond::testing::QuotedBond;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// What the single exports give for row i, in the batch's column order; a row
// stops at its first failure and the columns after it stay NaN.
void expected_row(const Table& t, int32_t i, Results& out) {
  for (auto& col : out.columns) col[i] = kNaN;
  out.errors[i] = out.failed[i] = 0;
  const bool given_price = t.kinds[i] == KVL_BATCH_GIVEN_PRICE;
  if (!given_price && t.kinds[i] != KVL_BATCH_GIVEN_YIELD) {
    out.errors[i] = KVL_ERR_OUT_OF_SET;
    return;
  }
  QuotedBond b(t.types[i], t.coupons[i], t.maturities[i], t.settlements[i]);
  if (t.frequencies[i]) b.frequency = {t.frequencies[i]};
  b.redemption = t.redemptions[i];
  const int32_t modified = 0, macaulay = 1;
  double y = t.market[i];
  int32_t e = 0;
  const std::function<double()> measures[] = {
      [&] { return given_price ? t.market[i] : b.price(y, &e); },
      [&] { return given_price ? (y = b.yield(t.market[i], &e)) : y; },
      [&] { return b.accrued(&e); },
      [&] { return b.duration(y, &modified, &e); },
      [&] { return b.duration(y, &macaulay, &e); },
      [&] { return b.convexity(y, &e); },
      [&] { return b.value_of_bp(y, nullptr, &e); }};
  for (int32_t col = 0; col < 7; ++col) {
    out.columns[col][i] = measures[col]();
    if (e != 0) {
      out.errors[i] = e;
      out.failed[i] = 1 << col;
      return;
    }
  }
}

TEST(Batch, EveryRowEqualsTheSingleExports) {
  const Table t = mixed_table();
  Results expected(t.rows()), got(t.rows());
  int32_t failures = 0;
  for (int32_t i = 0; i < t.rows(); ++i) {
    expected_row(t, i, expected);
    failures += expected.errors[i] != 0;
  }
  int32_t error = -7;
  EXPECT_EQ(run_batch(t, 2, got, &error), failures);
  EXPECT_EQ(error, 0);
  for (int32_t i = 0; i < t.rows(); ++i) {
    SCOPED_TRACE(testing::Message() << "row " << i << " type " << t.types[i]);
    EXPECT_EQ(got.errors[i], expected.errors[i]);
    EXPECT_EQ(got.failed[i], expected.failed[i]);
    for (int c = 0; c < 7; ++c)
      EXPECT_EQ(std::memcmp(&got.columns[c][i], &expected.columns[c][i], 8), 0)
          << "column " << c << ": " << got.columns[c][i] << " vs " << expected.columns[c][i];
  }
  // The table reaches every kind of failure it was built for.
  for (int32_t code : {1, 350, 460})
    EXPECT_NE(std::count(expected.errors.begin(), expected.errors.end(), code), 0) << code;
  EXPECT_GT(t.rows() - failures, 300);
}

TEST(Batch, ThreadCountsGiveIdenticalBytes) {
  const Table t = mixed_table(3);
  Results one(t.rows());
  int32_t error = 0;
  const int32_t failures = run_batch(t, 1, one, &error);
  for (int32_t threads : {2, 8, 0}) {
    Results many(t.rows());
    EXPECT_EQ(run_batch(t, threads, many, &error), failures);
    EXPECT_TRUE(many == one) << threads << " threads";
  }
  // Measures not asked for are neither computed nor written.
  Results some(t.rows());
  run_batch(t, 2, some, &error, KVL_BATCH_ACCRUED | KVL_BATCH_PVBP);
  EXPECT_EQ(some.columns[5], std::vector<double>(t.rows(), -12345.0));
  for (int32_t i = 0; i < t.rows(); ++i)
    if (one.errors[i] == 0) {
      EXPECT_EQ(some.columns[2][i], one.columns[2][i]) << i;
    }
}

TEST(Batch, RefusedCallsWriteNothing) {
  const Table t = mixed_table();
  double out[7] = {};
  int32_t row_error = -7;
  struct Case {
    const char* what;
    int32_t n, measures, threads, kind;
    bool null_coupons, null_market, null_output;
    int32_t code;
  } cases[] = {
      {"negative rows", -1, kAllMeasures, 1, 0, false, false, false, 60},
      {"negative threads", 1, kAllMeasures, -2, 0, false, false, false, 60},
      {"no measure", 1, 0, 1, 0, false, false, false, 460},
      {"unknown measure bit", 1, 128, 1, 0, false, false, false, 460},
      {"bad market kind", 1, kAllMeasures, 1, 2, false, false, false, 460},
      {"no coupons", 1, kAllMeasures, 1, 0, true, false, false, 50},
      {"no market", 1, KVL_BATCH_PRICE, 1, 0, false, true, false, 50},
      {"no output column", 1, kAllMeasures, 1, 0, false, false, true, 50},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    int32_t error = 0;
    EXPECT_EQ(KVLbbatch(c.n, t.types.data(), c.null_coupons ? nullptr : t.coupons.data(),
                        t.maturities.data(), t.settlements.data(),
                        c.null_market ? nullptr : t.market.data(), c.kind, nullptr, nullptr,
                        nullptr, nullptr, nullptr, c.measures, c.threads, &out[0], &out[1],
                        &out[2], &out[3], &out[4], c.null_output ? nullptr : &out[5], &out[6],
                        &row_error, nullptr, &error),
              -1);
    EXPECT_EQ(error, c.code);
  }
  for (double v : out) EXPECT_EQ(v, 0.0);
  EXPECT_EQ(row_error, -7);
  // Accrued interest alone needs no market column; empty calls return 0.
  EXPECT_EQ(KVLbbatch(1, t.types.data(), t.coupons.data(), t.maturities.data(),
                      t.settlements.data(), nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                      nullptr, KVL_BATCH_ACCRUED, 1, nullptr, nullptr, &out[2], nullptr, nullptr,
                      nullptr, nullptr, nullptr, nullptr, nullptr),
            0);
  EXPECT_GT(out[2], 0.0);
  EXPECT_EQ(KVLbbatch(0, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr,
                      nullptr, nullptr, KVL_BATCH_PRICE, 0, nullptr, nullptr, nullptr, nullptr,
                      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
            -1);
}

}  // namespace
