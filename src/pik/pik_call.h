// The frame of every PIK export: the error code through the caller's
// pointer (or a local), the custom-type lock for codes of 1000 and more,
// pik_setup on the stack, and the rounding of results by base type.
//
//   PikCall call(args, error);
//   if (!call.ok()) return -1.0;
//   double price = pik_price(y, call.desc(), nullptr, &call.error());
#pragma once
#include <cmath>
#include <cstdint>

#include "engine/market_rules.h"
#include "engine/type_lock.h"
#include "pik/pik_desc.h"

namespace kbond::pik {

inline constexpr int32_t kLockNotObtained = -60;
inline constexpr int32_t kInvalidDescription = 1;

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

class PikCall {
 public:
  PikCall(const pik_args& args, int32_t* error) noexcept
      : error_(error ? error : &local_error_), lock_(args.type) {
    *error_ = 0;
    if (lock_.failed()) {
      *error_ = kLockNotObtained;
      return;
    }
    if (pik_setup(args, desc_) != 0) {
      *error_ = kInvalidDescription;
      return;
    }
    // Nothing of a type's conventions is read after set-up.
    lock_.release();
    ready_ = true;
  }

  PikCall(const PikCall&) = delete;
  PikCall& operator=(const PikCall&) = delete;

  bool ok() const noexcept { return ready_; }
  const pik_desc& desc() const noexcept { return desc_; }
  int32_t& error() noexcept { return *error_; }

 private:
  int32_t local_error_ = 0;
  int32_t* error_;
  engine::TypeReadGuard lock_;
  pik_desc desc_;
  bool ready_ = false;
};

// PIK results keep their own rounding arithmetic (see market_rules.h).
using engine::round_pik_price;
using engine::round_pik_yield;

}  // namespace kbond::pik
