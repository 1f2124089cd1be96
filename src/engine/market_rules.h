// The market rules that are not plain catalogue columns: everything that
// depends on a bond's base type code besides its row in catalogue_table.cpp.
// Together the two files hold every market convention; no other file
// compares a bond type with a code.
//
// By code (the row of catalogue_table.cpp gives the rest):
//   0, 1        prices to 6 decimals, yields to 8
//   2, 3, 16    prices cleaned at the 8th decimal and truncated to 3, yields to 5
//   16          ignores the caller's dated date and first coupon (accrual: as 2)
//   17 -> 12, 22 -> 20 for accrual-only exports
//   20          Canadian 363/f cap on a regular period's accrued days
//   22          with one period left: trades as 20 on act/365
//   81, 290     accrued interest quoted to 5 and 6 decimals of face (the
//               carry and forward measures round only 81's)
//   200         coupons on the 20th; broken last period merged with the one
//               before; a long first coupon counted in act/365 years
//   220         act/365 with one period left; accrued fixed at 5 decimals
//   260..270    Italian issue-discount tax; extra accrued day
//   280..286    Spanish final-period pricing (chained simple interest within
//               377 days, actual-day exponents on act/365, maturity on the
//               Spanish calendar from 10 May 1999)
//   290, 292, 700  Portuguese daily-interest truncation before November 1998
//   302, 303    Danish: 300 and 301 from 8 February 2001
//   370, 700    actual-day exponents
//   380         act/365 with one period left; prices to 5 decimals, yields to 7
//   0, 3, 500, 510, 530, 540  the types a PIK bond may take
#pragma once
#include <cmath>
#include <cstdint>

#include "dates/day_count.h"
#include "engine/safe_math.h"

