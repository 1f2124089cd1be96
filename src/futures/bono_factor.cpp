// MEFF's first Spanish notional bond contract (10 % notional): each
// remaining annual coupon and the redemption are discounted from the
// delivery date at the notional over actual days on a 365-day year, and the
// whole coupon is taken off whenever delivery falls between coupon dates
// (on a coupon date nothing is taken off). Rounded to 7 decimals.
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {
constexpr int32_t kSpanishGovernmentBond = 280;
}

double factor_bono_actual_days(const FactorRequest& req, const Contract& contract,
                               int32_t* error) noexcept {
  const double w = 1.0 + notional_coupon(req, contract.terms_on(req.delivery));
  const int32_t d = req.delivery;
  const int32_t m = req.maturity;
  if (d > m) return refuse(KVL_ERR_DATE_ORDER, error);
  const int32_t frequency = engine::bond_type_frequency(kSpanishGovernmentBond);
  const int32_t period = 12 / (frequency > 0 ? frequency : 1);
  const int32_t next = dates::schedule_date(d, 1, period, m, 0, nullptr);
  const int32_t previous = dates::schedule_date(d, 0, period, m, 0, nullptr);
  const int32_t coupons = dates::months_between(d, m, 0, nullptr) / 12 + 1;
  const double cp = 100.0 * req.coupon;
  double income = 0.0;
  int32_t coupon_date = next;
  // The k-th coupon after delivery; a coupon date cannot lie past maturity.
  for (int32_t k = 1; k <= coupons && coupon_date <= m; ++k) {
    income += cp * engine::safe_pow(w, -(coupon_date - d) / 365.0);
    coupon_date = dates::add_months(next, k * period, 0);
  }
  const double redemption = 100.0 * engine::safe_pow(w, -(m - d) / 365.0);
  const int32_t on_coupon_date = (next - d) / (next - previous);
  return (redemption + income - (1 - on_coupon_date) * cp) * 0.01;
}

}  // namespace kbond::futures
