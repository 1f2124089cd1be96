// The frame every analytic export runs around its own arithmetic.
//
//   1. The error code goes through the caller's pointer, or a local when it
//      is NULL; it starts at 0.
//   2. A custom bond type (code 1000 or more) takes the custom-type lock as a
//      reader; a lock that cannot be had is KVL_ERR_LOCK.
//   3. The family's set-up fills a description in the frame; on failure the
//      frame reports the set-up's code or, for families that document no
//      finer codes, KVL_ERR_INVALID.
//   4. The export computes from the description.
//   5. The description is released (after a successful set-up only), then
//      the lock, on every path.
//
// Families differ in two explicit policies, how long the lock is held and
// what a failed set-up reports, and each names its frame once (BondCall
// below, PikCall, PerpetualCall, the FRN NoteFrame and MarginFrame). An
// export builds its arguments once and then reads as its arithmetic:
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
#include <new>
#include <type_traits>

#include "engine/bond_desc.h"
#include "engine/catalogue.h"
#include "engine/market_rules.h"  // round_price_by_type
#include "engine/safe_math.h"
#include "engine/type_lock.h"
#include "k_bond.h"

namespace kbond::engine {

// How long a frame holds the custom-type lock.
enum class LockLifetime {
  kWholeCall,  // the computation reads the type's conventions or sets up again
  kSetUpOnly,  // everything the computation reads is in the description
  kNone,       // the family's type argument is not a bond type code
};

// What a failed set-up reports.
enum class SetUpError {
  kPassThrough,  // the set-up's own code
  kInvalid,      // KVL_ERR_INVALID whatever the cause
};

// `SetUp(args, desc)` starts the description's lifetime in the frame's raw
// storage and returns 0 or an error code; on failure it leaves nothing to
// release. `Release(desc)` (nullptr when nothing is owned) runs only after a
// successful set-up. The description is never initialised twice: set-ups
// that fill an existing record are adapted by `constructed_then`.
template <class Args, class Desc, auto SetUp, auto Release, LockLifetime kLock,
          SetUpError kOnError>
class CallFrame {
  static_assert(std::is_trivially_destructible_v<Desc>,
                "the frame keeps the description in raw storage");

 public:
  CallFrame(const Args& args, int32_t* error) noexcept
      : error_(error ? error : &local_error_), lock_(locked_type(args)) {
    *error_ = 0;
    if (lock_.failed()) {
      *error_ = KVL_ERR_LOCK;
      return;
    }
    const int32_t setup = SetUp(args, desc_);
    if (setup != 0) {
      *error_ = kOnError == SetUpError::kPassThrough ? setup : KVL_ERR_INVALID;
      lock_.release();
      return;
    }
    if constexpr (kLock == LockLifetime::kSetUpOnly) lock_.release();
    ready_ = true;
  }

  ~CallFrame() {
    if constexpr (!std::is_null_pointer_v<decltype(Release)>) {
      if (ready_) Release(desc_);
    }
  }

  CallFrame(const CallFrame&) = delete;
  CallFrame& operator=(const CallFrame&) = delete;

  // True when the lock is held (or not needed) and the description is valid.
  bool ok() const noexcept { return ready_; }
  const Desc& desc() const noexcept { return desc_; }
  int32_t& error() noexcept { return *error_; }

 private:
  static const int32_t* locked_type(const Args& args) noexcept {
    if constexpr (kLock == LockLifetime::kNone) {
      return nullptr;
    } else {
      return args.type;
    }
  }

  int32_t local_error_ = 0;
  int32_t* error_;
  TypeReadGuard lock_;  // declared before desc_: released after it
  union {
    Desc desc_;  // constructed by SetUp, trivially destructible
  };
  bool ready_ = false;
};

// Adapts a set-up that fills a default-constructed record to the frame's
// raw storage: CallFrame<..., constructed_then<pik_setup, pik_args, pik_desc>, ...>.
template <auto Fill, class Args, class Desc>
int32_t constructed_then(const Args& args, Desc& desc) noexcept {
  ::new (static_cast<void*>(&desc)) Desc;
  return Fill(args, desc);
}

// The straight-bond frame: bond_setup's code passes through and the lock is
// held to the end.
using BondCall = CallFrame<bond_args, bond_desc, bond_setup, bond_release,
                           LockLifetime::kWholeCall, SetUpError::kPassThrough>;

// The same for exports that read only what set-up completed (accrued
// interest, the coupon, coupon dates): the lock is dropped after set-up.
using BondSetUpCall = CallFrame<bond_args, bond_desc, bond_setup, bond_release,
                                LockLifetime::kSetUpOnly, SetUpError::kPassThrough>;

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
