// Straight-bond yields, risk measures, coupon amount and cash-flow table:
// KVLbyld, KVLbdur, KVLbconv, KVLbvalbp, KVLbval32, KVLbcamt, KVLbcshflw.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kYieldErrors[] = {0, 1, 160, 350, 460, -60};
constexpr int32_t kRiskErrors[] = {0, 1, 401, -60};
constexpr int32_t kValueErrors[] = {0, 1, 310, 401, -60};
constexpr int32_t kAmountErrors[] = {0, 1, -60};
constexpr int32_t kTableErrors[] = {0, 1, 350, -50, -60};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 7;
  BondArguments b;
  b.decode_type(in);
  b.decode(in);
  const double market = in.real(function == 0 ? 101.5 : 0.045);
  int32_t kind_value = 0;
  double scale_value = 0, price_value = 0;
  const int32_t* kind = in.optional(kind_value, [&] { return in.code(1); });
  const double* scale = in.optional(scale_value, [&] { return in.real(100.0); });
  const double* price = in.optional(price_value, [&] { return in.real(99.0); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;
  const uint8_t outputs = in.byte();

#define KBOND_FUZZ_HEAD b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count, b.settlement
#define KBOND_FUZZ_DESC b.dated_date, b.first_coupon, b.type, b.frequency.pointer, b.frequency.count
#define KBOND_FUZZ_TAXES b.coupon_tax, b.discount_tax, b.horizon, b.issue_price
#define KBOND_FUZZ_DAYS b.yield_method, b.bd_flags, b.holidays.pointer, b.holidays.count
#define KBOND_FUZZ_SINK b.factor, b.sink_dates.pointer, b.sink_dates.count, b.sink_ends.pointer, \
    b.sink_ends.count, b.sink_amounts, b.sink_premium

  if (function == 6) {
    int32_t* dates = nullptr;
    double *coupons = nullptr, *principal = nullptr, *periods = nullptr;
    const bool want[4] = {(outputs & 1) == 0, (outputs & 2) == 0, (outputs & 4) == 0, (outputs & 8) == 0};
    const int32_t rows = KVLbcshflw(want[0] ? &dates : nullptr, want[1] ? &coupons : nullptr,
                                    want[2] ? &principal : nullptr, want[3] ? &periods : nullptr,
                                    KBOND_FUZZ_HEAD, KBOND_FUZZ_DESC, b.redemption, KBOND_FUZZ_TAXES,
                                    price, KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
    const bool any = dates || coupons || principal || periods;
    if (error_out && error != 0) {
      check(one_of(error, kTableErrors), "cash flows: error code outside its set", rows, error);
      check(rows == (error == -50 ? 0 : -1), "cash flows: failure value", rows, error);
      check(!any, "cash flows: columns left after a failure", rows, error);
    }
    if (error_out && error == 0) {
      check(rows >= 0, "cash flows: negative rows on success", rows, error);
      const bool all_or_none = rows == 0 || ((!want[0] || dates) && (!want[1] || coupons) &&
                                              (!want[2] || principal) && (!want[3] || periods));
      check(all_or_none, "cash flows: a requested column missing", rows, error);
      for (int32_t i = 0; i < rows; ++i) {
        if (dates) check(valid_serial(dates[i]) && (i == 0 || dates[i] >= dates[i - 1]), "cash flows: dates", dates[i], 0);
        if (coupons) check_finite(coupons[i], 0, "cash flows: coupon not finite");
        if (principal) check_finite(principal[i], 0, "cash flows: principal not finite");
        if (periods) check_finite(periods[i], 0, "cash flows: period not finite");
      }
    }
    KVLbcshflw_free(dates, coupons, principal, periods);
    return 0;
  }

  double result = 0;
  switch (function) {
    case 0:
      result = KVLbyld(KBOND_FUZZ_HEAD, market, KBOND_FUZZ_DESC, b.redemption, KBOND_FUZZ_TAXES,
                       KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      break;
    case 1:
      result = KVLbdur(KBOND_FUZZ_HEAD, market, KBOND_FUZZ_DESC, b.redemption, kind, KBOND_FUZZ_TAXES,
                       KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      break;
    case 2:
      result = KVLbconv(KBOND_FUZZ_HEAD, market, KBOND_FUZZ_DESC, b.redemption, KBOND_FUZZ_TAXES,
                        KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      break;
    case 3:
      result = KVLbvalbp(KBOND_FUZZ_HEAD, market, KBOND_FUZZ_DESC, b.redemption, KBOND_FUZZ_TAXES,
                         scale, KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      break;
    case 4:
      result = KVLbval32(KBOND_FUZZ_HEAD, market, KBOND_FUZZ_DESC, b.redemption, KBOND_FUZZ_TAXES,
                         scale, KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      break;
    default:
      result = KVLbcamt(KBOND_FUZZ_HEAD, KBOND_FUZZ_DESC, b.coupon_tax, KBOND_FUZZ_SINK, error_out);
      break;
  }
  if (!error_out) return 0;
  switch (function) {
    case 0:
      check(one_of(error, kYieldErrors), "yield: error code outside its set", result, error);
      if (error != 0) check(result == -1.0 || result == -999.0, "yield: failure value", result, error);
      break;
    case 1:
      check(one_of(error, kRiskErrors), "duration: error code outside its set", result, error);
      if (error != 0) check(result == -1.0, "duration: failure value", result, error);
      break;
    case 2:
      check(one_of(error, kRiskErrors), "convexity: error code outside its set", result, error);
      if (error != 0) check(result == -1.0 || result == -999.0, "convexity: failure value", result, error);
      break;
    case 3:
      check(one_of(error, kValueErrors), "value of a basis point: error code outside its set", result, error);
      if (error != 0) check(result == -1.0 || result == -999.0, "value of a basis point: failure value", result, error);
      break;
    case 4:
      // On KVLbvalbp's failure the tick value is 1 / (its failure value x
      // ticks): only a bad tick count has a fixed failure value.
      check(one_of(error, kValueErrors), "value of a tick: error code outside its set", result, error);
      if (error == 310) check(result == -999.0, "value of a tick: failure value", result, error);
      break;
    default:
      check(one_of(error, kAmountErrors), "coupon amount: error code outside its set", result, error);
      if (error != 0) check(result == -1.0, "coupon amount: failure value", result, error);
      break;
  }
  if (error == 0) check_finite(result, error, "bond analytics: not finite on success");
  return 0;
}
