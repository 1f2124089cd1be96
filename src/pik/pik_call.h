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

// U.S. Treasury prices to six decimals; corporate prices cleaned at the
// eighth decimal and truncated to three; other types unrounded.
inline double round_pik_price(double price, int32_t base_type) noexcept {
  if (base_type == 0) return std::floor(price * 1e6 + 0.5) * 1e-6;
  if (base_type == 3) return std::floor(std::floor(price * 1e8 + 0.5) * 1e-5) * 0.001;
  return price;
}

// U.S. Treasury yields to eight decimals, corporate yields to five.
inline double round_pik_yield(double yield, int32_t base_type) noexcept {
  if (base_type == 0) return std::floor(yield * 1e8 + 0.5) * 1e-8;
  if (base_type == 3) return std::floor(yield * 100000.0 + 0.5) * 1e-5;
  return yield;
}

}  // namespace kbond::pik
