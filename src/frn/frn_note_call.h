// The frame shared by the FRN analytics exports (accrued interest, coupon
// amount, price, yield, risk measures and cash flows):
//   1. a temporary type derived from the caller's handle with the call's
//      frequency, day count, adjustment code (2 x business-day rule +
//      end-of-month flag), holiday options and pay-on-business-day flag;
//   2. the rate schedule validated;
//   3. the schedule placed from the caller's coupon dates and holidays;
//   4. the computation; the temporary type is released on every path.
// FRN type handles are not bond types: the frame takes no custom-type lock,
// and the set-up's code passes through.
#pragma once
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "engine/call_frame.h"
#include "frn/frn_price_core.h"
#include "frn/frn_rate_schedule.h"
#include "frn/frn_schedule.h"
#include "frn/frn_tax.h"
#include "frn/frn_temporary_type.h"
#include "k_bond.h"

namespace kbond::frn {

// The common arguments in their order on the interface (plain and typed
// forms alike); `pay_on_business_day` is NULL for accrued interest and the
// coupon amount, which take none.
struct NoteCall {
  int32_t type = 0;
  FrnRateSchedule rates;
  int32_t maturity = 0;
  int32_t settlement = 0;
  const int32_t* previous_coupon = nullptr;
  const int32_t* coupon_dates = nullptr;
  int32_t coupon_count = 0;
  const int32_t* day_count = nullptr;
  const int32_t* frequency = nullptr;
  const int32_t* pay_on_business_day = nullptr;
  const int32_t* adjustment_code = nullptr;
  const int32_t* holiday_options = nullptr;
  const int32_t* holidays = nullptr;
  int32_t holiday_count = 0;
};

// The optional valuation arguments of price, yield, risk and cash flows.
struct ValuationArgs {
  const double* redemption = nullptr;  // per 100, default 100
  const double* income_tax = nullptr;
  const double* gain_tax = nullptr;
  const int32_t* holding = nullptr;
};

// The temporary type with the call's overrides, the rate schedule checked
// and the schedule placed: 0 or the first failure's code.
inline int32_t note_setup(const NoteCall& call, FrnCallDesc& desc) noexcept {
  FrnTypeOverrides overrides;
  overrides.frequency = call.frequency;
  overrides.day_count = call.day_count;
  int32_t rule = 0, end_of_month = 0;
  if (call.adjustment_code) {
    rule = *call.adjustment_code >> 1;  // a negative code gives a negative rule: refused
    end_of_month = *call.adjustment_code & 1;
    overrides.business_day_rule = &rule;
    overrides.end_of_month = &end_of_month;
  }
  overrides.holiday_options = call.holiday_options;
  overrides.option_flag = call.pay_on_business_day;
  if (int32_t err = take_temporary_type(call.type, overrides, desc)) return err;
  if (int32_t err = validate_rate_schedule(call.rates)) return drop_temporary_type(desc, err);
  if (int32_t err = frn_schedule_setup(&desc.record, call.maturity, call.settlement,
                                       call.previous_coupon, call.coupon_dates, call.coupon_count,
                                       call.holidays, call.holiday_count, &desc.schedule)) {
    return drop_temporary_type(desc, err);
  }
  return 0;
}

using NoteFrame = engine::CallFrame<NoteCall, FrnCallDesc,
                                    engine::constructed_then<note_setup, NoteCall, FrnCallDesc>,
                                    frn_call_release, engine::LockLifetime::kNone,
                                    engine::SetUpError::kPassThrough>;

// Runs `compute(schedule, err)` with the caller's error cleared (NULL: a
// local one); returns `failure` with the code when the type, the rate
// schedule or the schedule cannot be set up.
template <class Result, class Compute>
Result run_note_call(const NoteCall& call, int32_t* error, Result failure,
                     Compute&& compute) noexcept {
  NoteFrame frame(call, error);
  int32_t& err = frame.error();
  if (!frame.ok()) return failure;
  const FrnSchedule& schedule = frame.desc().schedule;
  if constexpr (std::is_floating_point_v<Result>) {
    return finite_or_fail(compute(schedule, err), err, failure);
  } else {
    return compute(schedule, err);
  }
}

// Taxes and redemption of a valuation: 0, or 250 / 460 from the taxes,
// 350 for a redemption that is not a positive number.
inline int32_t prepare_valuation(const FrnSchedule& schedule, const FrnRateSchedule& rates,
                                 const ValuationArgs& args, FrnValuation* out) noexcept {
  const double redemption = args.redemption ? *args.redemption : 100.0;
  if (!std::isfinite(redemption) || redemption <= 0.0) return KVL_ERR_BAD_PRICE;
  FrnTax tax;
  if (int32_t err = build_frn_tax(schedule.settlement, schedule.maturity, args.income_tax,
                                  args.gain_tax, args.holding, &tax)) {
    return err;
  }
  *out = make_frn_valuation(schedule, rates, tax, redemption);
  return 0;
}

// Clean price per unit (and derivatives) at `yield`: 0, or 250 for a yield
// that is not a number, the codes of prepare_valuation, 1 from the price.
inline int32_t price_at_yield(const FrnSchedule& schedule, const FrnRateSchedule& rates,
                              const ValuationArgs& args, double yield, bool want_second,
                              FrnPrice* price, FrnValuation* valuation) noexcept {
  if (!std::isfinite(yield)) return KVL_ERR_BAD_RATE;
  if (int32_t err = prepare_valuation(schedule, rates, args, valuation)) return err;
  return frn_price_core(*valuation, yield, want_second, price);
}

}  // namespace kbond::frn
