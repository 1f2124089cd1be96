// Montreal Exchange 10-year Government of Canada bond futures (CGB): the
// price per unit of face at the notional yield (9 % for delivery months
// before June 2000, 6 % since), compounded semiannually, with the time to
// maturity from the first day of the delivery month rounded down to whole
// quarters; deliverable from 8 years up to (not including) 10 years and
// 9 months (32 to 42 whole quarters). The exchange states the factor in percent of face; it is the
// same number as the U.S. quarterly method. Rounded to 4 decimals.
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {

double factor_canada(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  const ContractTerms& terms = contract.terms_on(req.delivery);
  const double n = notional_coupon(req, terms);
  const int32_t first = day_of_month(req.delivery_ymd, 1);
  if (first >= req.maturity) return refuse(KVL_ERR_DATE_ORDER, error);
  const int32_t quarters = dates::months_between(first, req.maturity, 1, nullptr) / 3;
  if (req.check_eligibility && !terms.deliverable(quarters)) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  }
  const int32_t half_years = quarters / 2;
  const double cc = 100.0 * req.coupon;
  const double v = 1.0 + n / 2.0;
  const double discount = engine::safe_pow(v, -static_cast<double>(half_years));
  const double broken_half = half_years - quarters / 2.0;  // 0 or -1/2 half-year
  const double percent =
      engine::safe_pow(v, broken_half) * ((1.0 - discount) * cc / n + 100.0 * discount + cc / 2.0) -
      (half_years + 1 - quarters / 2.0) * cc / 2.0;
  return percent / 100.0;
}

}  // namespace kbond::futures
