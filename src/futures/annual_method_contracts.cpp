// Contracts whose factor is always the annual method (factor_common.h):
// the bond is valued at the notional compounded annually, with time to
// maturity counted in whole months (or whole 30E/360 months) from the
// delivery day.
//
//   family 9  (rule 25): delivery on the 7th of the month, time by 30E/360
//             years rounded to the nearest month; 8 to 10 years, 7 %.
//   family 11 (rules 26, 27): delivery three business days after the
//             business day on or before the third Wednesday; 8 to 13 and
//             3 to 8 years, 6 %.
//   family 13 (rules 29, 30): OM Stockholm's Swedish government bond
//             contracts, delivery four business days after the business day
//             two days before the 10th; 1.5 to 3.5 and 8 to 12 years, 6 %.
//             A whole number of years is kept as it is unless the bond has
//             already gone ex-coupon (Swedish bonds go ex five business
//             days before the coupon).
// All three round to 6 decimals.
#include "dates/business_days.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kSwedishGovernmentBond = 180;

// Eligibility on M/12 (+1/24 for a part month), both bounds inclusive; with
// the check off a bond at or past maturity is still refused.
bool years_acceptable(const FactorRequest& req, int32_t delivery_day, double low, double high,
                      int32_t* error) {
  const double years = years_by_months(delivery_day, req.maturity);
  if (req.check_eligibility) {
    if (!within(years, low, high)) {
      *error = kErrNotDeliverable;
      return false;
    }
  } else if (years <= 0.0) {
    *error = kErrDateOrder;
    return false;
  }
  return true;
}

}  // namespace

double factor_seventh_day(const FactorRequest& req, int32_t* error) noexcept {
  if (req.rule != 25) {
    *error = kErrContract;
    return -1.0;
  }
  double n = 0.0;
  if (!notional_coupon(req, 0.07, false, &n, error)) return -1.0;
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return -1.0;
  }
  const int32_t day = dates::adjust_business_day(day_of_month(delivery, 7), dates::kFollowing,
                                                 req.calendar);
  const double years = dates::year_fraction(day, req.maturity, 2);
  if (req.check_eligibility) {
    if (!within(years, 8.0, 10.0)) {
      *error = kErrNotDeliverable;
      return -1.0;
    }
  } else if (years <= 0.0) {
    *error = kErrDateOrder;
    return -1.0;
  }
  const auto months = static_cast<int32_t>(years * 12.0 + 0.5);
  return engine::round_to(annual_method_factor(req.coupon, n, months), 6);
}

double factor_third_wednesday_annual(const FactorRequest& req, int32_t* error) noexcept {
  double low = 0.0, high = 0.0;
  if (req.rule == 26) {
    low = 8.0, high = 13.0;
  } else if (req.rule == 27) {
    low = 3.0, high = 8.0;
  } else {
    *error = kErrContract;
    return -1.0;
  }
  double n = 0.0;
  if (!notional_coupon(req, 0.06, false, &n, error)) return -1.0;
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return -1.0;
  }
  const int32_t before = dates::adjust_business_day(third_wednesday(delivery), dates::kPreceding,
                                                    req.calendar);
  int32_t day = dates::add_business_days(before, 3, req.calendar);
  if (req.delivery > day) day = req.delivery;
  if (!years_acceptable(req, day, low, high, error)) return -1.0;
  const int32_t months = dates::months_between(day, req.maturity, 0, nullptr);
  return engine::round_to(annual_method_factor(req.coupon, n, months), 6);
}

double factor_sweden(const FactorRequest& req, int32_t* error) noexcept {
  double low = 0.0, high = 0.0;
  if (req.rule == 29) {
    low = 1.5, high = 3.5;
  } else if (req.rule == 30) {
    low = 8.0, high = 12.0;
  } else {
    *error = kErrContract;
    return -1.0;
  }
  double n = 0.0;
  if (!notional_coupon(req, 0.06, false, &n, error)) return -1.0;
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return -1.0;
  }
  const int32_t back = dates::add_business_days(day_of_month(delivery, 10), -2, req.calendar);
  int32_t day = dates::add_business_days(back, 4, req.calendar);
  if (req.delivery > day) day = req.delivery;
  if (!years_acceptable(req, day, low, high, error)) return -1.0;
  const int32_t months = dates::months_between(day, req.maturity, 0, nullptr);
  // The coupon that follows the delivery day on the bond's annual cycle.
  const int32_t eom = engine::bond_type_eom_default(kSwedishGovernmentBond);
  const int32_t coupon_date = dates::schedule_date(day, 1, 12, req.maturity, eom, nullptr);
  const int32_t ex_date = engine::bond_type_exdiv_date(coupon_date, kSwedishGovernmentBond,
                                                       req.calendar, nullptr);
  const bool ex_coupon = day >= ex_date;
  return engine::round_to(annual_method_factor(req.coupon, n, months, !ex_coupon), 6);
}

}  // namespace kbond::futures
