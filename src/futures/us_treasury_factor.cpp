// U.S. Treasury bond and note futures (CBOT): the factor is the price per
// unit of face at which the bond yields the notional coupon (8 % for
// delivery months before March 2000, 6 % since), compounded semiannually,
// with the time to maturity measured from the first day of the delivery
// month and rounded down to whole quarters (bond and 10-year note) or whole
// months (2-, 3- and 5-year notes), and the factor rounded to 4 decimals.
//
// The notional and the deliverable months of each contract are its row in
// contract_table.cpp.
#include <cmath>

#include "dates/business_days.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

// Months from the first of the delivery month; a part month counts as half
// a month more so that "at most 10 years" excludes 10 years and a day.
double months_to_maturity(const FactorRequest& req) {
  int32_t exact = 0;
  const int32_t whole =
      dates::months_between(day_of_month(req.delivery_ymd, 1), req.maturity, 1, &exact);
  return whole + (exact ? 0.0 : 0.5);
}

// The notional in force for the delivery month, once the bond is found
// deliverable (error 910 otherwise; 0.0 is then returned).
double deliverable_notional(const FactorRequest& req, const Contract& contract, int32_t* error) {
  const ContractTerms& terms = contract.terms_on(req.delivery);
  if (req.check_eligibility && !terms.deliverable(months_to_maturity(req))) {
    *error = KVL_ERR_NOT_DELIVERABLE;
    return 0.0;
  }
  return notional_coupon(req, terms);
}

}  // namespace

// Whole quarters: the bond and 10-year note contracts.
double factor_treasury_quarters(const FactorRequest& req, const Contract& contract,
                                int32_t* error) noexcept {
  const double n = deliverable_notional(req, contract, error);
  if (*error != 0) return -1.0;
  const int32_t first = dates::adjust_business_day(day_of_month(req.delivery_ymd, 1),
                                                   dates::kFollowing, req.calendar);
  if (first > req.maturity) return refuse(KVL_ERR_DATE_ORDER, error);
  const int32_t quarters = dates::months_between(first, req.maturity, 1, nullptr) / 3;
  const int32_t half_years = quarters / 2;
  const double cp = req.coupon;
  const double v = 1.0 + n / 2.0;
  const double discount = engine::safe_pow(v, -static_cast<double>(half_years));
  double f = (cp / n) * (1.0 - discount) + discount;
  if (quarters % 2 != 0) f = (f + cp / 2.0) / std::sqrt(v) - cp / 4.0;
  return f;
}

// Whole months from the 15th: the 2-, 3- and 5-year note contracts.
double factor_treasury_months(const FactorRequest& req, const Contract& contract,
                              int32_t* error) noexcept {
  const double n = deliverable_notional(req, contract, error);
  if (*error != 0) return -1.0;
  const int32_t mid_month = day_of_month(req.delivery_ymd, 15);
  if (mid_month > req.maturity) return refuse(KVL_ERR_DATE_ORDER, error);
  const int32_t months = dates::months_between(mid_month, req.maturity, 1, nullptr);
  const int32_t half_years = months / 6;
  const int32_t rest = months - 6 * half_years;
  const double cp = req.coupon;
  const double v = 1.0 + n / 2.0;
  const double a = engine::safe_pow(v, -(rest / 6.0 + half_years));
  return (engine::safe_pow(v, half_years + 1.0) - 1.0) * a * cp / n + a - (6 - rest) * cp / 12.0;
}

}  // namespace kbond::futures
