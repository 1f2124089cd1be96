// Price and yield of an index-linked gilt (8-month lag), after the UK Debt
// Management Office's formula: the projected nominal flows are discounted on
// the quasi-coupon grid at the nominal rate that the quoted real yield y and
// the assumed inflation imply,
//
//   v = 1 / ((1 + y / 2) * (1 + inflation)^(1/2))
//   dirty = 100 * sum(flow_k * v^(r/s + k)) + 100 * redemption * v^(last),
//
// r/s being the days from settlement to the next coupon date over the days
// of the quasi-coupon period. An ex-dividend settlement drops the next
// coupon. When only the redemption remains, every flow is known and the
// price is a money-market one over the actual days to the (business-day
// adjusted) redemption on a 365-day year: dirty = 100 * (coupon + redemption)
// / (1 + t * y).
#pragma once
#include <cstdint>

#include "inflation/ilg_desc.h"

namespace kbond::inflation {

// Unrounded dirty price per 100 at real yield y; `derivative` (may be null)
// receives d(dirty)/dy per 100. Error 1 (result -100 for the money-market
// path, -1 otherwise) when the discounting is undefined.
double ilg_dirty_price(const IlgDesc& desc, double yield, double* derivative, int32_t* error) noexcept;

// The quoted clean price: dirty rounded to six decimals less the accrued.
double ilg_clean_price(const IlgDesc& desc, double yield, int32_t* error) noexcept;

// The real yield at which the unrounded clean price equals `clean_price`.
double ilg_yield(const IlgDesc& desc, double clean_price, int32_t* error) noexcept;

}  // namespace kbond::inflation
