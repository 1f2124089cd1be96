// Exported functions of the index-linked gilt family (KVLilg...).
#include <cmath>

#include "k_bond.h"
#include "engine/cashflow_release.h"
#include "inflation/cashflow_columns.h"
#include "inflation/ilg_desc.h"
#include "inflation/ilg_flows.h"
#include "inflation/ilg_valuation.h"

namespace {

using kbond::inflation::IlgArgs;
using kbond::inflation::IlgDesc;

void set_error(int32_t* error, int32_t code) noexcept {
  if (error != nullptr) *error = code;
}

double ilg_price(const IlgArgs& args, double yield, int32_t* error) noexcept {
  IlgDesc desc;
  int32_t err = 0;
  if (!ilg_setup(args, &desc) || !std::isfinite(yield)) {
    set_error(error, KVL_ERR_INVALID);
    return -1.0;
  }
  const double price = kbond::inflation::ilg_clean_price(desc, yield, &err);
  if (err == 0 && !std::isfinite(price)) {  // an index ratio too large for a double
    set_error(error, KVL_ERR_INVALID);
    return -1.0;
  }
  set_error(error, err != 0 ? KVL_ERR_INVALID : 0);
  return price;  // on failure the valuation's own failure value (-100 or -1)
}

double ilg_yield(const IlgArgs& args, double price, int32_t* error) noexcept {
  IlgDesc desc;
  int32_t err = 0;
  if (!ilg_setup(args, &desc)) {
    set_error(error, KVL_ERR_INVALID);
    return -1.0;
  }
  const double yield = kbond::inflation::ilg_yield(desc, price, &err);
  set_error(error, err);
  return yield;
}

int32_t ilg_cashflows(int32_t** dates_out, double** amounts_out, double* redemption_out,
                      const IlgArgs& args, int32_t* error) noexcept {
  kbond::inflation::clear_cashflow_outputs(dates_out, amounts_out);
  IlgDesc desc;
  if (!ilg_setup(args, &desc)) {
    set_error(error, KVL_ERR_INVALID);
    return 0;
  }
  double redemption = 0.0;
  int32_t err = 0;
  const int32_t rows = kbond::inflation::write_flow_columns(
      [&](auto&& on_flow) { return kbond::inflation::visit_ilg_flows(desc, on_flow); }, false,
      dates_out, amounts_out, &redemption, err);
  if (redemption_out != nullptr && err == 0) *redemption_out = redemption;
  set_error(error, err);
  return rows;
}

}  // namespace

