// Yield of a floating-rate note from its clean price: Newton's method from
// the latest rate of the schedule, then a bracketing search on [0, 25].
#pragma once
#include <cstdint>

#include "frn/frn_price_core.h"

namespace kbond::frn {

// `price` is clean per unit of par. On failure of both searches: -999.0 with
// error 1.
double frn_yield_from_price(const FrnValuation& valuation, double price, int32_t& err) noexcept;

}  // namespace kbond::frn
