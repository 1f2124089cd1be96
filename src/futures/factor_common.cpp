#include "futures/factor_common.h"

#include <cmath>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "k_bond.h"

namespace kbond::futures {

bool split_date(int32_t serial, CivilDate* out) noexcept {
  if (serial <= 0) return false;
  return dates::serial_to_date(serial, &out->day, &out->month, &out->year) == 0;
}

int32_t day_of_month(const CivilDate& date, int32_t day) noexcept {
  return dates::date_to_serial(day, date.month, date.year);
}

int32_t third_wednesday(const CivilDate& date) noexcept {
  return dates::nth_weekday_of_month(3, dates::kWednesday, date.month, date.year, 0);
}

double years_by_months(int32_t from, int32_t to) noexcept {
  int32_t exact = 0;
  const int32_t months = dates::months_between(from, to, 0, &exact);
  return months / 12.0 + (exact ? 0.0 : 1.0 / 24.0);
}

bool notional_coupon(const FactorRequest& req, double standard, bool zero_allowed,
                     double* notional, int32_t* error) noexcept {
  if (!req.notional) {
    *notional = standard;
    return true;
  }
  const double n = *req.notional;
  if (std::isnan(n) || n < 0.0 || (!zero_allowed && n == 0.0)) {
    *error = kErrNotional;
    return false;
  }
  *notional = n;
  return true;
}

double price_at_notional(const FactorRequest& req, int32_t settlement, double yield,
                         int32_t bond_type, bool with_coupon_dates, int32_t* error) noexcept {
  const double coupon = req.coupon;
  const int32_t maturity = req.maturity;
  int32_t err = 0;
  const double price =
      KVLbpr(&coupon, 1, &maturity, 1, settlement, yield,
             with_coupon_dates ? req.dated_date : nullptr,
             with_coupon_dates ? req.first_coupon : nullptr, &bond_type, nullptr, 0, nullptr,
             nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
             nullptr, 0, nullptr, nullptr, nullptr, &err);
  if (err != 0) {
    *error = err;
    return -1.0;
  }
  return price * 0.01;
}

double annual_method_factor(double cp, double n, int32_t months, bool keep_whole_year) noexcept {
  const double w = 1.0 + n;
  int32_t whole_years = months / 12;
  double fraction = (months % 12) / 12.0;
  if (fraction == 0.0 && !keep_whole_year) {
    fraction = 1.0;
    whole_years -= 1;
  }
  const double discount_k = engine::safe_pow(w, -static_cast<double>(whole_years));
  // With a zero notional the coupon annuity (w - w^-k) / n tends to k + 1.
  const double annuity = n != 0.0 ? (w - discount_k) / n : whole_years + 1.0;
  return engine::safe_pow(w, -fraction) * (annuity * cp + discount_k) - (1.0 - fraction) * cp;
}

}  // namespace kbond::futures
