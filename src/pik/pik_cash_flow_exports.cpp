// KVLpikcshflw and KVLpikcshflw_free: the remaining cash flows of a PIK bond
// as caller-owned parallel arrays.
#include <cstdlib>

#include "k_bond.h"
#include "pik/pik_call.h"
#include "pik/pik_price.h"

using kbond::pik::PikCall;

namespace {


template <class T>
T* allocate_column(T** out, int32_t rows, bool* failed) {
  if (!out) return nullptr;
  *out = static_cast<T*>(std::malloc(sizeof(T) * static_cast<size_t>(rows)));
  if (!*out) *failed = true;
  return *out;
}

template <class T>
void release_column(T** out) {
  if (!out) return;
  std::free(*out);
  *out = nullptr;
}

}  // namespace

extern "C" KVL_EXPORT int32_t KVL_API KVLpikcshflw(
    int32_t** dates_out, double** coupons_out, double** principal_out, double** periods_out,
    const double* cash_rates, int32_t n_cash, const double* pik_rates, int32_t n_pik,
    const int32_t* dates, int32_t n_dates, int32_t settlement, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    const double* redemption, const int32_t* call_date, const int32_t* pay_on_business_day,
    const int32_t* holiday_options, const int32_t* holidays, int32_t n_holidays,
    int32_t* error) {
  if (dates_out) *dates_out = nullptr;
  if (coupons_out) *coupons_out = nullptr;
  if (principal_out) *principal_out = nullptr;
  if (periods_out) *periods_out = nullptr;
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
  bool failed = false;
  int32_t* row_dates = allocate_column(dates_out, rows, &failed);
  double* coupons = allocate_column(coupons_out, rows, &failed);
  double* principal = allocate_column(principal_out, rows, &failed);
  double* periods = allocate_column(periods_out, rows, &failed);
  if (failed) {
    release_column(dates_out);
    release_column(coupons_out);
    release_column(principal_out);
    release_column(periods_out);
    call.error() = KVL_ERR_NO_MEMORY;
    return 0;
  }
  int32_t row = 0;
  kbond::pik::for_each_pik_flow(pik, [&](const kbond::pik::PikFlow& flow) {
    if (row >= rows) return;
    if (row_dates) row_dates[row] = flow.date;
    if (coupons) coupons[row] = flow.cash * 100.0;
    if (principal) principal[row] = flow.principal * 100.0;
    if (periods) periods[row] = flow.periods;
    ++row;
  });
  return rows;
}

extern "C" KVL_EXPORT void KVL_API KVLpikcshflw_free(int32_t* dates, double* coupons,
                                                     double* principal, double* periods) {
  std::free(dates);
  std::free(coupons);
  std::free(principal);
  std::free(periods);
}
