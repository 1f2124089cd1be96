// The bond type catalogue: for each market's type code its display name and
// conventions (coupon frequency, end-of-month rule, accrued day count, yield
// method, annual-yield quotation, final-period simple interest, ex-dividend
// rule, money-market basis). The rules beyond these columns are in
// market_rules.h.
//
// Each market has a base code and usually one variant that differs only by
// having the end-of-month rule on (41 is a Gilt with the rule, 82 the variant
// of 80). Lookups other than the end-of-month default take the base code.
// Codes 1000..1099 read the custom-type table; the caller must hold the type
// lock as reader for them.
//
// A few markets changed conventions on fixed days: Gilts moved from
// actual/365 to actual/actual on 1 November 1998, the EMU markets moved to
// actual/actual on 1 January 1999, Spain's simple-interest rule changed on
// 10 May 1999.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "engine/custom_types.h"
#include "engine/market_rules.h"

namespace kbond::engine {

struct CatalogueRow;

// A type code looked up once: its catalogue row, or its custom slot (both
// null for an unknown code). A bond's set-up resolves its type once and
// hands the reference to the rules below instead of the code.
struct BondTypeRef {
  const CatalogueRow* row = nullptr;
  const CustomType* custom = nullptr;
  bool known() const noexcept { return row != nullptr || custom != nullptr; }
};
BondTypeRef bond_type_ref(int32_t code) noexcept;

// The rules on a resolved type (the code forms below resolve and call these).
int32_t bond_type_base(int32_t code, const BondTypeRef& type) noexcept;
int32_t bond_type_eom_default(int32_t code, const BondTypeRef& type) noexcept;
int32_t bond_type_frequency(const BondTypeRef& type) noexcept;
int32_t bond_type_accrual_basis(const BondTypeRef& type, int32_t settlement,
                                int32_t period_start, int32_t eom) noexcept;
int32_t bond_type_exdiv_basis(const BondTypeRef& type, int32_t period_start,
                              int32_t accrual_basis) noexcept;
int32_t bond_type_annual_yield(const BondTypeRef& type, int32_t yield_method_arg) noexcept;
int32_t bond_type_simple_final(int32_t yield_method_arg, const BondTypeRef& type) noexcept;
int32_t bond_type_yield_method(const BondTypeRef& type, int32_t yield_method_arg) noexcept;
int32_t bond_type_exdiv_date(int32_t coupon_date, const BondTypeRef& type,
                             const dates::BusinessCalendar& cal,
                             const CustomType* override_record) noexcept;

// Base code of `code` and its name; -1 and "unknown bond" when unknown.
int32_t bond_type_name(int32_t code, const char** name) noexcept;
int32_t bond_type_base(int32_t code) noexcept;
int32_t bond_type_eom_default(int32_t code) noexcept;
int32_t bond_type_frequency(int32_t base) noexcept;  // -1 when none/unknown
int32_t bond_type_accrual_basis(int32_t base, int32_t settlement, int32_t period_start,
                                int32_t eom) noexcept;
int32_t bond_type_exdiv_basis(int32_t base, int32_t period_start, int32_t accrual_basis) noexcept;
int32_t bond_type_annual_yield(int32_t base, int32_t yield_method_arg) noexcept;
int32_t bond_type_simple_final(int32_t yield_method_arg, int32_t base) noexcept;
int32_t bond_type_yield_method(int32_t base, int32_t yield_method_arg) noexcept;
int32_t bond_type_mm_basis(int32_t base, int32_t settlement) noexcept;

// Ex-dividend date of coupon date `coupon_date` (the coupon date itself when
// the type has no ex-dividend period). `override_record`, when given, takes
// the place of the custom slot (its exdiv_days field: n < 1 adds n calendar
// days, n >= 1 steps n business days back on `cal`).
int32_t bond_type_exdiv_date(int32_t coupon_date, int32_t base, const dates::BusinessCalendar& cal,
                             const CustomType* override_record) noexcept;

}  // namespace kbond::engine
