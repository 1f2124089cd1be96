// Italian government bond (BTP) contracts delivered on the 10th of the
// delivery month: the LIFFE BTP contract (rule 11 of family 2; 8 % notional
// until the December 1998 delivery, 6 % from then) and the long, medium and
// 30-year-style BTP contracts of family 10 (rules 11, 12, 13).
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
// 12 plus half a month when days remain. Rounded to 6 decimals.
#include "dates/business_days.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kGenericBond = 500;
constexpr int32_t kSerial1Dec1998 = 36129;
constexpr int32_t kSerial1Mar1999 = 36219;

double semiannual_closed_form(double c, double n, int32_t delivery_day, int32_t maturity) {
  const int32_t previous = dates::schedule_date(delivery_day, 0, 6, maturity, 0, nullptr);
  const int32_t next = dates::schedule_date(delivery_day, 1, 6, maturity, 0, nullptr);
  const int32_t later_coupons = dates::months_between(next, maturity, 0, nullptr) / 6;
  const double growth = 1.0 + n / 2.0;
  const double discount_m = engine::safe_pow(growth, -static_cast<double>(later_coupons));
  const double annuity = n != 0.0 ? c / n * (1.0 - discount_m) : c / 2.0 * later_coupons;
  const double dirty =
      engine::safe_pow(growth, -(next - delivery_day) / 182.5) * (c / 2.0 + annuity + discount_m);
  const double accrued = c * dates::day_count(previous, delivery_day, 2, nullptr) / 360.0;
  return dirty - accrued;
}

}  // namespace

double factor_btp(const FactorRequest& req, int32_t* error) noexcept {
  const bool liffe = req.family == 2;
  if (liffe ? req.rule != 11 : (req.rule < 11 || req.rule > 13)) {
    *error = kErrContract;
    return -1.0;
  }
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return -1.0;
  }
  const int32_t tenth = day_of_month(delivery, 10);
  int32_t day = dates::adjust_business_day(tenth, dates::kFollowing, req.calendar);
  if (req.delivery > day) day = req.delivery;
  double standard = 0.06, low = 0.0, high = 0.0;
  if (liffe) {
    if (day < kSerial1Dec1998) {
      standard = 0.08, low = 8.0, high = 10.5;
    } else {
      low = 8.5, high = 10.5;
    }
  } else if (req.rule == 11) {
    const bool before_1999 = delivery.year < 1999;
    low = before_1999 ? 8.0 : 8.5, high = before_1999 ? 10.0 : 10.5;
  } else if (req.rule == 12) {
    low = 3.5, high = 5.0;
  } else {
    standard = 0.05, low = 15.0, high = 999.0;
  }
  double n = 0.0;
  if (!notional_coupon(req, standard, true, &n, error)) return -1.0;
  const double years = years_by_months(tenth, req.maturity);
  if (req.check_eligibility) {
    if (!within(years, low, high)) {
      *error = kErrNotDeliverable;
      return -1.0;
    }
  } else if (years <= 0.0) {
    *error = kErrDateOrder;
    return -1.0;
  }
  if (day >= req.maturity) {
    *error = kErrDateOrder;
    return -1.0;
  }
  double f = 0.0;
  if (day >= kSerial1Mar1999) {
    f = price_at_notional(req, day, n, kGenericBond, false, error);
    if (*error != 0) return -1.0;
  } else {
    f = semiannual_closed_form(req.coupon, n, day, req.maturity);
  }
  return engine::round_to(f, 6);
}

}  // namespace kbond::futures
