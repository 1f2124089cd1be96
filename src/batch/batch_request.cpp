#include "batch/batch_request.h"
#include "k_bond.h"

namespace kbond::batch {
namespace {


}  // namespace

int32_t check_request(const BatchRequest& r) noexcept {
  if (r.rows < 0) return KVL_ERR_COUNT;
  if (r.measures == 0 || (r.measures & ~kAllMeasures) != 0) return KVL_ERR_OUT_OF_SET;
  if (r.market_kinds == nullptr && r.market_kind != kGivenYield && r.market_kind != kGivenPrice)
    return KVL_ERR_OUT_OF_SET;
  if (!r.types || !r.coupons || !r.maturities || !r.settlements) return KVL_ERR_MISSING_ARRAY;
  if (!r.market && (r.measures & ~kAccrued) != 0) return KVL_ERR_MISSING_ARRAY;
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
    if (r.wants(o.measure) && o.column == nullptr) return KVL_ERR_MISSING_ARRAY;
  return 0;
}

}  // namespace kbond::batch
