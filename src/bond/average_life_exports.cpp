// KVLbal: the average life of a bond with a sinking fund, the time to each
// repayment of principal weighted by its size.
#include "bond/average_life.h"
#include "engine/call_frame.h"
#include "k_bond.h"

using kbond::engine::BondCall;

extern "C" KVL_EXPORT double KVL_API KVLbal(
    int32_t maturity, int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* factor, const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
    int32_t n_sink_ends, const double* sink_amounts, const double* sink_premium,
    int32_t* error) {
  const kbond::bond::AverageLifeSchedule schedule(
      maturity, settlement, dated_date, first_coupon, type, frequency, n_frequency, redemption,
      factor, sink_dates, n_sink, sink_ends, n_sink_ends, sink_amounts, sink_premium);
  BondCall call(schedule.args, error);
  if (!call.ok()) {
    if (call.error() == KVL_ERR_LOCK) return -1.0;
    call.error() = KVL_ERR_INVALID;
    return 0.0;
  }
  return kbond::bond::average_life(call.desc(), &call.error());
}
