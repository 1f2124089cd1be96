// Bond-futures conversion factors.
//
// A bond-futures contract lets the seller deliver any bond from a basket; the
// invoice price is the futures price times the bond's conversion factor, the
// value of one unit of the bond relative to the contract's notional bond.
// Every exchange fixes its own rule: the notional coupon, where in the
// delivery month the bond is valued, how time to maturity is measured and
// rounded, which maturities are deliverable and how many decimals the factor
// keeps. A contract code picks a rule family (one routine) and a contract
// rule within it (contract_table.h).
//
//   FactorRequest req{...};          // coupon, maturity, delivery, contract
//   int32_t err = 0;
//   double f = conversion_factor(req, &err);   // -1.0 and err != 0 on failure
#pragma once
#include <cstdint>

#include "dates/business_days.h"

namespace kbond::futures {

// Error codes of the factor routines.
inline constexpr int32_t kErrBadDate = 150;        // a date cannot be split
inline constexpr int32_t kErrDateOrder = 160;      // reference date after maturity
inline constexpr int32_t kErrContract = 900;       // unknown contract code or rule
inline constexpr int32_t kErrNotDeliverable = 910; // outside the deliverable range
inline constexpr int32_t kErrNotional = 920;       // notional override out of range

struct FactorRequest {
  double coupon = 0.0;            // annual coupon rate of the bond, decimal
  int32_t maturity = 0;
  int32_t delivery = 0;           // a date in the delivery month
  int32_t family = 0;             // rule family 0..14
  int32_t rule = 0;               // contract rule within the family
  dates::BusinessCalendar calendar;  // holidays and the two weekend options
  const int32_t* exdiv_override = nullptr;  // gilt closed form only (see gilt_factor.cpp)
  const int32_t* dated_date = nullptr;      // handed to the bond price by the
  const int32_t* first_coupon = nullptr;    // price-based families
  const double* notional = nullptr;         // override of the notional coupon
  bool check_eligibility = true;
};

// The factor, or -1.0 with *error set (error must not be null).
double conversion_factor(const FactorRequest& req, int32_t* error) noexcept;

// The rule families. Each returns the rounded factor or sets *error.
double factor_us_treasury(const FactorRequest& req, int32_t* error) noexcept;      // 0
double factor_price_oat_gilt(const FactorRequest& req, int32_t* error) noexcept;   // 1
double factor_gilt_closed_form(const FactorRequest& req, int32_t* error) noexcept; // 2: 2, 3
double factor_bund_10th(const FactorRequest& req, int32_t* error) noexcept;        // 2: 4
double factor_bono_actual_days(const FactorRequest& req, int32_t* error) noexcept; // 2: 14
double factor_jgb(const FactorRequest& req, int32_t* error) noexcept;              // 3
double factor_canada(const FactorRequest& req, int32_t* error) noexcept;           // 4
double factor_spain(const FactorRequest& req, int32_t* error) noexcept;            // 5
double factor_eurex(const FactorRequest& req, int32_t* error) noexcept;            // 6, 7
double factor_belgium(const FactorRequest& req, int32_t* error) noexcept;          // 8
double factor_seventh_day(const FactorRequest& req, int32_t* error) noexcept;      // 9
double factor_btp(const FactorRequest& req, int32_t* error) noexcept;              // 10; 2: 11
double factor_third_wednesday_annual(const FactorRequest& req, int32_t* error) noexcept;  // 11
double factor_portugal(const FactorRequest& req, int32_t* error) noexcept;         // 12
double factor_sweden(const FactorRequest& req, int32_t* error) noexcept;           // 13
double factor_us_treasury_65(const FactorRequest& req, int32_t* error) noexcept;   // 14

}  // namespace kbond::futures
