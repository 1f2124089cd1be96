// Lookups over the catalogue rows (catalogue_table.cpp) and the custom-type
// table, plus the few conventions that depend on a date or a coupon rate.
//
// A date argument of 0 means "no date": the convention in force today.
#include "engine/catalogue.h"

#include <cmath>

#include "engine/catalogue_table.h"

namespace kbond::engine {
namespace {

constexpr const char kUnknownName[] = "unknown bond";

// True when a real date lies before the day a convention changed.
bool before(int32_t date, int32_t switch_day) noexcept { return date > 0 && date < switch_day; }

int32_t resolve(const DatedCode& code, int32_t settlement, int32_t period_start) noexcept {
  switch (code.when) {
    case DateSwitch::kNone:
      return code.current;
    case DateSwitch::kSettlementBefore1Nov1998:
      return before(settlement, kSerial1Nov1998) ? code.before : code.current;
    case DateSwitch::kSettlementBefore1Jan1999:
      return before(settlement, kSerial1Jan1999) ? code.before : code.current;
    case DateSwitch::kPeriodStartBefore1Jan1999:
      return before(period_start, kSerial1Jan1999) ? code.before : code.current;
  }
  return code.current;
}

// 30/360 accrues with the U.S. February rule when the bond keeps to month ends.
int32_t with_month_end_rule(int32_t code, int32_t eom) noexcept {
  return (code == 1 && eom != 0) ? 7 : code;
}

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

int32_t bond_type_name(int32_t code, const char** name) noexcept {
  const char* found = kUnknownName;
  int32_t base = -1;
  if (const CatalogueRow* row = catalogue_row(code)) {
    found = row->name;
    base = row->code;
  } else if (const CustomType* slot = custom_type(code)) {
    found = slot->name;
    base = code;
  }
  if (name) *name = found;
  return base;
}

BondTypeRef bond_type_ref(int32_t code) noexcept {
  BondTypeRef type;
  type.row = catalogue_row(code);
  if (!type.row) type.custom = custom_type(code);
  return type;
}

int32_t bond_type_base(int32_t code, const BondTypeRef& type) noexcept {
  if (type.row) return type.row->code;
  return type.custom ? code : -1;
}

int32_t bond_type_eom_default(int32_t code, const BondTypeRef& type) noexcept {
  if (type.row) return code == type.row->eom_code ? 1 : 0;
  return type.custom ? type.custom->eom : 0;
}

int32_t bond_type_frequency(const BondTypeRef& type) noexcept {
  if (type.row) return type.row->frequency;
  return type.custom ? type.custom->frequency : -1;
}

int32_t bond_type_accrual_basis(const BondTypeRef& type, int32_t settlement,
                                int32_t period_start, int32_t eom) noexcept {
  if (type.row) return with_month_end_rule(resolve(type.row->accrual, settlement, period_start), eom);
  if (type.custom) return with_month_end_rule(type.custom->accrual_basis, eom);
  return -1;
}

int32_t bond_type_exdiv_basis(const BondTypeRef& type, int32_t period_start,
                              int32_t accrual_basis) noexcept {
  if (type.row) {
    if (type.row->exdiv_basis.current == kSameAsAccrual) return accrual_basis;
    return resolve(type.row->exdiv_basis, 0, period_start);
  }
  if (type.custom) {
    const int32_t basis = type.custom->exdiv_basis;
    return (basis == 1 && accrual_basis == 7) ? 7 : basis;
  }
  return accrual_basis;
}

int32_t bond_type_yield_method(const BondTypeRef& type, int32_t yield_method_arg) noexcept {
  // A negative argument names the method outright.
  switch (yield_method_arg) {
    case -6:
    case -1: return 0;
    case -2: return 1;
    case -3: return 2;
    case -4: return 3;
    case -5: return 4;
    default: break;
  }
  if (type.row) return type.row->yield_method;
  return type.custom ? type.custom->yield_method : 0;
}

int32_t bond_type_annual_yield(const BondTypeRef& type, int32_t yield_method_arg) noexcept {
  // Quoting at another compounding frequency only applies to compound yields.
  if (bond_type_yield_method(type, yield_method_arg) != 0) return 0;
  if (type.row) return type.row->annual_yield;
  return type.custom ? type.custom->yield_frequency : 0;
}

int32_t bond_type_simple_final(int32_t yield_method_arg, const BondTypeRef& type) noexcept {
  if (type.row) {
    if (type.row->simple_final == SimpleFinal::kWhenAsked) return yield_method_arg == 1 ? 1 : 0;
    return static_cast<int32_t>(type.row->simple_final);
  }
  return type.custom ? type.custom->simple_final : 1;
}

int32_t bond_type_base(int32_t code) noexcept { return bond_type_base(code, bond_type_ref(code)); }

int32_t bond_type_eom_default(int32_t code) noexcept {
  return bond_type_eom_default(code, bond_type_ref(code));
}

int32_t bond_type_frequency(int32_t base) noexcept {
  return bond_type_frequency(bond_type_ref(base));
}

int32_t bond_type_accrual_basis(int32_t base, int32_t settlement, int32_t period_start,
                                int32_t eom) noexcept {
  return bond_type_accrual_basis(bond_type_ref(base), settlement, period_start, eom);
}

int32_t bond_type_exdiv_basis(int32_t base, int32_t period_start, int32_t accrual_basis) noexcept {
  return bond_type_exdiv_basis(bond_type_ref(base), period_start, accrual_basis);
}

int32_t bond_type_yield_method(int32_t base, int32_t yield_method_arg) noexcept {
  return bond_type_yield_method(bond_type_ref(base), yield_method_arg);
}

int32_t bond_type_annual_yield(int32_t base, int32_t yield_method_arg) noexcept {
  return bond_type_annual_yield(bond_type_ref(base), yield_method_arg);
}

int32_t bond_type_simple_final(int32_t yield_method_arg, int32_t base) noexcept {
  return bond_type_simple_final(yield_method_arg, bond_type_ref(base));
}

int32_t bond_type_mm_basis(int32_t base, int32_t settlement) noexcept {
  if (const CatalogueRow* row = catalogue_row(base)) {
    switch (row->mm_basis) {
      case MoneyMarketBasis::k360: return 360;
      case MoneyMarketBasis::k365: return 365;
      case MoneyMarketBasis::k365Before1999: return before(settlement, kSerial1Jan1999) ? 365 : 360;
    }
    return 360;
  }
  if (const CustomType* slot = custom_type(base)) return slot->mm_basis;
  return 360;
}

bool bond_type_adjust_accrual_days(double* days, int32_t base, int32_t settlement,
                                   bool regular_period, int32_t frequency,
                                   double coupon_rate) noexcept {
  if (!days) return false;
  switch (base) {
    case 20:
      return apply_canadian_cap(days, regular_period, frequency);
    case 260:
    case 261:
      if (!before(settlement, kSerial1Jan1999)) return false;
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
      if (!before(settlement, kSerial1Nov1998)) return false;
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
  if (slot->canadian_cap != 0) changed = apply_canadian_cap(days, regular_period, frequency) || changed;
  return changed;
}

int32_t apply_danish_rule(int32_t code, int32_t settlement) noexcept {
  if ((code == 302 || code == 303) && !before(settlement, kSerial8Feb2001)) return code - 2;
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

void apply_single_period_rule(int32_t* base, int32_t* accrual_basis) noexcept {
  if (!base) return;
  const int32_t code = *base;
  if (code == 22 || code == 220 || code == 380) {
    if (accrual_basis) *accrual_basis = 5;
  }
  if (code == 22) *base = 20;
}

}  // namespace kbond::engine
