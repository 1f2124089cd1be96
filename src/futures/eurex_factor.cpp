// Contracts delivered on the 10th of the delivery month (the DTB/Eurex
// German government bond contracts and those built on their model).
//
// Since the euro conventions took over (actual/actual accrual), the factor
// is the clean price per unit of face at which the bond yields the notional
// coupon on the delivery day. Before that, the exchange used the annual
// method on whole months (factor_common.h). Delivery is the 10th adjusted
// to a business day, or a later date the caller gives; time to maturity is
// whole months over 12 plus half a month when days remain; 6 decimals.
//
//   family 6/7: rule 4  Bund       6 %, 8.5 to 10.5 years
//               rule 19 Bobl       6 %, 3.5 to 5 years (4.5 to 5.5 from
//                                  the September 2000 delivery)
//               rule 20 Schatz     6 %, 1.75 to 2.25 years
//               rule 21 Buxl       6 %, 20 to 30.5 years
//               rule 22            7 %, 8 to 10 years
//               annual method before the December 1999 delivery.
//   family 2, rule 4:  4 % for deliveries from September 1999 to February
//               2000, 6 % otherwise; 8.5 to 10.5 years; annual method
//               before May 1999.
#include "dates/business_days.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kGenericBond = 500;
constexpr int32_t kSerial1May1999 = 36280;
constexpr int32_t kSerial1Sep1999 = 36403;
constexpr int32_t kSerial1Dec1999 = 36494;
constexpr int32_t kSerial1Mar2000 = 36585;
constexpr int32_t kSerial1Sep2000 = 36769;

struct TenthRule {
  double notional;
  double low, high;
};

bool tenth_rule(int32_t rule, int32_t delivery_day, TenthRule* out) {
  switch (rule) {
    case 4: *out = {0.06, 8.5, 10.5}; return true;
    case 19:
      *out = delivery_day >= kSerial1Sep2000 ? TenthRule{0.06, 4.5, 5.5} : TenthRule{0.06, 3.5, 5.0};
      return true;
    case 20: *out = {0.06, 1.75, 2.25}; return true;
    case 21: *out = {0.06, 20.0, 30.5}; return true;
    case 22: *out = {0.07, 8.0, 10.0}; return true;
    default: return false;
  }
}

// The 10th adjusted to a business day, or the caller's later date.
bool tenth_delivery_day(const FactorRequest& req, int32_t* day, int32_t* error) {
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return false;
  }
  *day = dates::adjust_business_day(day_of_month(delivery, 10), dates::kFollowing, req.calendar);
  if (req.delivery > *day) *day = req.delivery;
  return true;
}

// Factor on the 10th: price-based from `price_from`, annual method before.
double tenth_factor(const FactorRequest& req, int32_t day, double n, double low, double high,
                    int32_t price_from, int32_t* error) {
  const double years = years_by_months(day, req.maturity);
  if (req.check_eligibility && !within(years, low, high)) {
    *error = kErrNotDeliverable;
    return -1.0;
  }
  if (years <= 0.0) {
    *error = kErrDateOrder;
    return -1.0;
  }
  double f = 0.0;
  if (day >= price_from) {
    f = price_at_notional(req, day, n, kGenericBond, true, error);
    if (*error != 0) return -1.0;
  } else {
    f = annual_method_factor(req.coupon, n, dates::months_between(day, req.maturity, 0, nullptr));
  }
  return engine::round_to(f, 6);
}

}  // namespace

double factor_eurex(const FactorRequest& req, int32_t* error) noexcept {
  int32_t day = 0;
  TenthRule rule{};
  if (!tenth_rule(req.rule, req.delivery, &rule)) {
    *error = kErrContract;
    return -1.0;
  }
  if (!tenth_delivery_day(req, &day, error)) return -1.0;
  tenth_rule(req.rule, day, &rule);
  double n = 0.0;
  if (!notional_coupon(req, rule.notional, true, &n, error)) return -1.0;
  return tenth_factor(req, day, n, rule.low, rule.high, kSerial1Dec1999, error);
}

double factor_bund_10th(const FactorRequest& req, int32_t* error) noexcept {
  if (req.rule != 4) {
    *error = kErrContract;
    return -1.0;
  }
  int32_t day = 0;
  if (!tenth_delivery_day(req, &day, error)) return -1.0;
  const bool low_notional = day >= kSerial1Sep1999 && day < kSerial1Mar2000;
  double n = 0.0;
  if (!notional_coupon(req, low_notional ? 0.04 : 0.06, true, &n, error)) return -1.0;
  return tenth_factor(req, day, n, 8.5, 10.5, kSerial1May1999, error);
}

}  // namespace kbond::futures
