// Spanish government bonds settled from 10 May 1999 pay a maturity that
// falls on a weekend or a holiday on the following business day, and the
// yield is computed to that day: the cash flows due at maturity are
// discounted for the extra days, counted as a fraction of the last coupon
// period. Earlier coupons are not moved.
#include <cstdlib>

#include "dates/business_days.h"
#include "dates/holiday_calendars.h"
#include "engine/coupon_schedule.h"
#include "engine/evaluator_common.h"
#include "engine/evaluators.h"
#include "k_bond.h"

namespace kbond::engine {

namespace {

constexpr int32_t kSpanishSettlementCalendar = 17;
// A maturity on a Saturday before a Monday holiday is paid three days later.
constexpr int32_t kMaturityWindowDays = 3;

// Length in days of the coupon period that ends at maturity, or of the grid
// period that contains it when the last period is broken.
int32_t last_period_days(const bond_desc& desc) noexcept {
  const int32_t on_or_before = grid_on_or_before(desc, desc.maturity);
  if (on_or_before == desc.maturity)
    return desc.maturity - grid_on_or_before(desc, desc.maturity - 1);
  return grid_after(desc, desc.maturity) - on_or_before;
}

}  // namespace

bool spanish_maturity_payment_date(int32_t maturity, int32_t* paid) noexcept {
  static constexpr int32_t kCodes[] = {kSpanishSettlementCalendar, 0};
  const int32_t* const code_lists[] = {kCodes};
  int32_t* list = dates::build_holiday_list(1, code_lists, maturity,
                                            maturity + kMaturityWindowDays, nullptr);
  if (!list) return false;
  const dates::BusinessCalendar calendar{list + 1, list[0], 0, 0};
  *paid = dates::adjust_business_day(maturity, dates::kFollowing, calendar);
  std::free(list);
  return true;
}

double delayed_maturity_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                                  int32_t* error) noexcept {
  int32_t paid = desc.maturity;
  if (!spanish_maturity_payment_date(desc.maturity, &paid)) {
    *error = KVL_ERR_INVALID;
    return 0.0;
  }
  if (paid == desc.maturity) return standard_evaluator(yield, desc, first_derivative, error);
  const int32_t period_days = last_period_days(desc);
  const double delay = period_days > 0 ? static_cast<double>(paid - desc.maturity) / period_days
                                       : 0.0;
  const double t0 = periods_to_next_coupon(desc);
  return discount_cash_flows(
      yield, desc,
      [&](const CashFlow& flow) { return t0 + flow.periods + (flow.at_maturity ? delay : 0.0); },
      first_derivative, error);
}

}  // namespace kbond::engine
