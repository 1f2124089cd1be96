// The rows of the bond type catalogue: one row per base code, holding the
// market's conventions as plain values. The lookup functions of catalogue.h
// read these rows; the few conventions that changed on a fixed day carry the
// old value and the kind of date that decides between old and new.
//
//   const CatalogueRow* row = catalogue_row(41);   // the Gilt row (base 40)
//   row->frequency == 2, row->eom_code == 41
#pragma once
#include <cstdint>

namespace kbond::engine {

// Which date decides between a convention's old and current value.
enum class DateSwitch : int8_t {
  kNone,                       // no change
  kSettlementBefore1Nov1998,   // Gilt move to actual/actual, Portuguese rounding
  kSettlementBefore1Jan1999,   // EMU switch judged on the settlement date
  kPeriodStartBefore1Jan1999,  // EMU switch judged on the current period's start
};

// A day-count code that may have had another value before a switch day.
struct DatedCode {
  int8_t current;
  int8_t before;
  DateSwitch when;
};

// Special value of CatalogueRow::exdiv_basis.current: the accrued day count.
inline constexpr int8_t kSameAsAccrual = -2;

// Whether the final coupon period is priced at simple interest.
enum class SimpleFinal : int8_t {
  kUndefined = -1,  // type without defaults (Yankee bonds)
  kNever = 0,
  kAlways = 1,
  kWhenAsked = 2,   // only when the caller's yield-method argument is 1
};

// How the ex-dividend date lies before a coupon date d.
enum class ExdivRule : int8_t {
  kNone,                    // no ex-dividend period
  kCalendarDays,            // d - param
  kBusinessDays,            // param business days back on the caller's calendar
  kBusinessDaysPlusOne,     // param business days back, then one day later (Gilts)
  kBusinessDaysSaturdayMinusOne,  // param business days back with Saturday
                                  // trading, then one day earlier (India)
  kMonthBack,               // one month back, end-of-month rule off
  kMonthBackEom,            // one month back, end-of-month rule on
  kIrish,                   // the Wednesday of d's week, three weeks earlier
  kAustrian,                // set by the first Monday / mid-month rule
};

// Money-market day basis used by pass-through and futures measures.
enum class MoneyMarketBasis : int8_t {
  k360,
  k365,
  k365Before1999,  // 365 for settlement before 1 January 1999, 360 after
};

struct CatalogueRow {
  int16_t code;        // base code
  int16_t eom_code;    // the code of the pair with the end-of-month rule on; -1 none
  const char* name;
  int8_t frequency;    // coupons per year; -1 none
  DatedCode accrual;   // accrued day count (1 reads as 7 with the end-of-month rule)
  DatedCode exdiv_basis;
  SimpleFinal simple_final;
  int8_t yield_method;
  int8_t annual_yield;  // compounding periods per year of the quoted yield; 0 as coupons
  ExdivRule exdiv_rule;
  int8_t exdiv_param;
  MoneyMarketBasis mm_basis;
};

// The row of a base or variant code 0..830, or null for an unknown code.
const CatalogueRow* catalogue_row(int32_t code) noexcept;

// All rows in ascending base-code order.
const CatalogueRow* catalogue_rows(int32_t* count) noexcept;

}  // namespace kbond::engine
