// KVLpikcshflw and KVLpikcshflw_free: the remaining cash flows of a PIK bond
// as caller-owned parallel arrays.
#include "engine/cash_flow_output.h"
#include "k_bond.h"
#include "pik/pik_call.h"
#include "pik/pik_price.h"

using kbond::pik::PikCall;

extern "C" KVL_EXPORT int32_t KVL_API KVLpikcshflw(
    int32_t** dates_out, double** coupons_out, double** principal_out, double** periods_out,
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    const double* redemption, const int32_t* call_date, const int32_t* pay_on_business_day,
    const int32_t* holiday_options, const int32_t* holidays, int32_t n_holidays,
    int32_t* error) {
  kbond::engine::CashFlowOutput columns(dates_out, coupons_out, principal_out, periods_out);
  PikCall call(kbond::pik::pik_arguments(cash_rates, n_cash, pik_rates, n_pik, dates, n_dates,
                                         settlement, dated_date, first_coupon, type, frequency,
                                         redemption, call_date, pay_on_business_day,
                                         holiday_options, holidays, n_holidays),
               error);
  if (!call.ok()) return 0;
  const auto& pik = call.desc();
  const int32_t rows = pik.remaining_periods();
  if (rows < 1) {
    call.error() = KVL_ERR_INVALID;
    return 0;
  }
  if (!columns.allocate(rows)) {
    call.error() = KVL_ERR_NO_MEMORY;
    return 0;
  }
  int32_t row = 0;
  kbond::pik::for_each_pik_flow(pik, [&](const kbond::pik::PikFlow& flow) {
    if (row >= rows) return;
    if (columns.dates) columns.dates[row] = flow.date;
    if (columns.coupons) columns.coupons[row] = flow.cash * 100.0;
    if (columns.principal) columns.principal[row] = flow.principal * 100.0;
    if (columns.periods) columns.periods[row] = flow.periods;
    ++row;
  });
  return rows;
}

extern "C" KVL_EXPORT void KVL_API KVLpikcshflw_free(int32_t* dates, double* coupons,
                                                     double* principal, double* periods) {
  kbond::engine::free_cash_flow_columns(dates, coupons, principal, periods);
}
