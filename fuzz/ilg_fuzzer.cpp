// Index-linked gilts: every KVLilg... export.
#include "cashflow_check.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {
constexpr int32_t kErrors[] = {0, 1, -50};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 7;
  // 2½% Index-linked Treasury Stock 2016, settling 15 March 2005.
  const double real_coupon = in.real(0.025);
  const double next_amount = in.real(2.8952);
  const double base = in.real(81.6);
  const double latest = in.real(188.9);
  const int32_t maturity = in.date(serial(2016, 7, 26));
  const int32_t settlement = in.date(serial(2005, 3, 15));
  const double market = in.real(function == 2 || function == 3 ? 98.0 : 0.02);
  int32_t extra_value = 0, previous_value = 0, next_value = 0, pay_value = 0, options_value = 0,
          exdiv_value = 0, eom_value = 0;
  double inflation_value = 0;
  const int32_t* extra = in.optional(extra_value, [&] { return in.date(serial(2005, 1, 1)); });
  const int32_t* previous = in.optional(previous_value, [&] { return in.date(serial(2005, 1, 26)); });
  const int32_t* next = in.optional(next_value, [&] { return in.date(serial(2005, 7, 26)); });
  const double* inflation = in.optional(inflation_value, [&] { return in.real(0.03); });
  const int32_t* pay = in.optional(pay_value, [&] { return in.code(1, {0, 1, 2}); });
  const int32_t* options = in.optional(options_value, [&] { return in.code(1, {0, 1, 2, 3, 4}); });
  Array<int32_t> holidays;
  holidays.decode(in, {}, [&] { return in.date(serial(2005, 7, 18)); });
  const int32_t* exdiv = in.optional(exdiv_value, [&] { return in.code(7, {7, 1, 0, -7, -30, 30}); });
  const int32_t* eom = in.optional(eom_value, [&] { return in.code(1, {0, 1, 2}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;
  const uint8_t outputs = in.byte();

#define KBOND_ILG_HEAD real_coupon, next_amount, base, latest, maturity, settlement
#define KBOND_ILG_TAIL previous, next, inflation, pay, options, holidays.pointer, holidays.count, exdiv, eom, 0, error_out

  if (function >= 5) {
    int32_t* dates = nullptr;
    double* amounts = nullptr;
    double redemption = -12345.0;
    const bool want_dates = outputs % 4 != 1, want_amounts = outputs % 4 != 2;
    const int32_t rows =
        function == 5
            ? KVLilgcshflw(want_dates ? &dates : nullptr, want_amounts ? &amounts : nullptr,
                           outputs & 4 ? nullptr : &redemption, KBOND_ILG_HEAD, KBOND_ILG_TAIL)
            : KVLilgcshflw2(want_dates ? &dates : nullptr, want_amounts ? &amounts : nullptr,
                            outputs & 4 ? nullptr : &redemption, KBOND_ILG_HEAD, extra, KBOND_ILG_TAIL);
    check_cashflows(rows, dates, amounts, want_dates, want_amounts, error_out, kErrors);
    if (rows > 0 && !(outputs & 4)) check_finite(redemption, 0, "ilg: redemption not finite");
    KVLilgcshflw_free(dates, amounts);
    return 0;
  }
  double result = 0;
  switch (function) {
    case 0: result = KVLilgpr(KBOND_ILG_HEAD, market, KBOND_ILG_TAIL); break;
    case 1: result = KVLilgpr2(KBOND_ILG_HEAD, market, extra, KBOND_ILG_TAIL); break;
    case 2: result = KVLilgyld(KBOND_ILG_HEAD, market, KBOND_ILG_TAIL); break;
    case 3: result = KVLilgyld2(KBOND_ILG_HEAD, market, extra, KBOND_ILG_TAIL); break;
    default:
      result = KVLilgai(real_coupon, next_amount, maturity, settlement, previous, next, options,
                        holidays.pointer, holidays.count, exdiv, eom, error_out);
      break;
  }
  if (!error_out) return 0;
  check(one_of(error, kErrors), "ilg: error code outside its set", result, error);
  if (error != 0) {
    // Prices fail with -100.0 when the money-market denominator vanishes.
    const bool price = function <= 1;
    check(result == -1.0 || (price && result == -100.0), "ilg: failure value", result, error);
  } else {
    check_finite(result, error, "ilg: not finite on success");
  }
  return 0;
}
