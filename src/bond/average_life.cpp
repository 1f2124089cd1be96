#include "bond/average_life.h"

#include "engine/cash_flow_walk.h"
#include "engine/catalogue.h"
#include "k_bond.h"

namespace kbond::bond {
namespace {
// The schedule is the same for any coupon rate.
constexpr double kScheduleOnlyCoupon = 0.1;
}  // namespace

AverageLifeSchedule::AverageLifeSchedule(
    int32_t maturity, int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* factor, const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
    int32_t n_sink_ends, const double* sink_amounts, const double* sink_premium) noexcept
    : maturity_(maturity) {
  if (type) type_ = engine::accrual_substitute(*type);
  args = engine::bond_args{
      .coupons = &kScheduleOnlyCoupon, .n_coupons = 1, .dates = &maturity_, .n_dates = 1,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type ? &type_ : nullptr, .frequency = frequency, .n_frequency = n_frequency,
      .redemption = redemption, .factor = factor, .sink_dates = sink_dates, .n_sink = n_sink,
      .sink_ends = sink_ends, .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts,
      .sink_premium = sink_premium};
}

double average_life(const engine::bond_desc& schedule, int32_t* error) noexcept {
  // In coupon periods from settlement: each repayment at its coupon date,
  // what is left at maturity (after a broken last period when there is one).
  double weighted = 0.0, repaid = 0.0;
  engine::walk_cash_flows(schedule, [&](const engine::CashFlowRow& row) {
    if (row.face < engine::kNegligibleFace) return;
    weighted += row.face * row.nominal_periods;
    repaid += row.face;
  });
  double life = -1.0;
  if (repaid > 0.0) {
    life = weighted / repaid;
  } else {
    *error = KVL_ERR_INVALID;
  }
  // A failure deliberately returns -1 over the frequency as well.
  return life / schedule.frequency;
}

}  // namespace kbond::bond
