// Dispatch of a factor request to its rule family, and the two exports.
#include "futures/conversion_factor.h"

#include <cmath>
#include <iterator>

#include "futures/contract_table.h"
#include "futures/factor_common.h"
#include "k_bond.h"

namespace kbond::futures {
namespace {

using FactorRoutine = double (*)(const FactorRequest&, int32_t*) noexcept;

// Family 2 gathers contracts with rules of their own.
double factor_family2(const FactorRequest& req, int32_t* error) noexcept {
  switch (req.rule) {
    case 2:
    case 3: return factor_gilt_closed_form(req, error);
    case 4: return factor_bund_10th(req, error);
    case 11: return factor_btp(req, error);
    case 14: return factor_bono_actual_days(req, error);
    default: *error = kErrContract; return -1.0;
  }
}

constexpr FactorRoutine kFamilies[] = {
    factor_us_treasury,            // 0
    factor_price_oat_gilt,         // 1
    factor_family2,                // 2
    factor_jgb,                    // 3
    factor_canada,                 // 4
    factor_spain,                  // 5
    factor_eurex,                  // 6
    factor_eurex,                  // 7
    factor_belgium,                // 8
    factor_seventh_day,            // 9
    factor_btp,                    // 10
    factor_third_wednesday_annual, // 11
    factor_portugal,               // 12
    factor_sweden,                 // 13
    factor_us_treasury_65,         // 14
};

}  // namespace

double conversion_factor(const FactorRequest& req, int32_t* error) noexcept {
  *error = 0;
  if (req.family < 0 || req.family >= static_cast<int32_t>(std::size(kFamilies))) {
    *error = kErrContract;
    return -1.0;
  }
  CivilDate check;
  if (!split_date(req.maturity, &check) || !split_date(req.delivery, &check)) {
    *error = kErrBadDate;
    return -1.0;
  }
  if (!std::isfinite(req.coupon)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double f = kFamilies[req.family](req, error);
  if (*error != 0) return -1.0;
  if (!std::isfinite(f)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  return f;
}

}  // namespace kbond::futures

using kbond::futures::ContractEntry;
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
  const ContractEntry* entry = kbond::futures::find_contract(contract ? *contract : 0);
  if (!entry) {
    *err = KVL_ERR_FUT_CONTRACT;
    return -1.0;
  }
  FactorRequest req;
  req.coupon = coupon;
  req.maturity = maturity;
  req.delivery = delivery;
  req.family = entry->family;
  req.rule = entry->rule;
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
  return kbond::futures::conversion_factor(req, err);
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
