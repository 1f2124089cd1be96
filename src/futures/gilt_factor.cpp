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
// The notional and the basket are the contract's terms for the delivery
// month; time to maturity is counted from the first day of the delivery
// month (whole months over 12, plus half a month for a part month).
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

double factor_gilt_closed_form(const FactorRequest& req, const Contract& contract,
                               int32_t* error) noexcept {
  const int32_t first = day_of_month(req.delivery_ymd, 1);
  const ContractTerms& terms = contract.terms_on(first);
  const double y = notional_coupon(req, terms);
  if (first >= req.maturity) return refuse(KVL_ERR_DATE_ORDER, error);
  if (req.check_eligibility && !terms.deliverable(years_by_months(first, req.maturity))) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
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
  return dirty - accrued;
}

}  // namespace kbond::futures
