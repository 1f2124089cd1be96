// Contracts whose factor is always the annual method (factor_common.h):
// the bond is valued at the notional compounded annually, with time to
// maturity counted in whole months (or whole 30E/360 months) from the
// delivery day.
//
//   delivery on the 7th of the month, time by 30E/360 years rounded to the
//   nearest month;
//   delivery three business days after the business day on or before the
//   third Wednesday;
//   OM Stockholm's Swedish government bond contracts, delivery four
//   business days after the business day two days before the 10th. A whole
//   number of years is kept as it is unless the bond has already gone
//   ex-coupon (Swedish bonds go ex five business days before the coupon).
#include "dates/business_days.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kSwedishGovernmentBond = 180;

// Eligibility on `years`, both bounds inclusive; with the check off a bond
// at or past maturity is still refused.
bool years_acceptable(const FactorRequest& req, const ContractTerms& terms, double years,
                      int32_t* error) {
  if (req.check_eligibility) {
    if (!terms.deliverable(years)) {
      *error = KVL_ERR_NOT_DELIVERABLE;
      return false;
    }
  } else if (years <= 0.0) {
    *error = KVL_ERR_DATE_ORDER;
    return false;
  }
  return true;
}

}  // namespace

double factor_seventh_day(const FactorRequest& req, const Contract& contract,
                          int32_t* error) noexcept {
  const int32_t day = dates::adjust_business_day(day_of_month(req.delivery_ymd, 7),
                                                 dates::kFollowing, req.calendar);
  const ContractTerms& terms = contract.terms_on(day);
  const double years = dates::year_fraction(day, req.maturity, dates::k30E_360);
  if (!years_acceptable(req, terms, years, error)) return -1.0;
  const auto months = static_cast<int32_t>(years * 12.0 + 0.5);
  return annual_method_factor(req.coupon, notional_coupon(req, terms), months);
}

double factor_third_wednesday_annual(const FactorRequest& req, const Contract& contract,
                                     int32_t* error) noexcept {
  const int32_t before = dates::adjust_business_day(third_wednesday(req.delivery_ymd),
                                                    dates::kPreceding, req.calendar);
  int32_t day = dates::add_business_days(before, 3, req.calendar);
  if (req.delivery > day) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  if (!years_acceptable(req, terms, years_by_months(day, req.maturity), error)) return -1.0;
  const int32_t months = dates::months_between(day, req.maturity, 0, nullptr);
  return annual_method_factor(req.coupon, notional_coupon(req, terms), months);
}

double factor_sweden(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  const int32_t back = dates::add_business_days(day_of_month(req.delivery_ymd, 10), -2, req.calendar);
  int32_t day = dates::add_business_days(back, 4, req.calendar);
  if (req.delivery > day) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  if (!years_acceptable(req, terms, years_by_months(day, req.maturity), error)) return -1.0;
  const int32_t months = dates::months_between(day, req.maturity, 0, nullptr);
  // The coupon that follows the delivery day on the bond's annual cycle.
  const int32_t eom = engine::bond_type_eom_default(kSwedishGovernmentBond);
  const int32_t coupon_date = dates::schedule_date(day, 1, 12, req.maturity, eom, nullptr);
  const int32_t ex_date = engine::bond_type_exdiv_date(coupon_date, kSwedishGovernmentBond,
                                                       req.calendar, nullptr);
  const bool ex_coupon = day >= ex_date;
  return annual_method_factor(req.coupon, notional_coupon(req, terms), months, !ex_coupon);
}

}  // namespace kbond::futures
