// Cash and carry: the ten KVLbcarry/bifutp/bfwd/bnbasis/birepo exports.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kErrors[] = {0, 1, 160, 401, 460, -60};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 10;
  BondArguments b;
  b.decode_type(in);
  b.decode(in);
  const int32_t end_date = in.date(serial(2024, 6, 3));
  const double price = in.real(98.5);
  const double repo = in.real(0.03);
  const double futures_price = in.real(110.0);
  const double conversion_factor = in.real(0.9);
  double reinvest_value = 0, basis_value = 0;
  int32_t days_value = 0, mode_value = 0, rule_value = 0, calendar_value = 0;
  const double* reinvest = in.optional(reinvest_value, [&] { return in.real(0.02); });
  const double* basis = in.optional(basis_value, [&] { return in.real(365.0); });
  const int32_t* days = in.optional(days_value, [&] { return in.code(2, {0, 1, -1, 30, 4000}); });
  const int32_t* mode = in.optional(mode_value, [&] { return in.code(1, {0, 1, 2, 3, 4, 5, 6, 7}); });
  const int32_t* date_rule = in.optional(rule_value, [&] { return in.code(1, {0, 1, 2, 3, -1}); });
  const int32_t* calendar = in.optional(calendar_value, [&] { return in.code(0, {0, 1, 2, 3}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

#define KBOND_FUZZ_BOND b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count, b.settlement
#define KBOND_FUZZ_TAIL                                                                        \
  b.dated_date, b.first_coupon, b.type, b.frequency.pointer, b.frequency.count, b.coupon_tax, \
      b.factor, b.sink_dates.pointer, b.sink_dates.count, b.sink_ends.pointer,                 \
      b.sink_ends.count, b.sink_amounts, b.sink_premium, b.exdiv_days, basis, days, mode
#define KBOND_FUZZ_BLOCK date_rule, b.holidays.pointer, b.holidays.count, calendar

  double result = 0;
  switch (function) {
    case 0: result = KVLbcarry1(KBOND_FUZZ_BOND, end_date, price, repo, KBOND_FUZZ_TAIL, KBOND_FUZZ_BLOCK, error_out); break;
    case 1: result = KVLbcarry(KBOND_FUZZ_BOND, end_date, price, repo, KBOND_FUZZ_TAIL, error_out); break;
    case 2: result = KVLbifutp1(KBOND_FUZZ_BOND, price, repo, conversion_factor, end_date, reinvest, KBOND_FUZZ_TAIL, KBOND_FUZZ_BLOCK, error_out); break;
    case 3: result = KVLbifutp(KBOND_FUZZ_BOND, price, repo, conversion_factor, end_date, reinvest, KBOND_FUZZ_TAIL, error_out); break;
    case 4: result = KVLbfwd1(KBOND_FUZZ_BOND, end_date, price, repo, KBOND_FUZZ_TAIL, KBOND_FUZZ_BLOCK, error_out); break;
    case 5: result = KVLbfwd(KBOND_FUZZ_BOND, end_date, price, repo, KBOND_FUZZ_TAIL, error_out); break;
    case 6: result = KVLbnbasis1(KBOND_FUZZ_BOND, end_date, price, repo, futures_price, conversion_factor, KBOND_FUZZ_TAIL, KBOND_FUZZ_BLOCK, error_out); break;
    case 7: result = KVLbnbasis(KBOND_FUZZ_BOND, end_date, price, repo, futures_price, conversion_factor, KBOND_FUZZ_TAIL, error_out); break;
    case 8: result = KVLbirepo1(KBOND_FUZZ_BOND, price, futures_price, conversion_factor, end_date, reinvest, KBOND_FUZZ_TAIL, KBOND_FUZZ_BLOCK, error_out); break;
    default: result = KVLbirepo(KBOND_FUZZ_BOND, price, futures_price, conversion_factor, end_date, reinvest, KBOND_FUZZ_TAIL, error_out); break;
  }
  if (!error_out) return 0;
  check(one_of(error, kErrors), "carry: error code outside its set", result, error);
  // Failure values: -1.0, or -999.0 for a period that ends before it starts
  // and for an implied repo no bracket reproduces.
  if (error != 0) check(result == -1.0 || result == -999.0, "carry: failure value", result, error);
  else check_finite(result, error, "carry: not finite on success");
  return 0;
}
