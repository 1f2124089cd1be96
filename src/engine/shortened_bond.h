// A bond cut short: the same coupons on the same coupon grid, redeemed on an
// earlier date (a horizon sale, a call, the average-life date) at a given
// value. The coupon-change dates are copied up to the new maturity, which
// becomes the last date; the grid keeps its anchor (the first coupon date
// after settlement, with the current period's start as the dated date), so
// that a new maturity off the grid ends in a broken last period.
//
//   ShortenedBond cut;
//   if (cut.build(args, desc, call_date) != 0) ...;   // -50 without memory
//   cut.args.redemption = &call_price;
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {


class ShortenedBond {
 public:
  ShortenedBond() = default;
  ~ShortenedBond();
  ShortenedBond(const ShortenedBond&) = delete;
  ShortenedBond& operator=(const ShortenedBond&) = delete;

  // Fills `args` from `original` (whose description is `desc`) for a bond
  // maturing on `maturity` (after settlement, not after the original
  // maturity). 0, or -50 when the date copy cannot be allocated.
  int32_t build(const engine::bond_args& original, const engine::bond_desc& desc,
                int32_t maturity) noexcept;

  engine::bond_args args;

 private:
  int32_t* dates_ = nullptr;
  int32_t single_date_ = 0;
  int32_t dated_ = 0;
  int32_t first_ = 0;
};

// A description set up inside a call that already holds the frame (and the
// custom-type lock): set up on construction, released on destruction.
struct ScopedDescription {
  explicit ScopedDescription(const engine::bond_args& a) noexcept
      : status(engine::bond_setup(a, desc)) {}
  ~ScopedDescription() {
    if (status == 0) engine::bond_release(desc);
  }
  ScopedDescription(const ScopedDescription&) = delete;
  ScopedDescription& operator=(const ScopedDescription&) = delete;

  engine::bond_desc desc;
  int32_t status;
};

}  // namespace kbond::engine
