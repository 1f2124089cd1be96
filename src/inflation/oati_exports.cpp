// Exported functions of the French inflation-indexed OAT (OATi) family (KVLoati...).
#include "k_bond.h"
#include "engine/cashflow_release.h"
#include "inflation/linker_exports.h"

using kbond::inflation::kOatiFamily;
using kbond::inflation::LinkerArgs;

extern "C" {

KVL_EXPORT double KVL_API KVLoatipr(double coupon, const double* base_index, int32_t base_count,
                                    const double* settlement_index, int32_t settlement_index_count,
                                    int32_t maturity, int32_t settlement, double yield, const int32_t* option_a,
                                    const double* next_coupon_amount, int32_t option_b,
                                    const int32_t* previous_coupon, const int32_t* next_coupon,
                                    const double* inflation, const int32_t* option_c,
                                    const int32_t* holiday_options, const int32_t* holidays,
                                    int32_t holiday_count, const int32_t* end_of_month, int32_t /*reserved*/,
                                    int32_t* error) {
  return linker_price_export(
      kOatiFamily,
      LinkerArgs{coupon, base_index, base_count, settlement_index, settlement_index_count, maturity,
                 settlement, option_a, next_coupon_amount, option_b, previous_coupon, next_coupon,
                 inflation, option_c, holiday_options, holidays, holiday_count, end_of_month},
      yield, error);
}

KVL_EXPORT double KVL_API KVLoatiyld(double coupon, const double* base_index, int32_t base_count,
                                     const double* settlement_index, int32_t settlement_index_count,
                                     int32_t maturity, int32_t settlement, double price, const int32_t* option_a,
                                     const double* next_coupon_amount, int32_t option_b,
                                     const int32_t* previous_coupon, const int32_t* next_coupon,
                                     const double* inflation, const int32_t* option_c,
                                     const int32_t* holiday_options, const int32_t* holidays,
                                     int32_t holiday_count, const int32_t* end_of_month, int32_t /*reserved*/,
                                     int32_t* error) {
  return linker_yield_export(
      kOatiFamily,
      LinkerArgs{coupon, base_index, base_count, settlement_index, settlement_index_count, maturity,
                 settlement, option_a, next_coupon_amount, option_b, previous_coupon, next_coupon,
                 inflation, option_c, holiday_options, holidays, holiday_count, end_of_month},
      price, error);
}

KVL_EXPORT double KVL_API KVLoatidur(double coupon, const double* base_index, int32_t base_count,
                                     const double* settlement_index, int32_t settlement_index_count,
                                     int32_t maturity, int32_t settlement, double yield, const int32_t* option_a,
                                     const double* next_coupon_amount, int32_t option_b,
                                     const int32_t* previous_coupon, const int32_t* next_coupon,
                                     const double* inflation, const int32_t* option_c,
                                     const int32_t* holiday_options, const int32_t* holidays,
                                     int32_t holiday_count, const int32_t* end_of_month, int32_t /*reserved*/,
                                     int32_t* error) {
  return linker_risk_export(
      kOatiFamily,
      LinkerArgs{coupon, base_index, base_count, settlement_index, settlement_index_count, maturity,
                 settlement, option_a, next_coupon_amount, option_b, previous_coupon, next_coupon,
                 inflation, option_c, holiday_options, holidays, holiday_count, end_of_month},
      yield, false, error);
}

KVL_EXPORT double KVL_API KVLoaticonv(double coupon, const double* base_index, int32_t base_count,
                                      const double* settlement_index, int32_t settlement_index_count,
                                      int32_t maturity, int32_t settlement, double yield, const int32_t* option_a,
                                      const double* next_coupon_amount, int32_t option_b,
                                      const int32_t* previous_coupon, const int32_t* next_coupon,
                                      const double* inflation, const int32_t* option_c,
                                      const int32_t* holiday_options, const int32_t* holidays,
                                      int32_t holiday_count, const int32_t* end_of_month, int32_t /*reserved*/,
                                      int32_t* error) {
  return linker_risk_export(
      kOatiFamily,
      LinkerArgs{coupon, base_index, base_count, settlement_index, settlement_index_count, maturity,
                 settlement, option_a, next_coupon_amount, option_b, previous_coupon, next_coupon,
                 inflation, option_c, holiday_options, holidays, holiday_count, end_of_month},
      yield, true, error);
}

KVL_EXPORT double KVL_API KVLoatiai(double coupon, int32_t maturity, int32_t settlement,
                                    const double* base_index, int32_t base_count, const double* settlement_index,
                                    int32_t settlement_index_count, const int32_t* previous_coupon,
                                    const int32_t* next_coupon, const int32_t* holiday_options,
                                    const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month,
                                    int32_t* error) {
  return linker_accrued_export(
      kOatiFamily,
      LinkerArgs{coupon, base_index, base_count, settlement_index, settlement_index_count, maturity,
                 settlement, nullptr, nullptr, 0, previous_coupon, next_coupon, nullptr, nullptr,
                 holiday_options, holidays, holiday_count, end_of_month},
      error);
}

KVL_EXPORT int32_t KVL_API KVLoaticshflw(int32_t** dates_out, double** amounts_out, double coupon,
                                         const double* base_index, int32_t base_count,
                                         const double* settlement_index, int32_t settlement_index_count,
                                         int32_t maturity, int32_t settlement, const int32_t* option_a,
                                         const double* next_coupon_amount, int32_t option_b,
                                         const int32_t* previous_coupon, const int32_t* next_coupon,
                                         const double* inflation, const int32_t* option_c,
                                         const int32_t* holiday_options, const int32_t* holidays,
                                         int32_t holiday_count, const int32_t* end_of_month,
                                         int32_t /*reserved*/, int32_t* error) {
  return linker_cashflow_export(
      kOatiFamily,
      LinkerArgs{coupon, base_index, base_count, settlement_index, settlement_index_count, maturity,
                 settlement, option_a, next_coupon_amount, option_b, previous_coupon, next_coupon,
                 inflation, option_c, holiday_options, holidays, holiday_count, end_of_month},
      dates_out, amounts_out, error);
}

KVL_EXPORT void KVL_API KVLoaticshflw_free(int32_t* dates, double* amounts) {
  kbond::engine::release_cashflow_columns(dates, amounts);
}

}  // extern "C"
