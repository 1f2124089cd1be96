// LIFFE gilt contracts, in the exchange's own closed form: the factor is the
// clean price per unit of face at which the gilt yields the notional coupon
// (compounded semiannually) on the first day of the delivery month, rounded
// to 7 decimals:
//
//   dirty = v^(r/s) * (d1 + c/2 * (v + ... + v^n) + v^n),  v = 1/(1 + y/2)
//   factor = dirty - accrued
//
// r days from the first of the month to the next coupon, s days in that
// coupon period, n whole coupon periods after the next coupon, d1 the next
// coupon (nothing when the gilt is already ex-dividend). Accrued interest is
// actual/actual from 1 November 1998 and actual/365 before, as the gilt
// market accrued; it is negative in the ex-dividend period.
//
//   rule 2  long gilt:   9 %, 10 to 15 years before the March 1998 delivery
//                        month; 7 %, 8.75 to 13 years from then
//   rule 3  medium gilt: 9 %, 7 to 10 years before March 1998; 7 %, 4 to
//                        7 years from then
// Time to maturity is counted from the first day of the delivery month
// (whole months over 12, plus half a month for a part month).
//
// The extra option points to an ex-dividend period for gilts that do not
// follow today's seven-business-day rule (older issues went ex 37 calendar
// days before the coupon): n < 1 adds n calendar days to the coupon date,
// n >= 1 counts n business days back. NULL keeps the Gilt rule.
#include "dates/business_days.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kGilt = 40;
constexpr int32_t kSerial1Mar1998 = 35854;
constexpr int32_t kSerial1Nov1998 = 36099;

int32_t gilt_exdiv_date(const FactorRequest& req, int32_t coupon_date) {
  if (!req.exdiv_override) {
    return engine::bond_type_exdiv_date(coupon_date, kGilt, req.calendar, nullptr);
  }
  const int32_t n = *req.exdiv_override;
  if (n < 1) {
    const int64_t date = static_cast<int64_t>(coupon_date) + n;
    return date < 0 ? 0 : static_cast<int32_t>(date);
  }
  return dates::add_business_days(coupon_date, n > 3650 ? -3650 : -n, req.calendar);
}

}  // namespace

double factor_gilt_closed_form(const FactorRequest& req, int32_t* error) noexcept {
  if (req.rule != 2 && req.rule != 3) {
    *error = kErrContract;
    return -1.0;
  }
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) {
    *error = kErrBadDate;
    return -1.0;
  }
  const int32_t first = day_of_month(delivery, 1);
  const bool old_contract = first < kSerial1Mar1998;
  double low = 0.0, high = 0.0;
  if (req.rule == 2) {
    low = old_contract ? 10.0 : 8.75, high = old_contract ? 15.0 : 13.0;
  } else {
    low = old_contract ? 7.0 : 4.0, high = old_contract ? 10.0 : 7.0;
  }
  double y = 0.0;
  if (!notional_coupon(req, old_contract ? 0.09 : 0.07, true, &y, error)) return -1.0;
  if (first >= req.maturity) {
    *error = kErrDateOrder;
    return -1.0;
  }
  if (req.check_eligibility && !within(years_by_months(first, req.maturity), low, high)) {
    *error = kErrNotDeliverable;
    return -1.0;
  }
  const int32_t eom = engine::bond_type_eom_default(kGilt);
  const int32_t previous = dates::schedule_date(first, 0, 6, req.maturity, eom, nullptr);
  const int32_t next = dates::schedule_date(first, 1, 6, req.maturity, eom, nullptr);
  const int32_t periods_after = dates::months_between(next, req.maturity, eom, nullptr) / 6;
  const double half_coupon = req.coupon / 2.0;
  const double v = 1.0 / (1.0 + y / 2.0);
  const double v_n = engine::safe_pow(v, periods_after);
  const double annuity = y != 0.0 ? v * (1.0 - v_n) / (1.0 - v) : periods_after;
  const bool ex_dividend = first >= gilt_exdiv_date(req, next);
  const double period_days = next - previous;
  const double dirty = engine::safe_pow(v, (next - first) / period_days) *
                       ((ex_dividend ? 0.0 : half_coupon) + half_coupon * annuity + v_n);
  double accrued = 0.0;
  if (first >= kSerial1Nov1998) {
    accrued = ex_dividend ? -half_coupon * (next - first) / period_days
                          : half_coupon * (first - previous) / period_days;
  } else {
    accrued = ex_dividend ? -req.coupon * (next - first) / 365.0
                          : req.coupon * (first - previous) / 365.0;
  }
  return engine::round_to(dirty - accrued, 7);
}

}  // namespace kbond::futures