extern "C" {

KVL_EXPORT double KVL_API KVLilgpr(double real_coupon, double next_coupon_amount, double base_index,
                                   double latest_index, int32_t maturity, int32_t settlement, double yield,
                                   const int32_t* previous_coupon, const int32_t* next_coupon,
                                   const double* inflation, const int32_t* pay_on_business_day,
                                   const int32_t* holiday_options, const int32_t* holidays,
                                   int32_t holiday_count, const int32_t* ex_dividend_override,
                                   const int32_t* end_of_month, int32_t /*reserved*/, int32_t* error) {
  return KVLilgpr2(real_coupon, next_coupon_amount, base_index, latest_index, maturity, settlement, yield,
                   nullptr, previous_coupon, next_coupon, inflation, pay_on_business_day, holiday_options,
                   holidays, holiday_count, ex_dividend_override, end_of_month, 0, error);
}

KVL_EXPORT double KVL_API KVLilgpr2(double real_coupon, double next_coupon_amount, double base_index,
                                    double latest_index, int32_t maturity, int32_t settlement, double yield,
                                    const int32_t* extra_date, const int32_t* previous_coupon,
                                    const int32_t* next_coupon, const double* inflation,
                                    const int32_t* pay_on_business_day, const int32_t* holiday_options,
                                    const int32_t* holidays, int32_t holiday_count,
                                    const int32_t* ex_dividend_override, const int32_t* end_of_month,
                                    int32_t /*reserved*/, int32_t* error) {
  return ilg_price(IlgArgs{real_coupon, next_coupon_amount, base_index, latest_index, maturity, settlement,
                           previous_coupon, next_coupon, inflation, pay_on_business_day, holiday_options,
                           holidays, holiday_count, ex_dividend_override, end_of_month, extra_date},
                   yield, error);
}

KVL_EXPORT double KVL_API KVLilgyld(double real_coupon, double next_coupon_amount, double base_index,
                                    double latest_index, int32_t maturity, int32_t settlement, double price,
                                    const int32_t* previous_coupon, const int32_t* next_coupon,
                                    const double* inflation, const int32_t* pay_on_business_day,
                                    const int32_t* holiday_options, const int32_t* holidays,
                                    int32_t holiday_count, const int32_t* ex_dividend_override,
                                    const int32_t* end_of_month, int32_t /*reserved*/, int32_t* error) {
  return KVLilgyld2(real_coupon, next_coupon_amount, base_index, latest_index, maturity, settlement, price,
                    nullptr, previous_coupon, next_coupon, inflation, pay_on_business_day, holiday_options,
                    holidays, holiday_count, ex_dividend_override, end_of_month, 0, error);
}

KVL_EXPORT double KVL_API KVLilgyld2(double real_coupon, double next_coupon_amount, double base_index,
                                     double latest_index, int32_t maturity, int32_t settlement, double price,
                                     const int32_t* extra_date, const int32_t* previous_coupon,
                                     const int32_t* next_coupon, const double* inflation,
                                     const int32_t* pay_on_business_day, const int32_t* holiday_options,
                                     const int32_t* holidays, int32_t holiday_count,
                                     const int32_t* ex_dividend_override, const int32_t* end_of_month,
                                     int32_t /*reserved*/, int32_t* error) {
  return ilg_yield(IlgArgs{real_coupon, next_coupon_amount, base_index, latest_index, maturity, settlement,
                           previous_coupon, next_coupon, inflation, pay_on_business_day, holiday_options,
                           holidays, holiday_count, ex_dividend_override, end_of_month, extra_date},
                   price, error);
}

KVL_EXPORT double KVL_API KVLilgai(double real_coupon, double next_coupon_amount, int32_t maturity,
                                   int32_t settlement, const int32_t* previous_coupon,
                                   const int32_t* next_coupon, const int32_t* holiday_options,
                                   const int32_t* holidays, int32_t holiday_count,
                                   const int32_t* ex_dividend_override, const int32_t* end_of_month,
                                   int32_t* error) {
  IlgDesc desc;
  const IlgArgs args{real_coupon, next_coupon_amount, 100.0, 100.0, maturity, settlement,
                     previous_coupon, next_coupon, nullptr, nullptr, holiday_options, holidays,
                     holiday_count, ex_dividend_override, end_of_month};
  if (!ilg_setup(args, &desc)) {
    set_error(error, KVL_ERR_INVALID);
    return -1.0;
  }
  set_error(error, 0);
  return desc.accrued;
}

KVL_EXPORT int32_t KVL_API KVLilgcshflw(int32_t** dates_out, double** amounts_out, double* redemption_out,
                                        double real_coupon, double next_coupon_amount, double base_index,
                                        double latest_index, int32_t maturity, int32_t settlement,
                                        const int32_t* previous_coupon, const int32_t* next_coupon,
                                        const double* inflation, const int32_t* pay_on_business_day,
                                        const int32_t* holiday_options, const int32_t* holidays,
                                        int32_t holiday_count, const int32_t* ex_dividend_override,
                                        const int32_t* end_of_month, int32_t /*reserved*/, int32_t* error) {
  return KVLilgcshflw2(dates_out, amounts_out, redemption_out, real_coupon, next_coupon_amount, base_index,
                       latest_index, maturity, settlement, nullptr, previous_coupon, next_coupon, inflation,
                       pay_on_business_day, holiday_options, holidays, holiday_count,
                       ex_dividend_override, end_of_month, 0, error);
}

KVL_EXPORT int32_t KVL_API KVLilgcshflw2(int32_t** dates_out, double** amounts_out, double* redemption_out,
                                         double real_coupon, double next_coupon_amount, double base_index,
                                         double latest_index, int32_t maturity, int32_t settlement,
                                         const int32_t* extra_date, const int32_t* previous_coupon,
                                         const int32_t* next_coupon, const double* inflation,
                                         const int32_t* pay_on_business_day, const int32_t* holiday_options,
                                         const int32_t* holidays, int32_t holiday_count,
                                         const int32_t* ex_dividend_override, const int32_t* end_of_month,
                                         int32_t /*reserved*/, int32_t* error) {
  return ilg_cashflows(dates_out, amounts_out, redemption_out,
                       IlgArgs{real_coupon, next_coupon_amount, base_index, latest_index, maturity,
                               settlement, previous_coupon, next_coupon, inflation, pay_on_business_day,
                               holiday_options, holidays, holiday_count, ex_dividend_override,
                               end_of_month, extra_date},
                       error);
}

KVL_EXPORT void KVL_API KVLilgcshflw_free(int32_t* dates, double* amounts) {
  kbond::engine::release_cashflow_columns(dates, amounts);
}

}  // extern "C"
