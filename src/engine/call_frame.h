// The frame every straight-bond export runs around its own arithmetic.
//
//   1. The error code goes through the caller's pointer, or a local when it
//      is NULL; it starts at 0.
//   2. A custom bond type (code 1000 or more) holds the custom-type lock as a
//      reader for the whole call; a lock that cannot be had is error -60.
//   3. bond_setup fills a description on the stack; its code is the error.
//   4. The export computes from the description.
//   5. The description is released, then the lock, on every path.
//
// An export builds its `bond_args` once and then reads as its arithmetic:
//
//   engine::BondCall call(args, error);
//   if (!call.ok()) return -1.0;
//   double price = engine::price_from_yield(y, call.desc(), nullptr, nullptr, &call.error());
//   ...
//
// or, when the failure value is all that differs, through `with_bond`:
//
//   return engine::with_bond(args, error, -1.0, [](const engine::bond_desc& d, int32_t&) {
//     return d.accrued * 100.0;
//   });
#pragma once
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "engine/bond_desc.h"
#include "engine/catalogue.h"
#include "engine/market_rules.h"  // round_price_by_type
#include "engine/safe_math.h"
#include "engine/type_lock.h"

namespace kbond::engine {

inline constexpr int32_t kLockNotObtained = -60;

static_assert(std::is_trivially_destructible_v<bond_desc>,
              "BondCall keeps the description in raw storage");

class BondCall {
 public:
  BondCall(const bond_args& args, int32_t* error) noexcept
      : error_(error ? error : &local_error_), lock_(args.type) {
    *error_ = 0;
    if (lock_.failed()) {
      *error_ = kLockNotObtained;
      return;
    }
    const int32_t setup = bond_setup(args, desc_);
    if (setup != 0) {
      *error_ = setup;
      lock_.release();
      return;
    }
    ready_ = true;
  }

  ~BondCall() {
    if (ready_) bond_release(desc_);
  }
  // bond_setup builds the description in place; it is not initialised twice.

  BondCall(const BondCall&) = delete;
  BondCall& operator=(const BondCall&) = delete;

  // True when the lock is held (or not needed) and the description is valid.
  bool ok() const noexcept { return ready_; }
  const bond_desc& desc() const noexcept { return desc_; }
  // Some exports adjust a field of the description for their own call.
  bond_desc& mutable_desc() noexcept { return desc_; }
  int32_t& error() noexcept { return *error_; }
  // Some exports need the custom type's conventions only during set-up.
  void release_lock() noexcept { lock_.release(); }

 private:
  int32_t local_error_ = 0;
  int32_t* error_;
  TypeReadGuard lock_;  // declared before desc_: released after it
  union {
    bond_desc desc_;  // constructed by bond_setup, trivially destructible
  };
  bool ready_ = false;
};

// Runs `compute(desc, error)` inside the frame and returns its result, or
// `failure_value` when the lock, the set-up or the computation failed.
template <class Compute>
double with_bond(const bond_args& args, int32_t* error, double failure_value,
                 Compute&& compute) noexcept {
  BondCall call(args, error);
  if (!call.ok()) return failure_value;
  const double result = compute(call.desc(), call.error());
  return call.error() != 0 ? failure_value : result;
}

// The frequency at which the bond's yields are quoted when it differs from
// the coupon frequency and more than one cash-flow period remains (a yield
// over a single period is the same at any compounding); 0 otherwise.
inline int32_t yield_quotation_frequency(const bond_desc& desc) noexcept {
  const int32_t q = bond_type_annual_yield(desc.conventions, desc.yield_method_arg);
  return (q != 0 && q != desc.frequency && desc.remaining_periods() > 1) ? q : 0;
}

// A quoted yield re-expressed at the coupon frequency (unchanged when the
// bond quotes at its coupon frequency). `error` receives 0 or 1.
inline double coupon_yield_from_quoted(double yield, const bond_desc& desc,
                                       int32_t* error) noexcept {
  if (error) *error = 0;
  const int32_t q = yield_quotation_frequency(desc);
  if (q == 0) return yield;
  const double f = desc.frequency;
  return yield_convert(yield, q, f, q, f, error);
}

// A yield at the coupon frequency re-expressed at the quotation frequency.
inline double quoted_yield_from_coupon(double yield, const bond_desc& desc,
                                       int32_t* error) noexcept {
  if (error) *error = 0;
  const int32_t q = yield_quotation_frequency(desc);
  if (q == 0) return yield;
  const double f = desc.frequency;
  return yield_convert(yield, f, q, f, q, error);
}

}  // namespace kbond::engine
