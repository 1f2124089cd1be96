// The bond type catalogue: for each market's type code its display name and
// conventions (coupon frequency, end-of-month rule, accrued day count, yield
// method, annual-yield quotation, final-period simple interest, ex-dividend
// rule, money-market basis, accrual-day adjustments).
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

namespace kbond::engine {

struct CatalogueRow;

inline constexpr int32_t kSerial1Nov1998 = 36099;
inline constexpr int32_t kSerial1Jan1999 = 36160;
inline constexpr int32_t kSerial10May1999 = 36289;
inline constexpr int32_t kSerial8Feb2001 = 36929;

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

// Market adjustments of the accrued-day count before the accrued interest is
// formed (Canadian 363/frequency cap, Italian extra day, Portuguese rounding, a
// custom slot's extra days). `regular_period` is true for a regular coupon
// period (settlement position 0). Returns true when the days changed.
bool bond_type_adjust_accrual_days(double* days, int32_t base, int32_t settlement,
                                   bool regular_period, int32_t frequency,
                                   double coupon_rate) noexcept;

// The Danish switch: 302 -> 300 and 303 -> 301 for settlement from
// 8 February 2001. Other codes unchanged.
int32_t apply_danish_rule(int32_t code, int32_t settlement) noexcept;

// Codes that some exports substitute for accrual purposes: 16 -> 2,
// 17 -> 12, 22 -> 20. Other codes unchanged.
int32_t accrual_substitute(int32_t code) noexcept;

// When exactly one coupon period remains: code 22 becomes 20, and 22, 220
// and 380 accrue actual/365 (code 5). Other codes unchanged.
void apply_single_period_rule(int32_t* base, int32_t* accrual_basis) noexcept;

}  // namespace kbond::engine
