// The frame shared by the cash-and-carry exports: the business-day block of
// the `1` variants, the date checks, the custom-type lock and the bond
// description at settlement.
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"
#include "engine/carry.h"

namespace kbond::futures {

// The four trailing arguments of the `1` variants.
struct BusinessDayBlock {
  const int32_t* date_rule = nullptr;   // 0 none, 1 roll settlement, 2 both must be business days
  const int32_t* holidays = nullptr;
  int32_t n_holidays = 0;
  const int32_t* calendar_flags = nullptr;  // bit 0 Saturday works, bit 1 Sunday works
};

// The carry exports' bond arguments after their own leading ones: the
// common arguments 6-10, 12 and 21-28, then the day basis, the days before
// the end date and the mode word.
struct CarryBondTail {
  const int32_t* dated_date;
  const int32_t* first_coupon;
  const int32_t* type;
  const int32_t* frequency;
  int32_t n_frequency;
  const double* coupon_tax;
  const double* factor;
  const int32_t* sink_dates;
  int32_t n_sink;
  const int32_t* sink_ends;
  int32_t n_sink_ends;
  const double* sink_amounts;
  const double* sink_premium;
  const int32_t* exdiv_days;
  const double* basis;
  const int32_t* days;
  const int32_t* mode;
};

struct CarryCall {
  engine::bond_args args;      // settlement already rolled when the rule asks
  engine::CarryTerms terms;    // end date, basis, days, mode, date rule (rates set by the export)
};

// Given the description at settlement and the call, returns the export's
// result and may set the error.
using CarryCompute = double (*)(const engine::bond_desc& desc, const CarryCall& call,
                                const void* context, int32_t* error);

// Checks the date rule (460 outside 0..2, unless `keep_going_on_bad_rule`:
// then the end date is rolled and set-up decides the error code), the
// business days under rule 2 (160), the end date against maturity (160);
// takes the lock (-60), sets the bond up (its code), runs `compute`,
// releases. Failure value -1.0 unless `compute` returns its own.
double run_carry_frame(const double* coupons, int32_t n_coupons, const int32_t* dates,
                       int32_t n_dates, int32_t settlement, int32_t end_date,
                       const CarryBondTail& tail, const BusinessDayBlock& block,
                       bool keep_going_on_bad_rule, CarryCompute compute, const void* context,
                       int32_t* error) noexcept;

}  // namespace kbond::futures
