// KVLbcshflw and KVLbcshflw_free: the table of a straight bond's remaining
// cash flows, in arrays the library allocates and the caller returns.
#include "bond/common_args.h"
#include "engine/cash_flow_output.h"
#include "engine/cash_flow_walk.h"
#include "engine/call_frame.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"
#include "k_bond.h"

using kbond::engine::BondCall;

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
  kbond::engine::CashFlowOutput columns(out_dates, out_coupons, out_principal, out_periods);

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
  auto args = kbond::bond::bond_args_without_eom(
      coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency,
      n_frequency, redemption, coupon_tax, discount_tax, horizon, issue_price, yield_method,
      bd_flags, holidays, n_holidays, factor, sink_dates, n_sink, sink_ends, n_sink_ends,
      sink_amounts, sink_premium, exdiv_days);
  if (type) args.type = &flow_type;
  BondCall call(args, error);
  if (!call.ok()) return -1;
  const auto& bond = call.desc();
  const int32_t n = kbond::engine::cash_flow_rows(bond);
  if (columns.none_asked()) return n;
  if (!columns.allocate(n)) {
    call.error() = KVL_ERR_NO_MEMORY;
    return 0;
  }
  if (n < 1) {
    columns.release();
    return 0;
  }
  kbond::engine::fill_cash_flow_columns(
      bond, purchase, n, {columns.dates, columns.coupons, columns.principal, columns.periods});
  return n;
}

extern "C" KVL_EXPORT void KVL_API KVLbcshflw_free(int32_t* dates, double* coupons,
                                                   double* principal, double* periods) {
  kbond::engine::free_cash_flow_columns(dates, coupons, principal, periods);
}
