// The cash-and-carry trade in a perpetual bond: buy it at settlement,
// finance it at a repo rate, collect (and perhaps reinvest) its coupons and
// hold it to an end date. The carry is what the position earns over the
// period as a fraction of face: accrued interest gained plus coupon income
// minus the financing cost. The forward price is the price less the carry.
//
// The mode word: bits 1-2 select how financing accrues (0 simple interest,
// compounding at coupon dates; 2 simple interest on the start amount over
// the whole period; 4 continuous compounding, both rates first re-expressed
// from the coupon frequency); bit 0 set reinvests the coupons received under
// the same mode (simply under mode 2). Days count over the bond type's
// money-market year (360 or 365). Financing and reinvestment accrue in the
// bond futures' account (engine::CarryAccount).
#pragma once
#include <cstdint>

#include "perpetual/perpetual_desc.h"

namespace kbond::perpetual {

struct CarryTerms {
  int32_t end_date = 0;
  double price = 0.0;             // clean, per 100
  double repo = 0.0;              // decimal per year
  double reinvest = 0.0;          // decimal per year
  const int32_t* mode = nullptr;  // mode word, NULL = 0
};

// Carry, as a fraction of face, of `desc` (set up at the settlement date
// from `args`) to terms.end_date. Errors: 160 with -999.0 when the end date
// is not after settlement; 1 with -1.0 when the end-date description cannot
// be built, a rate cannot be re-expressed continuously, or the carry is not
// finite (a price or rate that is not a number, or too large).
double perpetual_carry(const perpetual_desc& desc, const perpetual_args& args,
                       const CarryTerms& terms, int32_t* error) noexcept;

}  // namespace kbond::perpetual
