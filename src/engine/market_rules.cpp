// The market rules that need more than a comparison: the accrued-day
// adjustments and the code substitutions (see market_rules.h).
#include "engine/market_rules.h"

#include <cmath>

#include "engine/custom_types.h"

namespace kbond::engine {
namespace {

// The Canadian cap: a regular period never accrues more than 363/f days
// (181.5 for semiannual coupons), so 182 to 184 accrued days all give 181.5.
bool apply_canadian_cap(double* days, bool regular_period, int32_t frequency) noexcept {
  if (!regular_period || frequency <= 0) return false;
  const double cap = 363.0 / frequency;
  if (!(*days > cap)) return false;
  *days = cap;
  return true;
}

}  // namespace

bool bond_type_adjust_accrual_days(double* days, int32_t base, int32_t settlement,
                                   bool regular_period, int32_t frequency,
                                   double coupon_rate) noexcept {
  if (!days) return false;
  switch (base) {
    case 20:
      return apply_canadian_cap(days, regular_period, frequency);
    case 260:
    case 261:
      if (!before_change_day(settlement, kSerial1Jan1999)) return false;
      [[fallthrough]];
    case 264:
    case 266:
    case 268:
    case 270:
      // Italian bonds accrued up to and including the settlement day.
      *days += 1.0;
      return true;
    case 290:
    case 292:
    case 700: {
      // Until November 1998 Portugal truncated the daily interest on 10^8 of
      // face (rate x 10^8 / 360) to whole units.
      if (!before_change_day(settlement, kSerial1Nov1998)) return false;
      const double c = coupon_rate * 277777.7777777778;
      if (c == 0.0 || !std::isfinite(c)) return false;
      const double scaled = *days * (std::floor(c) / c);
      const bool changed = scaled != *days;
      *days = scaled;
      return changed;
    }
    default:
      break;
  }
  const CustomType* slot = custom_type(base);
  if (!slot) return false;
  bool changed = false;
  if (slot->accrual_days != 0) {
    *days += slot->accrual_days;
    changed = true;
  }
  if (slot->canadian_cap != 0)
    changed = apply_canadian_cap(days, regular_period, frequency) || changed;
  return changed;
}

int32_t apply_danish_rule(int32_t code, int32_t settlement) noexcept {
  if ((code == 302 || code == 303) && !before_change_day(settlement, kSerial8Feb2001))
    return code - 2;
  return code;
}

int32_t accrual_substitute(int32_t code) noexcept {
  switch (code) {
    case 16: return 2;
    case 17: return 12;
    case 22: return 20;
    default: return code;
  }
}

}  // namespace kbond::engine
