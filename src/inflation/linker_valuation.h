// Valuation of TIPS and OATi from a real yield.
//
// The U.S. Treasury (31 CFR 356, Appendix B) prices an inflation-indexed
// security in real terms, compounding at the real yield y over coupon periods
// on the quasi-coupon grid:
//
//   real dirty = (C/f) / (1 + y/f)^(r/s) + sum over later coupons + 100 / (1 + y/f)^(r/s + n)
//
// with r/s the days from settlement to the next coupon over the days of the
// period; the inflation-adjusted price is the real one times the index ratio.
// The French Treasury prices OATi the same way with annual compounding. The
// valuation core works with the projected inflation-adjusted flows and
// discounts them at the nominal rate the real yield and the assumed inflation
// imply, (1 + y/f) * (1 + inflation)^(1/f) per period: with flows growing at
// the same inflation the two agree, and the floor on the principal and the
// rounding of the ratios are valued where they bite. The exported real price
// is the inflation-adjusted clean price divided by the settlement index ratio.
//
// Duration is the modified duration -(dP/dy) / dirty and convexity
// (d2P/dy2) / dirty, in years, on the inflation-adjusted dirty price.
#pragma once
#include <cstdint>

#include "inflation/linker_desc.h"

namespace kbond::inflation {

struct LinkerValue {
  double dirty = 0.0;        // inflation-adjusted dirty price per 100
  double first = 0.0;        // d(dirty)/dy per 100
  double second = 0.0;       // d2(dirty)/dy2 per 100
};

// Error 1 when 1 + y/f is not positive or the yield is not finite.
int32_t linker_value(const LinkerDesc& desc, double yield, LinkerValue* value) noexcept;

// Quoted clean price (real, or inflation-adjusted when the description asks
// for it) from an inflation-adjusted dirty price, unrounded.
double linker_quote(const LinkerDesc& desc, double dirty) noexcept;

// The yield at which the unrounded quote equals `price`; error 1 when no
// yield is found (-1.0).
double linker_yield(const LinkerDesc& desc, double price, int32_t* error) noexcept;

}  // namespace kbond::inflation
