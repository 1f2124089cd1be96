// The validated description of one straight bond, built from the 28 common
// bond arguments that every straight-bond export receives.
//
// An export copies its arguments once into a `bond_args` record and hands it
// to `bond_setup`, which validates them, completes what the caller left out
// from the bond type catalogue, places the coupon grid around settlement,
// computes the period fractions and the accrued interest, and fills a
// `bond_desc` on the caller's stack. The description borrows the caller's
// arrays and owns only the copied amortisation schedule (kind 2), which
// `bond_release` frees.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "engine/catalogue.h"

namespace kbond::engine {

// The common bond arguments, numbered 1..28 in this order.
struct bond_args {
  const double* coupons = nullptr;       //  1 coupon rates (decimal) per step
  int32_t n_coupons = 0;                 //  2
  const int32_t* dates = nullptr;        //  3 coupon-change dates; last = maturity
  int32_t n_dates = 0;                   //  4
  int32_t settlement = 0;                //  5
  const int32_t* dated_date = nullptr;   //  6 NULL or 0: derived
  const int32_t* first_coupon = nullptr; //  7 NULL or 0: derived
  const int32_t* type = nullptr;         //  8 NULL: code 0 with the end-of-month rule
  const int32_t* frequency = nullptr;    //  9 [0] coupons/year, [1] amortisations/year
  int32_t n_frequency = 0;               // 10
  const double* redemption = nullptr;    // 11 per 100 face; default 100
  const double* coupon_tax = nullptr;    // 12 withholding tax on coupons
  const double* discount_tax = nullptr;  // 13 tax on the issue discount / capital gain
  const int32_t* eom = nullptr;          // 14 end-of-month override
  const int32_t* horizon = nullptr;      // 15 <= 24 months, > 24 days; default 12 months
  const double* issue_price = nullptr;   // 16 default 100
  const int32_t* yield_method = nullptr; // 17 -1..-6 select a method; other nonzero -> 1
  const int32_t* bd_flags = nullptr;     // 18 bits 0, 1: weekend flags for business days
  const int32_t* holidays = nullptr;     // 19
  int32_t n_holidays = 0;                // 20
  const double* factor = nullptr;        // 21 amortisation: <0 equal, (0,1] schedule
  const int32_t* sink_dates = nullptr;   // 22
  int32_t n_sink = 0;                    // 23
  const int32_t* sink_ends = nullptr;    // 24
  int32_t n_sink_ends = 0;               // 25
  const double* sink_amounts = nullptr;  // 26 fractions of initial face
  const double* sink_premium = nullptr;  // 27
  const int32_t* exdiv_days = nullptr;   // 28 n < 1 calendar days, n >= 1 business days
};

// Where settlement lies.
enum SettlementPosition : int32_t {
  kRegularPeriod = 0,     // regular period, or a first period of regular length
  kLongFirstPeriod = 1,
  kShortFirstPeriod = 2,
  kNoGridDateLeft = 3     // no grid date remains before maturity
};

enum AmortisationKind : int32_t { kNoAmortisation = 0, kEqualAmortisation = 1, kScheduledAmortisation = 2 };

struct bond_desc {
  int32_t type = 0;               // base bond type code
  BondTypeRef conventions;        // the type's catalogue row or custom slot
  int32_t accrual_basis = 0;      // accrued-interest day count
  int32_t frequency = 2;          // coupons per year
  int32_t months_per_period = 6;
  int32_t eom = 0;                // end-of-month rule in force
  const double* coupons = nullptr;
  int32_t n_coupons = 0;          // coupon steps (0 for the single-date redemption forms)
  int32_t coupon_index = 0;       // index of the rate in force in the current period
  const int32_t* dates = nullptr;
  int32_t n_dates = 0;
  int32_t maturity = 0;
  int32_t dated_date = 0;
  int32_t first_coupon = 0;
  double redemption = 100.0;      // per 100 face (after the Italian discount-tax deduction)
  double issue_price = 100.0;
  int32_t settlement = 0;
  int32_t odd_first = 0;          // settlement in an odd first period
  int32_t whole_periods = 0;
  int32_t partial_period = 0;     // a broken last period remains
  double coupon_tax = 0.0;
  double discount_tax = 0.0;
  int32_t horizon_date = 0;
  int32_t yield_method_arg = 0;   // normalised yield-method argument
  int32_t roll_forward = 0;       // bd_flags bit 0: Saturday is a business day
  int32_t roll_flag2 = 0;         // bd_flags bit 1: Sunday is a business day
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
  double redemption_ratio = 1.0;
  int32_t simple_final = 0;
  int32_t position = kRegularPeriod;
  int32_t period_start = 0;
  int32_t next_coupon = 0;
  int32_t periods_per_sink = 1;
  int32_t amort_kind = kNoAmortisation;
  int32_t next_sink = 0;
  int32_t* sink_dates_owned = nullptr;   // kind 2: ends with date -1, amount 0
  double* sink_amounts_owned = nullptr;
  const int32_t* sink_dates_borrowed = nullptr;  // kind 1
  int32_t n_sink = 0;
  double factor = 1.0;            // outstanding fraction of face at settlement
  // Amortising bonds are quoted per 100 of outstanding face while the
  // evaluators price per 100 of initial face: for every amortising bond the
  // flag is set and price_factor is the outstanding factor at settlement
  // (`factor`); exports divide prices by it (and multiply quoted prices by
  // it before solving for a yield). Accrued interest is per outstanding face.
  int32_t price_factor_flag = 0;
  double price_factor = 1.0;
  // Period fractions from the schedule step.
  int32_t coupon_basis = 0;       // dcC: day count of the coupon and accrued fractions
  double cf = 1.0;                // current coupon as a multiple of a regular one
  double tn = 0.0;                // years from settlement to next_coupon
  double ay = 0.0;                // accrued part of the period, years
  double basis = 365.0;           // year basis of the coupon day count (B)
  double basis_accrual = 365.0;   // year basis of the accrual day count (BA)
  int32_t quasi_start = 0;        // quasi-coupon date beginning the current period
  double last_discount = 0.0;     // LD: discount fraction of a broken last period
  double last_coupon = 0.0;       // LC: coupon fraction of a broken last period
  double full_coupon = 0.0;       // (1 - coupon_tax) * rate * cf / frequency
  int32_t exdiv = 0;              // settlement on or after the ex-dividend date
  double accrued = 0.0;           // accrued interest, fraction of face
  int32_t anchor = 0;             // date the coupon grid is generated from
  int32_t exdiv_days_given = 0;   // exdiv override present
  int32_t exdiv_days = 0;

  dates::BusinessCalendar calendar() const noexcept {
    return dates::BusinessCalendar{holidays, n_holidays, roll_forward, roll_flag2};
  }
  // Remaining cash-flow periods.
  int32_t remaining_periods() const noexcept { return odd_first + whole_periods + partial_period; }
  // Coupon rate in force in the current period.
  double current_rate() const noexcept { return coupons ? coupons[coupon_index] : 0.0; }
};

// Validates the common bond arguments and fills `desc`: 0 on success, 1 on
// any invalid argument (counts below zero, NULL arrays with positive counts,
// NaN or infinite values, dates outside 1..1825000, unknown type, frequency
// outside {1, 2, 3, 4, 6, 12}, misordered dates) or exhausted memory. On
// failure the record holds no allocated arrays. Allocates only the copied
// amortisation schedule (kind 2).
int32_t bond_setup(const bond_args& args, bond_desc& desc) noexcept;

// Frees the owned amortisation arrays; harmless to call twice.
void bond_release(bond_desc& desc) noexcept;

// Coupon rate in force for the period that starts at `period_start`
// (the rate whose coupon-change date is the first after the period start).
double rate_in_force(const bond_desc& desc, int32_t period_start) noexcept;

}  // namespace kbond::engine
