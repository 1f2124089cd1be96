// Pieces shared by the conversion-factor routines: the delivery-month
// anchors exchanges use (a fixed day of the month, the third Wednesday), the
// ways they measure time to maturity, the notional coupon with its
// override, and the price of the deliverable bond at the notional yield for
// the exchanges whose factor is that price.
#pragma once
#include <cstdint>

#include "futures/conversion_factor.h"
#include "k_bond.h"

namespace kbond::futures {

inline double refuse(int32_t code, int32_t* error) noexcept {
  *error = code;
  return -1.0;
}

// False when the serial cannot be turned into a calendar date.
bool split_date(int32_t serial, CivilDate* out) noexcept;

// The given day of the month of `date` (the date must split).
int32_t day_of_month(const CivilDate& date, int32_t day) noexcept;

// Third Wednesday of the month: the anchor of most European contracts.
int32_t third_wednesday(const CivilDate& date) noexcept;

// Time to maturity as the continental exchanges state it: whole months over
// 12, plus half a month (1/24 year) when days remain beyond the whole months.
// End-of-month rule off.
double years_by_months(int32_t from, int32_t to) noexcept;

// The notional coupon: the caller's override (already checked against the
// contract's floor) or the contract's.
inline double notional_coupon(const FactorRequest& req, const ContractTerms& terms) noexcept {
  return req.notional ? *req.notional : terms.notional;
}

// Price per unit of face (the clean price of the straight-bond price function
// over 100) of a bond with one coupon rate and the maturity as its only date,
// settling on `settlement` at yield `yield` under `bond_type`. The caller's
// coupon-date arguments go through when `with_coupon_dates` is set. Sets
// *error from the set-up or the price function on failure.
double price_at_notional(const FactorRequest& req, int32_t settlement, double yield,
                         int32_t bond_type, bool with_coupon_dates, int32_t* error) noexcept;

// Annual compounding at the notional: the factor of a bond with coupon `cp`
// and `months` whole months to maturity at notional `n` (the German and
// Swiss method: a broken year is discounted at the notional, accrued
// interest is the coupon times the elapsed part of the year). When
// `keep_whole_year` is set a whole number of years stays as it is (the
// Swedish exchange's ex-coupon test); otherwise it becomes one year of
// discounting over one fewer whole years.
double annual_method_factor(double cp, double n, int32_t months,
                            bool keep_whole_year = false) noexcept;

}  // namespace kbond::futures
