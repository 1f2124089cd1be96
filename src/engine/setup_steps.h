// Steps of bond_setup that the set-ups of other bond families share: the
// check of coupon frequencies, the bond type and its coupon frequency,
// the business-day calendar, the end-of-month rule a grid anchor settles,
// and the accrued interest with its ex-dividend sign. Each fills fields of a
// `bond_desc` as bond_setup does; all live in bond_setup.cpp.
//
//   if (!read_type(args.type, settlement, nullptr, g) || !read_frequency(given, g)) return 1;
//   read_calendar(args.flags, args.holidays, args.n_holidays, g);
#pragma once
#include <cstdint>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/bond_desc.h"

namespace kbond::engine {

inline bool valid_frequency(int32_t f) noexcept {
  return f == 1 || f == 2 || f == 3 || f == 4 || f == 6 || f == 12;
}

// The type code (NULL: 0 with the end-of-month rule), after the Danish 2001
// switch, to `type`, `conventions` and `eom`; `eom_override` (may be null)
// then decides the end-of-month rule. False for an unknown code.
bool read_type(const int32_t* type, int32_t settlement, const int32_t* eom_override,
               bond_desc& d) noexcept;

// The caller's coupon frequency (0: the type's default) to `frequency` and
// `months_per_period`. False unless it is 1, 2, 3, 4, 6 or 12.
bool read_frequency(int32_t given, bond_desc& d) noexcept;

// The weekend flags (bits 0 and 1 of `bd_flags`, may be null) and the
// holiday list (absent when the count is not positive).
void read_calendar(const int32_t* bd_flags, const int32_t* holidays, int32_t n_holidays,
                   bond_desc& d) noexcept;

// A grid anchored on the 31st follows month ends; one anchored inside a
// month does not; a month end before the 31st keeps the type's rule.
void decide_eom_from_anchor(bond_desc& d, const dates::SplitDate& anchor) noexcept;

// The full coupon of the current period and the interest accrued in it at
// `rate`, after the market's accrued-day adjustments.
void compute_accrued(bond_desc& d, double rate) noexcept;

// Sets `exdiv` from the ex-dividend date of `next_coupon` under `type` (or
// the description's ex-dividend override) and, when set, makes the accrued
// interest the negative interest of the days left to the coupon. With
// `own_day_count` a 365-day coupon day count counts those days itself;
// otherwise, and for every other day count, the full coupon is subtracted.
void apply_ex_dividend(bond_desc& d, const BondTypeRef& type, double rate,
                       bool own_day_count) noexcept;

}  // namespace kbond::engine
