// Tokyo Stock Exchange JGB futures: Japanese government bonds pay on the
// 20th of the month, so the exchange moves the delivery date and the
// maturity to the 20th of their months and counts whole months between them.
// The bond is valued at the 6 % notional compounded semiannually, and the
// factor is truncated (not rounded) to six decimals as the exchange
// publishes it.
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {
constexpr int32_t kJapaneseGovernmentBond = 200;
}

double factor_jgb(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  const double n = notional_coupon(req, contract.terms_on(req.delivery));
  const double v = 1.0 + n / 2.0;
  const int32_t frequency = engine::bond_type_frequency(kJapaneseGovernmentBond);
  const int32_t period = 12 / (frequency > 0 ? frequency : 2);
  const int32_t start = day_of_month(req.delivery_ymd, 20);
  const int32_t end = day_of_month(req.maturity_ymd, 20);
  if (start > end) return refuse(KVL_ERR_DATE_ORDER, error);
  const int32_t m1 = dates::months_between(start, end, 0, nullptr);
  const int32_t next_coupon = dates::schedule_date(start, 1, period, end, 0, nullptr);
  const int32_t m2 = dates::months_between(next_coupon, end, 0, nullptr);
  const int32_t m3 = dates::months_between(start, next_coupon, 0, nullptr);
  const double cp = req.coupon;
  return ((engine::safe_pow(v, m2 / period + 1.0) - 1.0) * cp / n + 1.0) *
             engine::safe_pow(v, -m1 / 6.0) -
         (6 - m3) * cp / 12.0;
}

}  // namespace kbond::futures
