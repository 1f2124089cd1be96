#include "futures/factor_common.h"

#include <cmath>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/call_frame.h"
#include "engine/price_from_yield.h"
#include "engine/safe_math.h"

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

double price_at_notional(const FactorRequest& req, int32_t settlement, double yield,
                         int32_t bond_type, bool with_coupon_dates, int32_t* error) noexcept {
  const double coupon = req.coupon;
  const int32_t maturity = req.maturity;
  const engine::bond_args args{.coupons = &coupon, .n_coupons = 1, .dates = &maturity,
                               .n_dates = 1, .settlement = settlement,
                               .dated_date = with_coupon_dates ? req.dated_date : nullptr,
                               .first_coupon = with_coupon_dates ? req.first_coupon : nullptr,
                               .type = &bond_type};
  engine::BondCall call(args, error);
  if (!call.ok()) return -1.0;
  const engine::bond_desc& bond = call.desc();
  int32_t* err = &call.error();
  // An infinite notional override is no yield.
  if (!std::isfinite(yield)) return refuse(KVL_ERR_INVALID, err);
  // The notional is a yield as the bond's market quotes it.
  const double y = engine::coupon_yield_from_quoted(yield, bond, err);
  if (*err != 0) return -1.0;
  const double price = engine::price_from_yield(y, bond, nullptr, nullptr, err);
  if (*err != 0) return -1.0;
  const double quoted = engine::round_price_by_type(price, bond.type);
  if (!std::isfinite(quoted)) return refuse(KVL_ERR_INVALID, err);
  return quoted * 0.01;
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
