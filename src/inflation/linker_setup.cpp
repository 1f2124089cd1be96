#include "inflation/linker_desc.h"

#include <cmath>

#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "inflation/reference_index.h"
#include "k_bond.h"

namespace kbond::inflation {

namespace {

bool copy_index_values(const double* values, int32_t count, double* out) noexcept {
  if (values == nullptr || count < 1 || count > 2) return false;
  for (int32_t i = 0; i < count; ++i) {
    if (!(values[i] > 0.0) || !std::isfinite(values[i])) return false;
    out[i] = values[i];
  }
  return true;
}

int32_t linker_setup(const LinkerArgs& args, int32_t months_per_period, LinkerDesc* desc) noexcept {
  *desc = LinkerDesc{};
  desc->months_per_period = months_per_period;
  desc->frequency = 12 / months_per_period;
  // The coupon is in percent: a positive, normal number no larger than 100.
  if (!(args.coupon > 0.0) || !std::isnormal(args.coupon) || args.coupon > 100.0)
    return KVL_ERR_INVALID;
  if (!copy_index_values(args.base_index, args.base_count, desc->base_values) ||
      !copy_index_values(args.settlement_index, args.settlement_index_count, desc->settlement_values)) {
    return KVL_ERR_INVALID;
  }
  desc->base_count = args.base_count;
  desc->settlement_count = args.settlement_index_count;
  double inflation = 0.0;
  if (!assumed_inflation(args.inflation, &inflation)) return KVL_ERR_INVALID;
  if (args.option_b != 0 && args.option_b != 1) return KVL_ERR_INVALID;
  if (args.holiday_count < 0) return KVL_ERR_INVALID;
  if (!dates::valid_serial(args.maturity) || !dates::valid_serial(args.settlement) || args.settlement > args.maturity) {
    return KVL_ERR_INVALID;
  }
  const bool dated = args.option_c != nullptr && *args.option_c != 0;
  if (dated && !dates::valid_serial(*args.option_c)) return KVL_ERR_INVALID;

  desc->coupon = args.coupon * 0.01;
  if (!set_indexed_bond(desc, args.maturity, args.settlement, inflation, args.end_of_month, args.option_a,
                        args.holiday_options, args.holidays, args.holiday_count)) {
    return KVL_ERR_INVALID;
  }
  desc->nominal_basis = args.option_b == 1;
  desc->base_date = dated ? *args.option_c : args.maturity;

  // The linkers' own period must hold settlement.
  if (!resolve_coupon_period(args.settlement, args.maturity, months_per_period, desc->end_of_month,
                             args.previous_coupon, args.next_coupon, 0, &desc->period) ||
      args.settlement > desc->period.next) {
    return KVL_ERR_INVALID;
  }
  const CouponPeriod& p = desc->period;

  int32_t err = 0;
  desc->base_reference = reference_index_at(desc->base_date, desc->base_values, desc->base_count, &err);
  if (err != 0) return err;
  desc->settlement_reference =
      reference_index_at(args.settlement, desc->settlement_values, desc->settlement_count, &err);
  if (err != 0) return err;
  desc->index_ratio = index_ratio(desc->settlement_reference, desc->base_reference);
  // Index values too small for their ratio (denormals) are not index values.
  if (!std::isfinite(desc->index_ratio) || !(desc->index_ratio > 0.0)) return KVL_ERR_INVALID;

  // Actual/actual over the quasi-coupon period.
  const double year_days = dates::year_basis(p.quasi_start, p.next, desc->frequency, dates::kActAct);
  const double period_coupon = desc->coupon / desc->frequency;
  if (args.next_coupon_amount != nullptr) {
    const double fixed = *args.next_coupon_amount;
    if (!(fixed >= 0.0) || !std::isfinite(fixed)) return KVL_ERR_INVALID;
    desc->next_coupon_amount = fixed * 0.01;
  } else {
    // Projected from the latest index value; with two values the latest one
    // is a month ahead of settlement, and so is the start of the projection.
    const int32_t from = desc->settlement_count == 2 ? dates::add_months(args.settlement, 1, 0)
                                                     : args.settlement;
    const double latest = desc->settlement_values[desc->settlement_count - 1];
    desc->next_coupon_amount = period_coupon * std::pow(1.0 + inflation, (p.next - from) / year_days) *
                               (latest / desc->base_reference);
  }

  desc->accrued_fraction = static_cast<double>(args.settlement - p.previous) / year_days;
  if (desc->accrued_fraction < 0.0) desc->accrued_fraction = 0.0;
  desc->accrued = engine::round_to(desc->accrued_fraction * desc->coupon * desc->index_ratio * 100.0, 6);
  if (!std::isfinite(desc->next_coupon_amount) || !std::isfinite(desc->accrued))
    return KVL_ERR_INVALID;
  return 0;
}

}  // namespace

int32_t tips_setup(const LinkerArgs& args, LinkerDesc* desc) noexcept { return linker_setup(args, 6, desc); }

int32_t oati_setup(const LinkerArgs& args, LinkerDesc* desc) noexcept { return linker_setup(args, 12, desc); }

}  // namespace kbond::inflation
