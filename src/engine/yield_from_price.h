// The yield that reproduces a bond's price, the inverse of the price-yield
// core. Three ways in, chosen from the bond's conventions:
//
//   - bonds priced at simple interest over their whole life (Japanese
//     simple yield): the yield is a closed form of the price;
//   - bonds in their last coupon period under a money-market convention:
//     a closed form over the days left to maturity;
//   - every other bond: Newton's method on `price_from_yield` from the
//     current yield, then a bracketing search when Newton fails.
//
//   int32_t err = 0;
//   double y = yield_from_price(98.5, desc, &err);   // coupon-frequency yield
//
// The straight-bond yield exports, the futures measures and the perpetual
// and Brady families all solve for their yields through this file.
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"
#include "engine/market_rules.h"  // round_yield_by_type

namespace kbond::engine {

inline constexpr double kSolverFailed = -999.0;    // both root finders failed
// Newton and the bracketing search stop when the price is within 1e-7 per
// 100 of face of the target (a tenth of the finest tick any market quotes),
// relative to the price itself below par and never finer than 1e-12 per
// 100. That pins the yield to about 1e-8 even for a bill a month from
// maturity, and for a deep-discount zero worth 0.0002 per 100.
inline constexpr double kYieldTolerance = 1e-9;         // fraction of face
inline constexpr double kFinestYieldTolerance = 1e-14;  // fraction of face
inline constexpr int kYieldIterations = 64;
inline constexpr double kBracketUpperYield = 25.0;

// The yield (decimal, compounded at the coupon frequency) at which the
// bond's clean price is `price` (per 100 of the face the description
// prices: initial face for an amortising bond). Errors through `error` (may
// be null): 1 (closed form with a non-positive price or life, or both
// solvers failed), 350, 160, 460; the result is then -1.0, or -999.0 when
// the solvers failed.
double yield_from_price(double price, const engine::bond_desc& desc, int32_t* error) noexcept;

// The yield to maturity as the market quotes it: the quoted price (per 100
// of outstanding face) moved to the description's face by the price factor,
// solved by `yield_from_price`, and re-expressed at the type's quotation
// frequency when that differs from the coupon frequency and more than one
// period remains (an error there is 1 with -1.0). Not rounded.
double quoted_yield_from_price(double price, const engine::bond_desc& desc,
                               int32_t* error) noexcept;


}  // namespace kbond::engine
