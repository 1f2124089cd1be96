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

inline constexpr LinkerFamily kTipsFamily{&tips_setup, false};
inline constexpr LinkerFamily kOatiFamily{&oati_setup, true};

double linker_price_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                           int32_t* error) noexcept;
double linker_yield_export(const LinkerFamily& family, const LinkerArgs& args, double price,
                           int32_t* error) noexcept;
// Modified duration, or convexity when `convexity`; error 1 for a value
// that is not positive.
double linker_risk_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                          bool convexity, int32_t* error) noexcept;
// NULL index pointers stand for a reference index of 100.
double linker_accrued_export(const LinkerFamily& family, LinkerArgs args, int32_t* error) noexcept;
// Rows: one per coupon date, amounts per 100 inflation-adjusted, the
// redemption added to the last row.
int32_t linker_cashflow_export(const LinkerFamily& family, const LinkerArgs& args, int32_t** dates_out,
                               double** amounts_out, int32_t* error) noexcept;

}  // namespace kbond::inflation
