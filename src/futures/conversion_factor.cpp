// A factor request run through its contract's row, and the two exports.
#include "futures/conversion_factor.h"

#include <cmath>

#include "engine/safe_math.h"
#include "futures/contract_table.h"
#include "futures/factor_common.h"
#include "k_bond.h"

namespace kbond::futures {
namespace {

bool notional_refused(double n, NotionalFloor floor) noexcept {
  switch (floor) {
    case NotionalFloor::kPositive: return !(n > 0.0);
    case NotionalFloor::kNonNegative: return std::isnan(n) || n < 0.0;
    case NotionalFloor::kGrowth: return !(1.0 + n > 0.0);
  }
  return true;
}

// Cut, not rounded, at `decimals`; a factor that is exactly a whole unit of
// the last place (1.0 for a bond priced at the notional from coupon date to
// coupon date) may come out of pow a few ulps short, and that depends on the
// platform's libm, so a guard far below the last place keeps it whole.
double truncate_to(double f, int32_t decimals) noexcept {
  constexpr double kScale[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
  const double scale = kScale[decimals];
  return std::floor(f * scale + 1e-7) * (1.0 / scale);
}

}  // namespace

double conversion_factor(FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  *error = 0;
  if (!split_date(req.maturity, &req.maturity_ymd) ||
      !split_date(req.delivery, &req.delivery_ymd)) {
    return refuse(KVL_ERR_BAD_DATE, error);
  }
  if (!std::isfinite(req.coupon)) return refuse(KVL_ERR_INVALID, error);
  if (req.notional && notional_refused(*req.notional, contract.floor)) {
    return refuse(KVL_ERR_NOTIONAL, error);
  }
  double f = contract.routine(req, contract, error);
  if (*error != 0) return -1.0;
  f = contract.truncated ? truncate_to(f, contract.decimals)
                         : engine::round_to(f, contract.decimals);
  if (!std::isfinite(f)) return refuse(KVL_ERR_INVALID, error);
  return f;
}

}  // namespace kbond::futures

using kbond::futures::Contract;
using kbond::futures::FactorRequest;

extern "C" {

KVL_EXPORT double KVL_API KVLbfact1(double coupon, int32_t maturity, int32_t delivery,
                                    const int32_t* contract, const int32_t* holidays,
                                    int32_t n_holidays, const int32_t* weekend_flag,
                                    const int32_t* adjust_flag, const int32_t* extra_option,
                                    const int32_t* dated_date, const int32_t* first_coupon,
                                    const double* notional, const int32_t* check_eligibility,
                                    int32_t* error) {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  const Contract* row = kbond::futures::find_contract(contract ? *contract : 0);
  if (!row) return kbond::futures::refuse(KVL_ERR_FUT_CONTRACT, err);
  FactorRequest req;
  req.coupon = coupon;
  req.maturity = maturity;
  req.delivery = delivery;
  const bool usable_list = holidays != nullptr && n_holidays > 0;
  req.calendar = kbond::dates::BusinessCalendar{usable_list ? holidays : nullptr,
                                                usable_list ? n_holidays : 0,
                                                weekend_flag && *weekend_flag ? 1 : 0,
                                                adjust_flag && *adjust_flag ? 1 : 0};
  req.exdiv_override = extra_option;
  req.dated_date = dated_date;
  req.first_coupon = first_coupon;
  req.notional = notional;
  req.check_eligibility = !check_eligibility || *check_eligibility != 0;
  return kbond::futures::conversion_factor(req, *row, err);
}

KVL_EXPORT double KVL_API KVLbfact(double coupon, int32_t maturity, int32_t delivery,
                                   const int32_t* contract, const int32_t* holidays,
                                   int32_t n_holidays, const int32_t* weekend_flag,
                                   const int32_t* adjust_flag, const int32_t* extra_option,
                                   const int32_t* dated_date, const int32_t* first_coupon,
                                   int32_t* error) {
  return KVLbfact1(coupon, maturity, delivery, contract, holidays, n_holidays, weekend_flag,
                   adjust_flag, extra_option, dated_date, first_coupon, nullptr, nullptr, error);
}

}  // extern "C"
