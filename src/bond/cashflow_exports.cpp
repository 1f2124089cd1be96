// KVLbcshflw and KVLbcshflw_free: the table of a straight bond's remaining
// cash flows, in arrays the library allocates and the caller returns.
#include <cstdlib>

#include "engine/cash_flow_walk.h"
#include "engine/call_frame.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "k_bond.h"

using kbond::engine::BondCall;

namespace {

template <class T>
T* allocate_column(T** out, int32_t n, bool& failed) noexcept {
  if (!out) return nullptr;
  *out = static_cast<T*>(std::malloc(static_cast<std::size_t>(n > 0 ? n : 1) * sizeof(T)));
  if (!*out) failed = true;
  return *out;
}

template <class T>
void release_column(T** out) noexcept {
  if (!out) return;
  std::free(*out);
  *out = nullptr;
}

}  // namespace

extern "C" KVL_EXPORT int32_t KVL_API KVLbcshflw(
    int32_t** out_dates, double** out_coupons, double** out_principal, double** out_periods,
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, const int32_t* dated_date, const int32_t* first_coupon,
    const int32_t* type, const int32_t* frequency, int32_t n_frequency, const double* redemption,
    const double* coupon_tax, const double* discount_tax, const int32_t* horizon,
    const double* issue_price, const double* price, const int32_t* yield_method,
    const int32_t* bd_flags, const int32_t* holidays, int32_t n_holidays, const double* factor,
    const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
    const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
    int32_t* error) {
  if (out_dates) *out_dates = nullptr;
  if (out_coupons) *out_coupons = nullptr;
  if (out_principal) *out_principal = nullptr;
  if (out_periods) *out_periods = nullptr;

  // The gain over the purchase price is taxed: a price near the largest
  // double would tax it into infinity.
  const double purchase = price ? *price : 100.0;
  if (!kbond::engine::plausible_magnitude(purchase)) {
    if (error) *error = KVL_ERR_BAD_PRICE;
    return -1;
  }
  // Municipals that ignore odd coupons, and Canadian bonds under Bank of
  // Canada conventions, pay the cash flows of their plain counterparts.
  int32_t flow_type = 0;
  if (type) flow_type = kbond::engine::accrual_substitute(*type);
  const kbond::engine::bond_args args{
      .coupons = coupons, .n_coupons = n_coupons, .dates = dates, .n_dates = n_dates,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type ? &flow_type : nullptr, .frequency = frequency, .n_frequency = n_frequency,
      .redemption = redemption, .coupon_tax = coupon_tax, .discount_tax = discount_tax,
      .horizon = horizon, .issue_price = issue_price, .yield_method = yield_method,
      .bd_flags = bd_flags, .holidays = holidays, .n_holidays = n_holidays, .factor = factor,
      .sink_dates = sink_dates, .n_sink = n_sink, .sink_ends = sink_ends,
      .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts, .sink_premium = sink_premium,
      .exdiv_days = exdiv_days};
  BondCall call(args, error);
  if (!call.ok()) return -1;
  const auto& bond = call.desc();
  const int32_t n = kbond::engine::cash_flow_rows(bond);
  if (!out_dates && !out_coupons && !out_principal && !out_periods) return n;

  bool failed = false;
  int32_t* row_dates = allocate_column(out_dates, n, failed);
  double* row_coupons = allocate_column(out_coupons, n, failed);
  double* row_principal = allocate_column(out_principal, n, failed);
  double* row_periods = allocate_column(out_periods, n, failed);
  if (failed) call.error() = KVL_ERR_NO_MEMORY;

  if (!failed && n >= 1) {
    kbond::engine::fill_cash_flow_columns(bond, purchase, n,
                                        {row_dates, row_coupons, row_principal, row_periods});
    return n;
  }
  release_column(out_dates);
  release_column(out_coupons);
  release_column(out_principal);
  release_column(out_periods);
  return 0;
}

extern "C" KVL_EXPORT void KVL_API KVLbcshflw_free(int32_t* dates, double* coupons,
                                                   double* principal, double* periods) {
  std::free(dates);
  std::free(coupons);
  std::free(principal);
  std::free(periods);
}
