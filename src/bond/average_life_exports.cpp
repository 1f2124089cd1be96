// KVLbal: the average life of a bond with a sinking fund, the time to each
// repayment of principal weighted by its size.
#include "bond/cash_flow_walk.h"
#include "engine/call_frame.h"
#include "engine/catalogue.h"
#include "k_bond.h"

using kbond::engine::BondCall;

namespace {
// The schedule is the same for any coupon rate.
constexpr double kScheduleOnlyCoupon = 0.1;
}  // namespace

extern "C" KVL_EXPORT double KVL_API KVLbal(
    int32_t maturity, int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* factor, const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
    int32_t n_sink_ends, const double* sink_amounts, const double* sink_premium,
    int32_t* error) {
  const double coupon = kScheduleOnlyCoupon;
  int32_t schedule_type = 0;
  if (type) schedule_type = kbond::engine::accrual_substitute(*type);
  const kbond::engine::bond_args args{
      .coupons = &coupon, .n_coupons = 1, .dates = &maturity, .n_dates = 1,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type ? &schedule_type : nullptr, .frequency = frequency,
      .n_frequency = n_frequency, .redemption = redemption, .factor = factor,
      .sink_dates = sink_dates, .n_sink = n_sink, .sink_ends = sink_ends,
      .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts, .sink_premium = sink_premium};
  BondCall call(args, error);
  if (!call.ok()) {
    if (call.error() == KVL_ERR_LOCK) return -1.0;
    call.error() = KVL_ERR_INVALID;
    return 0.0;
  }
  const auto& bond = call.desc();
  // In coupon periods from settlement: each repayment at its coupon date,
  // what is left at maturity (after a broken last period when there is one).
  double weighted = 0.0, repaid = 0.0;
  kbond::bond::walk_cash_flows(bond, [&](const kbond::bond::CashFlowRow& row) {
    if (row.face < kbond::bond::kNegligibleFace) return;
    weighted += row.face * row.nominal_periods;
    repaid += row.face;
  });
  double life = -1.0;
  if (repaid > 0.0) {
    life = weighted / repaid;
  } else {
    call.error() = KVL_ERR_INVALID;
  }
  // A failure deliberately returns -1 over the frequency as well.
  return life / bond.frequency;
}
