// Bond-futures conversion factors.
//
// A bond-futures contract lets the seller deliver any bond from a basket; the
// invoice price is the futures price times the bond's conversion factor, the
// value of one unit of the bond relative to the contract's notional bond.
// Every exchange fixes its own rule: the notional coupon, where in the
// delivery month the bond is valued, how time to maturity is measured and
// rounded, which maturities are deliverable and how many decimals the factor
// keeps. Each contract is one row of contract_table.cpp naming its routine.
//
//   FactorRequest req{...};          // coupon, maturity, delivery, calendar
//   int32_t err = 0;
//   double f = conversion_factor(req, *find_contract(code), &err);  // -1.0 and err != 0 on failure
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "futures/contract_table.h"

namespace kbond::futures {

struct CivilDate {
  int32_t day = 0, month = 0, year = 0;
};

struct FactorRequest {
  double coupon = 0.0;            // annual coupon rate of the bond, decimal
  int32_t maturity = 0;
  int32_t delivery = 0;           // a date in the delivery month
  CivilDate delivery_ymd;         // both split by conversion_factor
  CivilDate maturity_ymd;
  dates::BusinessCalendar calendar;  // holidays and the two weekend options
  const int32_t* exdiv_override = nullptr;  // gilt closed form only (see gilt_factor.cpp)
  const int32_t* dated_date = nullptr;      // handed to the bond price by the
  const int32_t* first_coupon = nullptr;    // price-based contracts
  const double* notional = nullptr;         // override of the notional coupon
  bool check_eligibility = true;
};

// The rounded factor, or -1.0 with *error set (error must not be null).
// Splits the two dates into `req` (150 when one does not split), refuses a
// coupon that is not finite (1) and a notional override below the
// contract's floor (920) before the contract's routine runs.
double conversion_factor(FactorRequest& req, const Contract& contract,
                         int32_t* error) noexcept;

// The routines the contract rows name (unrounded factors).
double factor_treasury_quarters(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_treasury_months(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_canada(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_matif(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_liffe_gilt_priced(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_gilt_closed_form(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_tenth(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_btp_liffe(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_btp(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_bono_actual_days(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_jgb(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_spain(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_belgium(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_portugal(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_seventh_day(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_third_wednesday_annual(const FactorRequest&, const Contract&, int32_t*) noexcept;
double factor_sweden(const FactorRequest&, const Contract&, int32_t*) noexcept;

}  // namespace kbond::futures
