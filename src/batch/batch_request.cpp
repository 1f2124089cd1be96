#include "batch/batch_request.h"

namespace kbond::batch {
namespace {

constexpr int32_t kMissingArray = 50;
constexpr int32_t kCountTooSmall = 60;
constexpr int32_t kOutOfSet = 460;

}  // namespace

int32_t check_request(const BatchRequest& r) noexcept {
  if (r.rows < 0) return kCountTooSmall;
  if (r.measures == 0 || (r.measures & ~kAllMeasures) != 0) return kOutOfSet;
  if (r.market_kinds == nullptr && r.market_kind != kGivenYield && r.market_kind != kGivenPrice)
    return kOutOfSet;
  if (!r.types || !r.coupons || !r.maturities || !r.settlements) return kMissingArray;
  if (!r.market && (r.measures & ~kAccrued) != 0) return kMissingArray;
  const struct {
    int32_t measure;
    const double* column;
  } outputs[] = {{kPrice, r.prices},
                 {kYield, r.yields},
                 {kAccrued, r.accrued},
                 {kModifiedDuration, r.modified_durations},
                 {kMacaulayDuration, r.macaulay_durations},
                 {kConvexity, r.convexities},
                 {kPvbp, r.pvbps}};
  for (const auto& o : outputs)
    if (r.wants(o.measure) && o.column == nullptr) return kMissingArray;
  return 0;
}

}  // namespace kbond::batch
