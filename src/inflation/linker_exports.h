// The bodies of the TIPS and OATi exports, written once for both families.
// Each export checks its index arrays (a base count above 2 or a settlement
// count of 3 or more: error 70, before anything else; a NULL index pointer:
// error 50), runs its family's set-up (error 1, or 152/153 from the index
// interpolation) and computes. The failure value is -1.0, or 0 rows.
#pragma once
#include <cstdint>

#include "inflation/linker_desc.h"

namespace kbond::inflation {

struct LinkerFamily {
  int32_t (*setup)(const LinkerArgs&, LinkerDesc*) noexcept;
  bool truncate_dirty;  // OATi: the dirty value is cut at six decimals before the accrued is taken off
};

// The argument record of a KVLtipspr-style argument list.
inline LinkerArgs make_linker_args(double coupon, const double* base_index, int32_t base_count,
                                   const double* settlement_index, int32_t settlement_index_count,
                                   int32_t maturity, int32_t settlement, const int32_t* option_a,
                                   const double* next_coupon_amount, int32_t option_b,
                                   const int32_t* previous_coupon, const int32_t* next_coupon,
                                   const double* inflation, const int32_t* option_c,
                                   const int32_t* holiday_options, const int32_t* holidays,
                                   int32_t holiday_count, const int32_t* end_of_month) noexcept {
  LinkerArgs args;
  args.coupon = coupon;
  args.base_index = base_index;
  args.base_count = base_count;
  args.settlement_index = settlement_index;
  args.settlement_index_count = settlement_index_count;
  args.maturity = maturity;
  args.settlement = settlement;
  args.option_a = option_a;
  args.next_coupon_amount = next_coupon_amount;
  args.option_b = option_b;
  args.previous_coupon = previous_coupon;
  args.next_coupon = next_coupon;
  args.inflation = inflation;
  args.option_c = option_c;
  args.holiday_options = holiday_options;
  args.holidays = holidays;
  args.holiday_count = holiday_count;
  args.end_of_month = end_of_month;
  return args;
}

inline constexpr LinkerFamily kTipsFamily{&tips_setup, false};
inline constexpr LinkerFamily kOatiFamily{&oati_setup, true};

double linker_price_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                           int32_t* error) noexcept;
double linker_yield_export(const LinkerFamily& family, const LinkerArgs& args, double price,
                           int32_t* error) noexcept;
double linker_duration_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                              int32_t* error) noexcept;
double linker_convexity_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                               int32_t* error) noexcept;
// NULL index pointers stand for a reference index of 100.
double linker_accrued_export(const LinkerFamily& family, LinkerArgs args, int32_t* error) noexcept;
// Rows: one per coupon date, amounts per 100 inflation-adjusted, the
// redemption added to the last row.
int32_t linker_cashflow_export(const LinkerFamily& family, const LinkerArgs& args, int32_t** dates_out,
                               double** amounts_out, int32_t* error) noexcept;

}  // namespace kbond::inflation
