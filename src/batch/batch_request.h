// The columns of one portfolio valuation: caller-owned inputs, one value
// per row, and the output columns of the measures asked for.
#pragma once
#include <cstdint>

namespace kbond::batch {

// Measure bits, as the public header numbers them.
enum Measure : int32_t {
  kPrice = 1,
  kYield = 2,
  kAccrued = 4,
  kModifiedDuration = 8,
  kMacaulayDuration = 16,
  kConvexity = 32,
  kPvbp = 64,
};
inline constexpr int32_t kAllMeasures = 127;
// Measures computed at a yield: a row given a price needs its yield first.
inline constexpr int32_t kYieldBased =
    kYield | kModifiedDuration | kMacaulayDuration | kConvexity | kPvbp;

inline constexpr int32_t kGivenYield = 0;
inline constexpr int32_t kGivenPrice = 1;

struct BatchRequest {
  int64_t rows = 0;
  // Inputs; the optional ones may be null.
  const int32_t* types = nullptr;
  const double* coupons = nullptr;
  const int32_t* maturities = nullptr;
  const int32_t* settlements = nullptr;
  const double* market = nullptr;
  int32_t market_kind = kGivenYield;
  const int32_t* market_kinds = nullptr;
  const int32_t* frequencies = nullptr;
  const int32_t* dated_dates = nullptr;
  const int32_t* first_coupons = nullptr;
  const double* redemptions = nullptr;
  int32_t measures = 0;
  // Outputs: only those of the measures asked for are written.
  double* prices = nullptr;
  double* yields = nullptr;
  double* accrued = nullptr;
  double* modified_durations = nullptr;
  double* macaulay_durations = nullptr;
  double* convexities = nullptr;
  double* pvbps = nullptr;
  int32_t* row_errors = nullptr;
  int32_t* failed_measures = nullptr;

  bool wants(int32_t measure) const noexcept { return (measures & measure) != 0; }
};

// 0 when the request can be run, else the call's error code: 50 a required
// column or output missing, 60 a negative row count, 460 no measure, an
// unknown measure bit or a market kind other than 0 and 1.
int32_t check_request(const BatchRequest& request) noexcept;

}  // namespace kbond::batch
