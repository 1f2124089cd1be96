// The cash-and-carry trade in a bond: buy it at settlement, finance it at a
// repo rate, collect its coupons (reinvesting them or not), and hold it to
// an end date (a futures delivery date or a forward date). The carry is
// what the position earns over that period as a fraction of face: accrued
// interest gained plus coupon income minus the financing cost; the forward
// price is the price less the carry. The futures carry exports run it on a
// straight bond's description; the perpetual family's carry keeps the same
// account (`CarryAccount`).
//
//   CarryTerms terms{end, price, repo, reinvest, basis, days, mode, rule};
//   int32_t err = 0;
//   double carry = carry_engine(desc, args, terms, &err);  // fraction of face
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"
#include "engine/solvers.h"

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

// The financing side of a carry, shared by the futures and perpetual
// families: the mode word read once, both rates ready to accrue, and the
// financing cost and coupon income running from date to date.
struct CarryAccount {
  int32_t financing = kSimpleInterest;  // bits 1-2 of the mode word
  int32_t reinvesting = -1;             // mode the coupons earn under; -1: they do not
  double repo = 0.0;
  double reinvest = 0.0;
  double unit = 0.0;  // years per day
  double cash = 0.0;  // the purchase financed, per unit of face
  double financing_cost = 0.0;
  double income = 0.0;
  int32_t from = 0;  // date accrued to

  // Reads the mode word (NULL = 0); under continuous financing both rates,
  // quoted at `frequency`, are re-expressed continuously. False when one
  // cannot be.
  bool start(const int32_t* mode, double repo_rate, double reinvest_rate,
             double frequency) noexcept;
  // Financing and reinvestment from `from` to `to`.
  void accrue_to(int32_t to) noexcept;
  // Financing on the start amount over the whole period (mode 2), from
  // `settlement` to `stop`.
  void finish(int32_t settlement, int32_t stop) noexcept;
  // A coupon paid `t` years later is worth this much per unit now, at the
  // reinvestment rate.
  double discount(double t) const noexcept;
};

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

// The repo rate at which `carry(rate, nullptr)` (NaN where no carry exists)
// meets `target`, searched over three brackets in turn: the usual range,
// deeply negative rates, then high ones. -999.0 with the last solver error
// when none holds it.
template <class Carry>
double implied_repo_rate(Carry&& carry, double target, int32_t* error) noexcept {
  static constexpr double kBrackets[3][2] = {{-0.99, 5.0}, {-4.0, 0.01}, {0.0, 15.0}};
  int32_t err = 0;
  for (const auto& bracket : kBrackets) {
    const double rate = bracket_solve(carry, target, bracket[0], bracket[1], 1e-6, 64, &err);
    if (err == 0) return rate;
  }
  *error = err;
  return -999.0;
}

}  // namespace kbond::engine
