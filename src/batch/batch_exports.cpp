// KVLbbatch: a portfolio of straight bonds valued in one call.
#include "batch/batch_request.h"
#include "batch/row_valuation.h"
#include "batch/worker_pool.h"
#include "k_bond.h"

using kbond::batch::BatchRequest;

namespace {


int32_t value_one(const void* request, int64_t i) {
  return kbond::batch::value_row(*static_cast<const BatchRequest*>(request), i);
}

}  // namespace

extern "C" KVL_EXPORT int32_t KVL_API KVLbbatch(
    int32_t n, const int32_t* types, const double* coupons, const int32_t* maturities,
    const int32_t* settlements, const double* market, int32_t market_kind,
    const int32_t* market_kinds, const int32_t* frequencies, const int32_t* dated_dates,
    const int32_t* first_coupons, const double* redemptions, int32_t measures, int32_t threads,
    double* prices, double* yields, double* accrued, double* modified_durations,
    double* macaulay_durations, double* convexities, double* pvbps, int32_t* row_errors,
    int32_t* failed_measures, int32_t* error) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  const BatchRequest request{.rows = n,
                             .types = types,
                             .coupons = coupons,
                             .maturities = maturities,
                             .settlements = settlements,
                             .market = market,
                             .market_kind = market_kind,
                             .market_kinds = market_kinds,
                             .frequencies = frequencies,
                             .dated_dates = dated_dates,
                             .first_coupons = first_coupons,
                             .redemptions = redemptions,
                             .measures = measures,
                             .prices = prices,
                             .yields = yields,
                             .accrued = accrued,
                             .modified_durations = modified_durations,
                             .macaulay_durations = macaulay_durations,
                             .convexities = convexities,
                             .pvbps = pvbps,
                             .row_errors = row_errors,
                             .failed_measures = failed_measures};
  err = threads < 0 ? KVL_ERR_COUNT : kbond::batch::check_request(request);
  if (err != 0) return -1;
  if (n == 0) return 0;
  const int32_t used = kbond::batch::threads_for(n, threads);
  return static_cast<int32_t>(kbond::batch::for_each_row(n, used, value_one, &request));
}
