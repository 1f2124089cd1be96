// Contracts delivered on the 10th of the delivery month (the DTB/Eurex
// German government bond contracts and those built on their model).
//
// Since the euro conventions took over (actual/actual accrual), the factor
// is the clean price per unit of face at which the bond yields the notional
// coupon on the delivery day. Before that, the exchange used the annual
// method on whole months (factor_common.h). Delivery is the 10th adjusted
// to a business day, or a later date the caller gives; time to maturity is
// whole months over 12 plus half a month when days remain. The contract's
// terms on the delivery day give the notional, the basket and whether the
// bond is priced.
#include "dates/business_days.h"
#include "dates/month_arithmetic.h"
#include "futures/factor_common.h"

namespace kbond::futures {

double factor_tenth(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  int32_t day = dates::adjust_business_day(day_of_month(req.delivery_ymd, 10), dates::kFollowing,
                                           req.calendar);
  if (req.delivery > day) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  const double n = notional_coupon(req, terms);
  const double years = years_by_months(day, req.maturity);
  if (req.check_eligibility && !terms.deliverable(years)) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  }
  if (years <= 0.0) return refuse(KVL_ERR_DATE_ORDER, error);
  if (terms.priced_as != kClosedForm) {
    return price_at_notional(req, day, n, terms.priced_as, true, error);
  }
  return annual_method_factor(req.coupon, n, dates::months_between(day, req.maturity, 0, nullptr));
}

}  // namespace kbond::futures
