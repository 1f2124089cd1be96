// Italian government bond (BTP) contracts delivered on the 10th of the
// delivery month: the LIFFE BTP contract (8 % notional until the December
// 1998 delivery, 6 % from then) and the long, medium and 30-year BTP
// contracts of the Italian exchange.
//
// From the March 1999 delivery the factor is the clean price per unit of
// face at which the bond yields the notional on the delivery day, under the
// generic semiannual conventions (type 500). Before that the exchange's
// closed form applied, on the Italian pre-euro conventions:
//
//   dirty  = (1 + n/2)^(-t) * (c/2 + c/n * (1 - (1 + n/2)^(-m)) + (1 + n/2)^(-m))
//   factor = dirty - c * d / 360
//
// t = actual days from delivery to the next coupon / 182.5 (half of a
// 365-day year), m = coupons after the next one, d = 30E/360 days from the
// last coupon to delivery (the accrual basis of BTPs before the euro).
// Delivery: the 10th adjusted to a business day, or a later date the caller
// gives. Time to maturity runs from the unadjusted 10th: whole months over
// 12 plus half a month when days remain. The terms in force on the
// delivery day say whether the bond is priced; the Italian long contract
// changed its basket with the delivery year, so its basket is read for the
// delivery date the caller gives, LIFFE's for the delivery day.
#include "dates/business_days.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

double semiannual_closed_form(double c, double n, int32_t delivery_day, int32_t maturity) {
  const int32_t previous = dates::schedule_date(delivery_day, 0, 6, maturity, 0, nullptr);
  const int32_t next = dates::schedule_date(delivery_day, 1, 6, maturity, 0, nullptr);
  const int32_t later_coupons = dates::months_between(next, maturity, 0, nullptr) / 6;
  const double growth = 1.0 + n / 2.0;
  const double discount_m = engine::safe_pow(growth, -static_cast<double>(later_coupons));
  const double annuity = n != 0.0 ? c / n * (1.0 - discount_m) : c / 2.0 * later_coupons;
  const double dirty =
      engine::safe_pow(growth, -(next - delivery_day) / 182.5) * (c / 2.0 + annuity + discount_m);
  const double accrued = c * dates::day_count(previous, delivery_day, dates::k30E_360, nullptr) / 360.0;
  return dirty - accrued;
}

// The basket is that of the terms on the delivery day, or on the caller's
// delivery date.
double btp_factor(const FactorRequest& req, const Contract& contract, bool basket_on_delivery_day,
                  int32_t* error) {
  const int32_t tenth = day_of_month(req.delivery_ymd, 10);
  int32_t day = dates::adjust_business_day(tenth, dates::kFollowing, req.calendar);
  if (req.delivery > day) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  const ContractTerms& basket_terms =
      basket_on_delivery_day ? terms : contract.terms_on(req.delivery);
  const double n = notional_coupon(req, terms);
  const double years = years_by_months(tenth, req.maturity);
  if (req.check_eligibility) {
    if (!basket_terms.deliverable(years)) return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  } else if (years <= 0.0) {
    return refuse(KVL_ERR_DATE_ORDER, error);
  }
  if (day >= req.maturity) return refuse(KVL_ERR_DATE_ORDER, error);
  if (terms.priced_as != kClosedForm) {
    return price_at_notional(req, day, n, terms.priced_as, false, error);
  }
  return semiannual_closed_form(req.coupon, n, day, req.maturity);
}

}  // namespace

double factor_btp_liffe(const FactorRequest& req, const Contract& contract,
                        int32_t* error) noexcept {
  return btp_factor(req, contract, true, error);
}

double factor_btp(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  return btp_factor(req, contract, false, error);
}

}  // namespace kbond::futures
