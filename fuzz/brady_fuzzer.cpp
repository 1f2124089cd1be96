// Brady bonds: KVLbradypr, KVLbradyyld and KVLbradydur on the common bond
// arguments (a 5 % bond maturing 15 November 2030), a guarantee rate, a
// collateral yield and a stripped yield or a price.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

// 21 no stripped yield, 250 bad rate, 350 bad price, 460 negative number of
// guaranteed coupons; the cash-flow table's and the accrued interest's 1 and
// -50; -60 lock.
constexpr int32_t kErrors[] = {0, 1, 21, 250, 350, 460, -50, -60};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 3;
  BondArguments b;
  b.decode_type(in);
  b.decode(in);
  // Price (KVLbradyyld) or guarantee rate, then the collateral yield and the
  // stripped yield (or, for the yield, the collateral yield twice over).
  const double first = in.real(function == 1 ? 92.0 : 0.045);
  const double second = in.real(function == 1 ? 0.045 : 0.04);
  const double third = in.real(function == 1 ? 0.04 : 0.09);
  int32_t guaranteed_value = 0, collateral_value = 0;
  const int32_t* guaranteed =
      in.optional(guaranteed_value, [&] { return in.code(2, {0, 1, 2, 3, 12, 100, -1, -2}); });
  const int32_t* collateral =
      in.optional(collateral_value, [&] { return in.code(1, {0, 1, 2, -1}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

#define KBOND_BRADY_HEAD b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count, b.settlement
#define KBOND_BRADY_TAIL                                                                        \
  guaranteed, collateral, b.dated_date, b.first_coupon, b.type, b.frequency.pointer,            \
      b.frequency.count, b.redemption, b.coupon_tax, b.yield_method, b.bd_flags,                \
      b.holidays.pointer, b.holidays.count, b.factor, b.sink_dates.pointer, b.sink_dates.count, \
      b.sink_ends.pointer, b.sink_ends.count, b.sink_amounts, b.sink_premium, b.exdiv_days, error_out

  double result = 0;
  switch (function) {
    case 0: result = KVLbradypr(KBOND_BRADY_HEAD, first, second, third, KBOND_BRADY_TAIL); break;
    case 1: result = KVLbradyyld(KBOND_BRADY_HEAD, first, second, third, KBOND_BRADY_TAIL); break;
    default: result = KVLbradydur(KBOND_BRADY_HEAD, first, second, third, KBOND_BRADY_TAIL); break;
  }
  Input::traced("result", result);
  Input::traced("error", error_out ? error : 0);
  if (!error_out) return 0;
  check(one_of(error, kErrors), "brady: error code outside its set", result, error);
  if (error != 0) check(result == -1.0, "brady: failure value", result, error);
  else check_finite(result, error, "brady: not finite on success");
  return 0;
}
