// Lookups over the catalogue rows (catalogue_table.cpp) and the custom-type
// table.
//
// A date argument of 0 means "no date": the convention in force today.
#include "engine/catalogue.h"

#include "dates/day_count.h"
#include "engine/catalogue_table.h"

namespace kbond::engine {
namespace {

constexpr const char kUnknownName[] = "unknown bond";

int32_t resolve(const DatedCode& code, int32_t settlement, int32_t period_start) noexcept {
  switch (code.when) {
    case DateSwitch::kNone:
      return code.current;
    case DateSwitch::kSettlementBefore1Nov1998:
      return before_change_day(settlement, kSerial1Nov1998) ? code.before : code.current;
    case DateSwitch::kSettlementBefore1Jan1999:
      return before_change_day(settlement, kSerial1Jan1999) ? code.before : code.current;
    case DateSwitch::kPeriodStartBefore1Jan1999:
      return before_change_day(period_start, kSerial1Jan1999) ? code.before : code.current;
  }
  return code.current;
}

// 30/360 accrues with the U.S. February rule when the bond keeps to month ends.
int32_t with_month_end_rule(int32_t code, int32_t eom) noexcept {
  return (code == dates::k30_360 && eom != 0) ? dates::k30_360Feb : code;
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
      case MoneyMarketBasis::k365Before1999:
        return before_change_day(settlement, kSerial1Jan1999) ? 365 : 360;
    }
    return 360;
  }
  if (const CustomType* slot = custom_type(base)) return slot->mm_basis;
  return 360;
}

}  // namespace kbond::engine
