// U.S. Treasury bond and note futures (CBOT): the factor is the price per
// unit of face at which the bond yields the notional coupon (8 % for
// delivery months before March 2000, 6 % since), compounded semiannually,
// with the time to maturity measured from the first day of the delivery
// month and rounded down to whole quarters (bond and 10-year note) or whole
// months (2-, 3- and 5-year notes), and the factor rounded to 4 decimals.
//
// Contract rules: 0 bond and 10-year note basket, 1 the 2- and 5-year notes,
// 31 the 10-year note (6.5 to 10.25 years), 32 the 5-year note. Family 14
// serves rules 31 and 32 with a 6.5 % notional.
#include <cmath>

#include "dates/business_days.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kSerial1Mar2000 = 36585;

// Whole quarters: the bond and 10-year note contracts.
double quarterly_method(const FactorRequest& req, const CivilDate& delivery, double n,
                        int32_t* error) {
  const int32_t first = dates::adjust_business_day(day_of_month(delivery, 1), dates::kFollowing,
                                                   req.calendar);
  if (first > req.maturity) {
    *error = kErrDateOrder;
    return -1.0;
  }
  const int32_t quarters = dates::months_between(first, req.maturity, 1, nullptr) / 3;
  const int32_t half_years = quarters / 2;
  const double cp = req.coupon;
  const double v = 1.0 + n / 2.0;
  const double discount = engine::safe_pow(v, -static_cast<double>(half_years));
  double f = (cp / n) * (1.0 - discount) + discount;
  if (quarters % 2 != 0) f = (f + cp / 2.0) / std::sqrt(v) - cp / 4.0;
  return engine::round_to(f, 4);
}

// Whole months from the 15th: the 2-, 3- and 5-year note contracts.
double monthly_method(const FactorRequest& req, const CivilDate& delivery, double n,
                      int32_t* error) {
  const int32_t mid_month = day_of_month(delivery, 15);
  if (mid_month > req.maturity) {
    *error = kErrDateOrder;
    return -1.0;
  }
  const int32_t months = dates::months_between(mid_month, req.maturity, 1, nullptr);
  const int32_t half_years = months / 6;
  const int32_t rest = months - 6 * half_years;
  const double cp = req.coupon;
  const double v = 1.0 + n / 2.0;
  const double a = engine::safe_pow(v, -(rest / 6.0 + half_years));
  const double f = (engine::safe_pow(v, half_years + 1.0) - 1.0) * a * cp / n + a -
                   (6 - rest) * cp / 12.0;
  return engine::round_to(f, 4);
}

// Months from the first of the delivery month; a part month counts as half
// a month more so that "at most 10 years" excludes 10 years and a day.
double months_to_maturity(const FactorRequest& req, const CivilDate& delivery) {
  int32_t exact = 0;
  const int32_t whole = dates::months_between(day_of_month(delivery, 1), req.maturity, 1, &exact);
  return whole + (exact ? 0.0 : 0.5);
}

bool deliverable(int32_t rule, double m) {
  switch (rule) {
    case 0: return (m >= 78.0 && m <= 120.0) || m >= 180.0;
    case 1: return (m >= 21.0 && m < 25.0) || (m >= 50.0 && m <= 63.0);
    case 31: return m >= 78.0 && m <= 123.0;
    default: return m >= 48.0 && m <= 63.0;  // 32
  }
}

double treasury_factor(const FactorRequest& req, double standard_notional, int32_t* error) {
  if (req.rule != 0 && req.rule != 1 && req.rule != 31 && req.rule != 32) {
    *error = kErrContract;
    return -1.0;
  }
  double n = 0.0;
  if (!notional_coupon(req, standard_notional, false, &n, error)) return -1.0;
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return -1.0;
  }
  const double months = months_to_maturity(req, delivery);
  if (req.check_eligibility && !deliverable(req.rule, months)) {
    *error = kErrNotDeliverable;
    return -1.0;
  }
  if (req.rule == 0 || req.rule == 31) return quarterly_method(req, delivery, n, error);
  return monthly_method(req, delivery, n, error);
}

}  // namespace

double factor_us_treasury(const FactorRequest& req, int32_t* error) noexcept {
  return treasury_factor(req, req.delivery < kSerial1Mar2000 ? 0.08 : 0.06, error);
}

double factor_us_treasury_65(const FactorRequest& req, int32_t* error) noexcept {
  if (req.rule != 31 && req.rule != 32) {
    *error = kErrContract;
    return -1.0;
  }
  return treasury_factor(req, 0.065, error);
}

}  // namespace kbond::futures
