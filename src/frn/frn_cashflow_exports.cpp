// KVLfrncshflw, KVLtfrncshflw: the FRN's remaining cash flows per 100 of par,
// one row per coupon period; KVLfrncshflw_free releases the two columns.
#include <cmath>
#include <cstdlib>

#include "k_bond.h"

#include "engine/cashflow_release.h"
#include "frn/frn_note_call.h"
#include "frn/frn_period.h"

using kbond::frn::FrnSchedule;
using kbond::frn::FrnValuation;
using kbond::frn::NoteCall;
using kbond::frn::ValuationArgs;

namespace {

// Fills the columns, allocated here; 0 rows on failure with nothing held
// (error 1 when an amount overflows).
int32_t fill_cash_flows(const FrnSchedule& s, const kbond::frn::FrnRateSchedule& rates,
                        const ValuationArgs& args, const double* price, int32_t** dates_out,
                        double** amounts_out, int32_t& err) noexcept {
  FrnValuation valuation;
  if ((err = kbond::frn::prepare_valuation(s, rates, args, &valuation))) return 0;
  if (price && !std::isfinite(*price)) {
    err = KVL_ERR_BAD_PRICE;
    return 0;
  }
  const int32_t rows = kbond::frn::count_frn_periods(s);
  auto* dates = static_cast<int32_t*>(std::malloc(sizeof(int32_t) * rows));
  auto* amounts = static_cast<double*>(std::malloc(sizeof(double) * rows));
  if (!dates || !amounts) {
    kbond::engine::release_cashflow_columns(dates, amounts);
    err = KVL_ERR_NO_MEMORY;
    return 0;
  }
  int32_t row = 0;
  for (kbond::frn::FrnPeriodWalk p(s);; p.advance(), ++row) {
    dates[row] = p.payment_date();
    amounts[row] = kbond::frn::frn_period_coupon(rates, *s.type, p.start(), p.end()) *
                   valuation.tax.income_keep * 100.0;
    if (p.is_last()) break;
  }
  // Redemption, less the tax on the gain when bought below it.
  const double redemption = valuation.redemption * 100.0;
  double final_amount = redemption;
  if (price && *price < redemption) final_amount -= valuation.tax.gain_rate * (redemption - *price);
  amounts[rows - 1] += final_amount;
  // A rate near the largest double, or a tiny year length, overflows an
  // amount: a table with an infinite row is no table.
  for (int32_t i = 0; i < rows; ++i) {
    if (!std::isfinite(amounts[i])) {
      kbond::engine::release_cashflow_columns(dates, amounts);
      err = KVL_ERR_INVALID;
      return 0;
    }
  }
  *dates_out = dates;
  *amounts_out = amounts;
  return rows;
}

}  // namespace

extern "C" {

KVL_EXPORT int32_t KVL_API KVLtfrncshflw(int32_t** dates_out, double** amounts_out, int32_t type,
                                         const double* rates, const int32_t* rate_dates,
                                         int32_t rate_count, int32_t maturity, int32_t settlement,
                                         const int32_t* previous_coupon, const int32_t* coupon_dates,
                                         int32_t coupon_count, const int32_t* day_count,
                                         const int32_t* frequency, const double* redemption,
                                         const double* income_tax, const double* gain_tax,
                                         const int32_t* holding, const double* price,
                                         const int32_t* pay_on_business_day,
                                         const int32_t* adjustment_code,
                                         const int32_t* holiday_options, const int32_t* holidays,
                                         int32_t holiday_count, int32_t* error) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  if (!dates_out || !amounts_out) {
    err = KVL_ERR_MISSING_ARRAY;
    return 0;
  }
  *dates_out = nullptr;
  *amounts_out = nullptr;
  const NoteCall call{type, {rates, rate_dates, rate_count}, maturity, settlement, previous_coupon,
                      coupon_dates, coupon_count, day_count, frequency, pay_on_business_day,
                      adjustment_code, holiday_options, holidays, holiday_count};
  const ValuationArgs args{redemption, income_tax, gain_tax, holding};
  return kbond::frn::run_note_call(call, &err, int32_t{0}, [&](const FrnSchedule& s, int32_t& e) {
    return fill_cash_flows(s, call.rates, args, price, dates_out, amounts_out, e);
  });
}

KVL_EXPORT int32_t KVL_API KVLfrncshflw(int32_t** dates_out, double** amounts_out, const double* rates,
                                        const int32_t* rate_dates, int32_t rate_count,
                                        int32_t maturity, int32_t settlement,
                                        const int32_t* previous_coupon, const int32_t* coupon_dates,
                                        int32_t coupon_count, const int32_t* day_count,
                                        const int32_t* frequency, const double* redemption,
                                        const double* income_tax, const double* gain_tax,
                                        const int32_t* holding, const double* price,
                                        const int32_t* pay_on_business_day,
                                        const int32_t* adjustment_code,
                                        const int32_t* holiday_options, const int32_t* holidays,
                                        int32_t holiday_count, int32_t* error) {
  return KVLtfrncshflw(dates_out, amounts_out, 0, rates, rate_dates, rate_count, maturity,
                       settlement, previous_coupon, coupon_dates, coupon_count, day_count,
                       frequency, redemption, income_tax, gain_tax, holding, price,
                       pay_on_business_day, adjustment_code, holiday_options, holidays,
                       holiday_count, error);
}

KVL_EXPORT void KVL_API KVLfrncshflw_free(int32_t* dates, double* amounts) {
  kbond::engine::release_cashflow_columns(dates, amounts);
}

}  // extern "C"
