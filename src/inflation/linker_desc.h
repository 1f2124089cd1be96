// U.S. Treasury inflation-indexed securities (TIPS, semi-annual coupons) and
// French inflation-indexed OATs (OATi, annual coupons): the validated
// description of one bond and the two set-ups, which differ only in the
// coupon period.
//
// Both index their principal by a daily reference index: the index ratio at
// settlement is Ref(settlement) / Ref(base date), neither rounded (the U.S.
// Treasury's published tables round both to five decimals).
// Prices are quoted in real terms (per 100 of unindexed principal); the
// inflation-adjusted amounts are the real ones times the index ratio.
//
// Caller options:
//   option_a  (int32*, NULL = 0)  1: payments on a non-business day move to
//             the following business day (dates in the cash-flow table, and
//             nothing else: discounting stays on the coupon grid).
//   option_b  (int32)             price basis: 0 real (quoted) clean price,
//             1 inflation-adjusted clean price. Any other value is refused.
//   option_c  (int32*, NULL = the maturity date)  the dated date at which the
//             base reference index is taken. Both markets date an issue on its
//             maturity's anniversary, so the maturity's day of month (and its
//             month's length) serve when it is absent.
// U.S. Treasuries and OATs trade with the coupon up to the payment date:
// there is no ex-dividend period.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "inflation/indexed_bond.h"

namespace kbond::inflation {

struct LinkerArgs {
  double coupon = 0.0;  // real coupon, percent per year
  const double* base_index = nullptr;
  int32_t base_count = 0;
  const double* settlement_index = nullptr;
  int32_t settlement_index_count = 0;
  int32_t maturity = 0;
  int32_t settlement = 0;
  const int32_t* option_a = nullptr;
  const double* next_coupon_amount = nullptr;  // percent; when given the next coupon is fixed
  int32_t option_b = 0;
  const int32_t* previous_coupon = nullptr;
  const int32_t* next_coupon = nullptr;
  const double* inflation = nullptr;
  const int32_t* option_c = nullptr;
  const int32_t* holiday_options = nullptr;
  const int32_t* holidays = nullptr;
  int32_t holiday_count = 0;
  const int32_t* end_of_month = nullptr;
};

struct LinkerDesc : IndexedBond {
  int32_t months_per_period = 6;
  int32_t frequency = 2;
  double coupon = 0.0;  // fraction per year
  double base_values[2] = {0.0, 0.0};
  int32_t base_count = 0;
  double settlement_values[2] = {0.0, 0.0};
  int32_t settlement_count = 0;
  bool nominal_basis = false;  // option_b = 1
  int32_t base_date = 0;
  double base_reference = 0.0;
  double settlement_reference = 0.0;
  double index_ratio = 0.0;        // settlement / base reference, unrounded
  double next_coupon_amount = 0.0; // fraction of par, inflation-adjusted
};

// Both return 0 and fill `desc`, or an error code: 1 for an invalid argument,
// 152 or 153 from the month length of a two-value index interpolation.
int32_t tips_setup(const LinkerArgs& args, LinkerDesc* desc) noexcept;
int32_t oati_setup(const LinkerArgs& args, LinkerDesc* desc) noexcept;

}  // namespace kbond::inflation
