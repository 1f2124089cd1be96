// U.S. and French inflation-indexed bonds: every KVLtips... and KVLoati... export.
#include "cashflow_check.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {
constexpr int32_t kErrors[] = {0, 1, 50, 70, 152, 153, -50};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 12;  // 0..5 TIPS, 6..11 OATi
  const bool pairs = in.byte() % 2 == 1;
  // 2 % TIPS of January 2016 settling 2 January 2013 (Ref CPI 198.47742 on
  // the dated date, 231.28165 at settlement); with `pairs` the two monthly
  // index values of each month instead.
  Array<double> base, settle;
  base.decode(in, pairs ? std::vector<double>{198.3, 198.6} : std::vector<double>{198.47742},
              [&] { return in.real(198.5); });
  settle.decode(in, pairs ? std::vector<double>{231.2, 231.3} : std::vector<double>{231.28165},
                [&] { return in.real(231.3); });
  const double coupon = in.real(2.0);
  const int32_t maturity = in.date(serial(2016, 1, 15));
  const int32_t settlement = in.date(serial(2013, 1, 2));
  const bool yield_function = function % 6 == 1;
  const double market = in.real(yield_function ? 110.0 : -0.005);
  int32_t a_value = 0, previous_value = 0, next_value = 0, c_value = 0, options_value = 0, eom_value = 0;
  double next_amount_value = 0, inflation_value = 0;
  const int32_t* option_a = in.optional(a_value, [&] { return in.code(1, {0, 1, 2}); });
  const double* next_amount = in.optional(next_amount_value, [&] { return in.real(1.1653); });
  const int32_t option_b = in.code(0, {0, 1, 2, -1});
  const int32_t* previous = in.optional(previous_value, [&] { return in.date(serial(2012, 7, 15)); });
  const int32_t* next = in.optional(next_value, [&] { return in.date(serial(2013, 1, 15)); });
  const double* inflation = in.optional(inflation_value, [&] { return in.real(0.03); });
  const int32_t* option_c = in.optional(c_value, [&] { return in.date(serial(2006, 1, 15)); });
  const int32_t* options = in.optional(options_value, [&] { return in.code(1, {0, 1, 2, 3, 4}); });
  Array<int32_t> holidays;
  holidays.decode(in, {}, [&] { return in.date(serial(2013, 7, 15)); });
  const int32_t* eom = in.optional(eom_value, [&] { return in.code(1, {0, 1, 2}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;
  const uint8_t outputs = in.byte();

#define KBOND_LINKER_INDEX base.pointer, base.count, settle.pointer, settle.count
#define KBOND_LINKER_TAIL option_a, next_amount, option_b, previous, next, inflation, option_c, \
    options, holidays.pointer, holidays.count, eom, 0, error_out

  const bool tips = function < 6;
  if (function % 6 == 3) {
    int32_t* dates = nullptr;
    double* amounts = nullptr;
    const bool want_dates = outputs % 4 != 1, want_amounts = outputs % 4 != 2;
    int32_t** dates_arg = want_dates ? &dates : nullptr;
    double** amounts_arg = want_amounts ? &amounts : nullptr;
    const int32_t rows =
        tips ? KVLtipscshflw(dates_arg, amounts_arg, coupon, KBOND_LINKER_INDEX, maturity, settlement, KBOND_LINKER_TAIL)
             : KVLoaticshflw(dates_arg, amounts_arg, coupon, KBOND_LINKER_INDEX, maturity, settlement, KBOND_LINKER_TAIL);
    check_cashflows(rows, dates, amounts, want_dates, want_amounts, error_out, kErrors);
    if (tips) KVLtipscshflw_free(dates, amounts);
    else KVLoaticshflw_free(dates, amounts);
    return 0;
  }
  double result = 0;
  switch (function) {
    case 0: result = KVLtipspr(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    case 1: result = KVLtipsyld(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    case 2: result = KVLtipsai(coupon, maturity, settlement, KBOND_LINKER_INDEX, previous, next, options, holidays.pointer, holidays.count, eom, error_out); break;
    case 4: result = KVLtipsdur(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    case 5: result = KVLtipsconv(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    case 6: result = KVLoatipr(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    case 7: result = KVLoatiyld(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    case 8: result = KVLoatiai(coupon, maturity, settlement, KBOND_LINKER_INDEX, previous, next, options, holidays.pointer, holidays.count, eom, error_out); break;
    case 10: result = KVLoatidur(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
    default: result = KVLoaticonv(coupon, KBOND_LINKER_INDEX, maturity, settlement, market, KBOND_LINKER_TAIL); break;
  }
  if (!error_out) return 0;
  check(one_of(error, kErrors), "linker: error code outside its set", result, error);
  if (error != 0) check(result == -1.0, "linker: failure value", result, error);
  else check_finite(result, error, "linker: not finite on success");
  return 0;
}
