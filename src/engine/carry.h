// The cash-and-carry trade in a bond: buy it at settlement, finance it at a
// repo rate, collect its coupons (reinvesting them or not), and hold it to
// an end date (a futures delivery date or a forward date). The carry is
// what the position earns over that period as a fraction of face: accrued
// interest gained plus coupon income minus the financing cost; the forward
// price is the price less the carry. The futures carry exports run it on a
// straight bond's description; the perpetual family's carry follows the
// same financing rule (`period_interest`) and mode word.
//
//   CarryTerms terms{end, price, repo, reinvest, basis, days, mode, rule};
//   int32_t err = 0;
//   double carry = carry_engine(desc, args, terms, &err);  // fraction of face
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {

// The mode word: bits 1-2 select how financing accrues, bit 0 whether
// coupons received are reinvested (under the same mode; simply under
// kFullPeriod).
enum FinancingMode : int32_t {
  kSimpleInterest = 0,      // simple interest, compounding at coupon dates
  kFullPeriodInterest = 2,  // simple interest on the start amount over the whole period
  kContinuous = 4,          // continuous compounding
};
inline constexpr int32_t kReinvestCoupons = 1;

// Interest on `amount` over t years: simple (mode 0), continuous (mode 4);
// any other mode earns nothing (coupons without reinvestment).
double period_interest(double amount, double rate, double t, int32_t mode) noexcept;

struct CarryTerms {
  int32_t end_date = 0;
  double price = 0.0;             // clean, per 100 (of outstanding face)
  double repo = 0.0;              // decimal per year
  double reinvest = 0.0;          // decimal per year
  const double* basis = nullptr;  // day basis; NULL or <= 0: the type's money-market basis
  const int32_t* days = nullptr;  // the period ends this many days before end_date
  const int32_t* mode = nullptr;  // mode word, NULL = 0
  int32_t date_rule = 0;          // nonzero: end_date rolled to a business day
};

// Carry over the period, as a fraction of face, for a description set up at
// the settlement date. `args` are the arguments that description was built
// from (the end-date accrued interest needs a description of its own).
// For a bond quoted per outstanding face (price factor), the result is
// scaled so that price - 100 * carry / price_factor is the forward price per
// 100 of the face outstanding at the end. Errors: 160 (end date not after
// settlement, result -999.0), 1 (end-date description invalid, or a rate
// that cannot be re-expressed continuously).
double carry_engine(const engine::bond_desc& desc, const engine::bond_args& args,
                    const CarryTerms& terms, int32_t* error) noexcept;

}  // namespace kbond::engine
