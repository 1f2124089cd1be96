// The frame of every PIK export (the engine's call frame around pik_setup)
// and the rounding of results by base type.
//
//   PikCall call(args, error);
//   if (!call.ok()) return -1.0;
//   double price = pik_price(y, call.desc(), nullptr, &call.error());
#pragma once
#include <cmath>
#include <cstdint>

#include "engine/call_frame.h"
#include "engine/market_rules.h"
#include "pik/pik_desc.h"

namespace kbond::pik {

// The argument block in the order every PIK export takes it.
inline pik_args pik_arguments(const double* cash_rates, int32_t n_cash, const double* pik_rates,
                              int32_t n_pik, const int32_t* dates, int32_t n_dates,
                              int32_t settlement, const int32_t* dated_date,
                              const int32_t* first_coupon, const int32_t* type,
                              const int32_t* frequency, const double* redemption,
                              const int32_t* call_date, const int32_t* pay_on_business_day,
                              const int32_t* holiday_options, const int32_t* holidays,
                              int32_t n_holidays) noexcept {
  return pik_args{cash_rates,      n_cash,     pik_rates,  n_pik,        dates,
                  n_dates,         settlement, dated_date, first_coupon, type,
                  frequency,       redemption, call_date,  pay_on_business_day,
                  holiday_options, holidays,   n_holidays};
}

// Nothing of a type's conventions is read after set-up, and the family
// documents no set-up codes finer than KVL_ERR_INVALID. The description
// borrows the caller's arrays: nothing to release.
using PikCall = engine::CallFrame<pik_args, pik_desc,
                                  engine::constructed_then<pik_setup, pik_args, pik_desc>, nullptr,
                                  engine::LockLifetime::kSetUpOnly, engine::SetUpError::kInvalid>;

// PIK results keep their own rounding arithmetic (see market_rules.h).
using engine::round_pik_price;
using engine::round_pik_yield;

}  // namespace kbond::pik
