// A mixed portfolio for the batch tests: every base bond type of the
// catalogue, priced and solved, with rows that fail on purpose, and the
// columns a KVLbbatch call writes.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond_batch_test {

// Serials of civil dates, computed independently of the library.
constexpr int32_t serial(int y, unsigned m, unsigned d) { return kbond::testing::civil_serial(y, m, d); }

constexpr int32_t kAllMeasures = KVL_BATCH_PRICE | KVL_BATCH_YIELD | KVL_BATCH_ACCRUED |
                                 KVL_BATCH_MODIFIED_DURATION | KVL_BATCH_MACAULAY_DURATION |
                                 KVL_BATCH_CONVEXITY | KVL_BATCH_PVBP;

struct Table {
  std::vector<int32_t> types, maturities, settlements, kinds, frequencies, dated, first;
  std::vector<double> coupons, market, redemptions;

  void add(int32_t type, double coupon, int32_t maturity, int32_t settlement, int32_t kind,
           double value, int32_t frequency = 0, double redemption = 100.0) {
    types.push_back(type);
    coupons.push_back(coupon);
    maturities.push_back(maturity);
    settlements.push_back(settlement);
    kinds.push_back(kind);
    market.push_back(value);
    frequencies.push_back(frequency);
    dated.push_back(0);
    first.push_back(0);
    redemptions.push_back(redemption);
  }
  int32_t rows() const { return static_cast<int32_t>(types.size()); }
};

// Every base code (and end-of-month variant) at a yield and at a price, at
// three maturities, then the rows that fail: matured, a zero price, an
// impossible frequency, an unknown type, a bad market kind.
inline Table mixed_table(int32_t repeat = 1) {
  const int32_t* codes = nullptr;
  const int32_t* eom_codes = nullptr;
  const int32_t count = KVLbtable(&codes, &eom_codes, nullptr, nullptr, nullptr, nullptr);
  const int32_t settle = serial(2025, 3, 17);
  const int32_t maturities[] = {serial(2025, 9, 30), serial(2031, 5, 15), serial(2054, 2, 28)};
  Table t;
  for (int32_t r = 0; r < repeat; ++r) {
    for (int32_t i = 0; i < count; ++i) {
      for (int32_t code : {codes[i], eom_codes[i]}) {
        if (code < 0) continue;
        for (int32_t m = 0; m < 3; ++m) {
          const double coupon = 0.0125 + 0.015 * m + 0.0001 * i;
          t.add(code, coupon, maturities[m], settle, KVL_BATCH_GIVEN_YIELD, 0.03 + 0.01 * m);
          t.add(code, coupon, maturities[m], settle, KVL_BATCH_GIVEN_PRICE, 94.5 + 4.0 * m);
        }
      }
    }
    t.add(40, 0.04, serial(2024, 1, 31), settle, KVL_BATCH_GIVEN_YIELD, 0.04);
    t.add(40, 0.04, serial(2030, 1, 31), settle, KVL_BATCH_GIVEN_PRICE, 0.0);
    t.add(0, 0.04, serial(2030, 1, 31), settle, KVL_BATCH_GIVEN_YIELD, 0.04, 5);
    t.add(77, 0.04, serial(2030, 1, 31), settle, KVL_BATCH_GIVEN_PRICE, 99.0);
    t.add(0, 0.04, serial(2030, 1, 31), settle, 7, 99.0);
    t.add(60, 0.05, serial(2030, 1, 31), settle, KVL_BATCH_GIVEN_YIELD, std::nan(""));
  }
  return t;
}

struct Results {
  explicit Results(int32_t n)
      : columns(7, std::vector<double>(n, -12345.0)), errors(n, -7), failed(n, -7) {}
  std::vector<std::vector<double>> columns;  // price .. pvbp, as the measure bits
  std::vector<int32_t> errors, failed;

  bool operator==(const Results& o) const {
    for (size_t c = 0; c < columns.size(); ++c)
      if (std::memcmp(columns[c].data(), o.columns[c].data(), columns[c].size() * 8) != 0)
        return false;
    return errors == o.errors && failed == o.failed;
  }
};

inline int32_t run_batch(const Table& t, int32_t threads, Results& out, int32_t* error,
                         int32_t measures = kAllMeasures) {
  auto& c = out.columns;
  return KVLbbatch(t.rows(), t.types.data(), t.coupons.data(), t.maturities.data(),
                   t.settlements.data(), t.market.data(), 0, t.kinds.data(),
                   t.frequencies.data(), t.dated.data(), t.first.data(), t.redemptions.data(),
                   measures, threads, c[0].data(), c[1].data(), c[2].data(), c[3].data(),
                   c[4].data(), c[5].data(), c[6].data(), out.errors.data(), out.failed.data(),
                   error);
}

}  // namespace kbond_batch_test
