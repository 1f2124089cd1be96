// The period fractions of the coupon period around settlement: the year
// fractions that the accrued interest and the price-yield evaluators read,
// the size of the current coupon (cf), the time to the next coupon (tn),
// the accrued part of the period (ay), the two year bases and the fractions
// of a broken last period.
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {

// Fills cf, tn, ay, basis, basis_accrual, quasi_start, last_discount and
// last_coupon from the grid fields (anchor, months_per_period, eom,
// period_start, next_coupon, position, partial_period) and the day counts.
// Returns 1 when a year basis is not positive (an unusable day count), else 0.
int32_t compute_period_fractions(bond_desc& desc) noexcept;

}  // namespace kbond::engine