namespace kbond::engine {

// Days on which markets changed conventions.
inline constexpr int32_t kSerial1Jan1997 = 35430;
inline constexpr int32_t kSerial1Nov1998 = 36099;
inline constexpr int32_t kSerial1Jan1999 = 36160;
inline constexpr int32_t kSerial10May1999 = 36289;
inline constexpr int32_t kSerial8Feb2001 = 36929;

// True when a real date (0 is none) lies before the day a convention changed.
constexpr bool before_change_day(int32_t date, int32_t change_day) noexcept {
  return date > 0 && date < change_day;
}

// ---------------------------------------------------------------------------
// Quotation: how a market rounds the prices, yields and accrued interest the
// exports return.

enum class Quotation : int8_t {
  kAsComputed,
  kUSGovernment,  // prices to 6 decimals, yields to 8
  kMunicipal,     // prices truncated to 3 decimals, yields to 5
  kSouthAfrican,  // prices to 5 decimals, yields to 7
};

constexpr Quotation quotation(int32_t base) noexcept {
  switch (base) {
    case 0: case 1: return Quotation::kUSGovernment;
    case 2: case 3: case 16: return Quotation::kMunicipal;
    case 380: return Quotation::kSouthAfrican;
    default: return Quotation::kAsComputed;
  }
}

inline double round_price_by_type(double price, int32_t base) noexcept {
  switch (quotation(base)) {
    case Quotation::kUSGovernment: return std::floor(price * 1e6 + 0.5) * 1e-6;
    case Quotation::kMunicipal:
      // Divisions, not products with 1e-5 and 0.001: those are not exact in
      // binary and a whole number of thousandths would lose one thousandth
      // to the truncation (-1.0 became -1.001).
      return std::floor(std::floor(price * 1e8 + 0.5) / 1e5) / 1000.0;
    case Quotation::kSouthAfrican: return std::floor(price * 100000.0 + 0.5) * 1e-5;
    case Quotation::kAsComputed: break;
  }
  return price;
}

// Dividing by the power of ten keeps exact values (the -999.0 failure value)
// exact; multiplying by its reciprocal does not.
inline double round_yield_by_type(double yield, int32_t base) noexcept {
  switch (quotation(base)) {
    case Quotation::kUSGovernment: return std::floor(yield * 1e8 + 0.5) / 1e8;
    case Quotation::kMunicipal: return std::floor(yield * 1e5 + 0.5) / 1e5;
    case Quotation::kSouthAfrican: return std::floor(yield * 1e7 + 0.5) / 1e7;
    case Quotation::kAsComputed: break;
  }
  return yield;
}

// PIK prices and yields are rounded by the same quotation with products by
// the reciprocal powers (1e-5 and 0.001 for the truncated price, 1e-8 and
// 1e-5 for yields), which can differ from the divisions above in the last
// place; the PIK exports keep their arithmetic.
inline double round_pik_price(double price, int32_t base) noexcept {
  if (quotation(base) == Quotation::kMunicipal)
    return std::floor(std::floor(price * 1e8 + 0.5) * 1e-5) * 0.001;
  return round_price_by_type(price, base);
}

inline double round_pik_yield(double yield, int32_t base) noexcept {
  switch (quotation(base)) {
    case Quotation::kUSGovernment: return std::floor(yield * 1e8 + 0.5) * 1e-8;
    case Quotation::kMunicipal: return std::floor(yield * 100000.0 + 0.5) * 1e-5;
    default: return round_yield_by_type(yield, base);
  }
}

// Accrued interest (a fraction of face) per 100 as the market quotes it:
// French OATs to five decimals of face, Portuguese bonds to six.
inline double accrued_per_100(double accrued, int32_t base) noexcept {
  switch (base) {
    case 81: return round_to(accrued, 5) * 100.0;
    case 290: return round_to(accrued, 6) * 100.0;
    default: return accrued * 100.0;
  }
}

// The carry and forward measures take OAT accrued interest at five decimals
// of face (multiplied back, as the futures desks' sheets do); every other
// type's accrued interest unrounded.
inline double carry_accrued(double accrued, int32_t base) noexcept {
  return base == 81 ? std::floor(accrued * 1e5 + 0.5) * 1e-5 : accrued;
}

// Australian accrued interest is settled at five decimals of face before
// any price is formed from it.
inline double settled_accrued(double accrued, int32_t base) noexcept {
  if (base == 220) return std::floor(accrued * 100000.0 + 0.5) * 1e-5;
  return accrued;
}

// ---------------------------------------------------------------------------
// Set-up: the coupon grid, odd periods and redemption.

// The day of the month a market pays coupons on whatever the maturity day
// (0: none). JGBs pay on the 20th; their derived grid also keeps the type's
// end-of-month rule instead of deciding it from the anchor.
constexpr int32_t fixed_coupon_day(int32_t base) noexcept { return base == 200 ? 20 : 0; }

// This municipal type prices as if the bond had no odd first period.
constexpr bool ignores_odd_coupons(int32_t base) noexcept { return base == 16; }

// Italian issue-discount tax: the redemption is reduced by the tax on the
// discount; for the bonds that straddle the 1997 reform only the part of the
// life before 1997 is taxed.
enum class DiscountTax : int8_t { kNone, kWholeLife, kLifeBefore1997 };

constexpr DiscountTax discount_tax_rule(int32_t base) noexcept {
  switch (base) {
    case 264: case 266: return DiscountTax::kWholeLife;
    case 260: case 261: case 268: case 270: return DiscountTax::kLifeBefore1997;
    default: return DiscountTax::kNone;
  }
}

// The conventions of the last coupon period when only one remains: Bank of
// Canada bonds (22) trade as 20, and 22, 220 and 380 accrue act/365.
struct SinglePeriodConventions {
  int32_t base;
  int32_t accrual_basis;
};

constexpr SinglePeriodConventions single_period_conventions(int32_t base,
                                                            int32_t accrual_basis) noexcept {
  switch (base) {
    case 22: return {20, dates::kAct365};
    case 220: case 380: return {base, dates::kAct365};
    default: return {base, accrual_basis};
  }
}

// JGBs price a broken last period together with the whole one before it,
// and count a long first coupon in act/365 years.
constexpr bool merges_broken_last_period(int32_t base) noexcept { return base == 200; }
constexpr bool long_first_coupon_in_years(int32_t base) noexcept { return base == 200; }

// Adjusts the accrued days before the accrued interest is formed (Canadian
// 363/f cap, Italian extra day, Portuguese truncation, a custom slot's extra
// days and cap). `regular_period` is true for settlement position 0.
// Returns true when the days changed.
bool bond_type_adjust_accrual_days(double* days, int32_t base, int32_t settlement,
                                   bool regular_period, int32_t frequency,
                                   double coupon_rate) noexcept;

// The Danish switch: 302 -> 300 and 303 -> 301 for settlement from
// 8 February 2001. Other codes unchanged.
int32_t apply_danish_rule(int32_t code, int32_t settlement) noexcept;

// Codes that some exports substitute for accrual purposes: 16 -> 2,
// 17 -> 12, 22 -> 20. Other codes unchanged.
int32_t accrual_substitute(int32_t code) noexcept;

// ---------------------------------------------------------------------------
// Pricing.

// Which final-period rule of the compound-yield pricing a market follows.
enum class FinalPeriodRule : int8_t {
  kStandard,        // simple interest over a single last period when asked
  kActualDays,      // Colombian and Portuguese futures bonds: actual-day exponents
  kSpanish,         // current Spanish bonds
  kSpanishPreEmu,   // Spanish bonds on pre-EMU conventions
};

constexpr FinalPeriodRule final_period_rule(int32_t base) noexcept {
  switch (base) {
    case 370: case 700: return FinalPeriodRule::kActualDays;
    case 280: case 281: return FinalPeriodRule::kSpanish;
    case 284: case 286: return FinalPeriodRule::kSpanishPreEmu;
    default: return FinalPeriodRule::kStandard;
  }
}

// Spanish bonds within this many days of maturity are quoted at simple interest.
inline constexpr int32_t kSpanishSimpleDays = 377;

// Current Spanish bonds settled from 10 May 1999 are paid at maturity on the
// following business day of the Spanish settlement calendar.
constexpr bool pays_maturity_on_spanish_calendar(int32_t base, int32_t settlement) noexcept {
  return final_period_rule(base) == FinalPeriodRule::kSpanish && settlement >= kSerial10May1999;
}

// Perpetuals count exponents in actual days over 365 for the Spanish bonds
// and the Portuguese futures type on act/365. The list is the perpetual
// family's own and deliberately leaves out the Colombian bonds (370), which
// straight-bond pricing counts in actual days: a Colombian perpetual is
// valued in whole periods.
constexpr bool perpetual_day_exponents(int32_t base, int32_t accrual_basis) noexcept {
  if (accrual_basis != dates::kAct365) return false;
  switch (base) {
    case 280: case 281: case 284: case 286: case 700: return true;
    default: return false;
  }
}

// The types a PIK bond may take: U.S. Treasury, corporate 30/360 and the
// generic bonds that differ only by their accrued day count.
constexpr bool is_pik_type(int32_t base) noexcept {
  switch (base) {
    case 0: case 3: case 500: case 510: case 530: case 540: return true;
    default: return false;
  }
}

}  // namespace kbond::engine
