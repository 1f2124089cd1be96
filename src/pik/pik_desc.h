// PIK (payment-in-kind) bonds: each coupon is paid partly in cash and partly
// in kind. The in-kind part is not paid out but added to the principal, so
// every later cash coupon and the redemption are paid on a principal that
// has grown by the in-kind coupons. Both rates may step over the life of the
// bond, at the same step dates.
//
// `pik_setup` is the PIK counterpart of `bond_setup`: it validates the
// arguments and places the coupon grid around settlement with the bond
// engine's own set-up and schedule step, then adds what is particular to a
// PIK bond (the two rate schedules, the call date, business-day payment).
//
//   pik_args args{...};
//   pik_desc pik;
//   if (pik_setup(args, pik) != 0) { /* error 1 */ }
//   double price = pik_price(0.08, pik, nullptr, &err);
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::pik {

// The arguments shared by the PIK exports, in their order.
struct pik_args {
  const double* cash_rates = nullptr;  // cash coupon rates per step (decimal per year)
  int32_t n_cash = 0;
  const double* pik_rates = nullptr;   // in-kind coupon rates per step
  int32_t n_pik = 0;
  const int32_t* dates = nullptr;      // step dates; the last is maturity
  int32_t n_dates = 0;
  int32_t settlement = 0;
  const int32_t* dated_date = nullptr;    // NULL or 0: derived
  const int32_t* first_coupon = nullptr;  // NULL or 0: derived
  const int32_t* type = nullptr;          // NULL: 0 with the end-of-month rule
  const int32_t* frequency = nullptr;     // NULL or 0: the type's default
  const double* redemption = nullptr;     // per 100 of face; NULL: 100
  const int32_t* call_date = nullptr;     // NULL or 0: maturity
  const int32_t* pay_on_business_day = nullptr;  // nonzero: coupons paid on business days
  const int32_t* holiday_options = nullptr;      // bit 0 Saturday works, bit 1 Sunday works
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
};

struct pik_desc {
  // Coupon grid, period counts and period fractions of the bond as redeemed
  // at the call date (its `maturity` is the call date). The description
  // borrows nothing that needs releasing: no amortisation.
  engine::bond_desc grid;
  int32_t type = 0;                 // base type code
  int32_t accrual_basis = 0;        // day count for business-day payment times
  int32_t frequency = 2;
  int32_t months_per_period = 6;
  const double* cash_rates = nullptr;
  int32_t n_cash = 0;
  const double* pik_rates = nullptr;
  int32_t n_pik = 0;
  const int32_t* dates = nullptr;
  int32_t n_dates = 0;
  int32_t maturity = 0;
  int32_t call_date = 0;
  int32_t pay_on_business_day = 0;
  double redemption = 100.0;
  // The coupon being earned now: cash and in-kind parts and accrued cash
  // interest, fractions of face.
  double cash_now = 0.0;
  double pik_now = 0.0;
  double accrued = 0.0;

  int32_t remaining_periods() const noexcept { return grid.remaining_periods(); }
  bool single_period() const noexcept { return remaining_periods() == 1; }
};

// Fills `desc` from `args`: 0 on success, 1 on any invalid argument. Only
// the types 0, 3, 500, 510, 530, 540 and their end-of-month variants are
// PIK types. Rate counts: with one step date both counts are 1; with more,
// a single in-kind rate needs stepped cash rates (n_cash = n_dates), and
// stepped in-kind rates (n_pik = n_dates) go with stepped cash rates or a
// single one.
int32_t pik_setup(const pik_args& args, pik_desc& desc) noexcept;

// Index of the step whose rate is in force for a period starting at `date`:
// the first step date on or after it, moved on by one when that step date
// is `date` itself and is not the last. Rates never step backwards, so a
// walk through the periods may start from its previous result (`from`).
int32_t step_index(const int32_t* step_dates, int32_t count, int32_t date,
                   int32_t from = 0) noexcept;

}  // namespace kbond::pik
