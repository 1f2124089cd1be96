// Straight bonds: KVLbpr, KVLbai, KVLbai1 on decoded bond descriptions.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kPriceErrors[] = {0, 1, 401, -60};
constexpr int32_t kAccruedErrors[] = {0, 1, -60};

// Defines a few custom codes once so custom types are priced too.
void define_custom_types() {
  static const bool done = [] {
    const int32_t basis = 5, frequency = 1, method = 1, exdiv = 7;
    KVLbcustom(1000, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
               nullptr, nullptr, nullptr);
    KVLbcustom(1001, &basis, nullptr, nullptr, &frequency, nullptr, &method, nullptr, nullptr,
               nullptr, &exdiv, nullptr);
    return true;
  }();
  (void)done;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  define_custom_types();
  Input in(data, size);
  const int function = in.byte() % 3;
  BondArguments b;
  b.decode_type(in);
  b.decode(in);
  const double yield = in.real(0.045);
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

  double result = 0.0;
  switch (function) {
    case 0:
      result = KVLbpr(b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count,
                      b.settlement, yield, b.dated_date, b.first_coupon, b.type,
                      b.frequency.pointer, b.frequency.count, b.redemption, b.coupon_tax,
                      b.discount_tax, b.horizon, b.issue_price, b.yield_method, b.bd_flags,
                      b.holidays.pointer, b.holidays.count, b.factor, b.sink_dates.pointer,
                      b.sink_dates.count, b.sink_ends.pointer, b.sink_ends.count, b.sink_amounts,
                      b.sink_premium, b.exdiv_days, error_out);
      break;
    case 1:
      result = KVLbai(b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count,
                      b.settlement, b.dated_date, b.first_coupon, b.type, b.frequency.pointer,
                      b.frequency.count, b.coupon_tax, b.factor, b.sink_dates.pointer,
                      b.sink_dates.count, b.sink_ends.pointer, b.sink_ends.count, b.sink_amounts,
                      b.sink_premium, b.exdiv_days, error_out);
      break;
    default:
      result = KVLbai1(b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count,
                       b.settlement, b.dated_date, b.first_coupon, b.type, b.frequency.pointer,
                       b.frequency.count, b.coupon_tax, b.factor, b.sink_dates.pointer,
                       b.sink_dates.count, b.sink_ends.pointer, b.sink_ends.count, b.sink_amounts,
                       b.sink_premium, b.exdiv_days, b.bd_flags, b.holidays.pointer,
                       b.holidays.count, error_out);
      break;
  }
  if (!error_out) return 0;
  if (function == 0) {
    check(one_of(error, kPriceErrors), "price: error code outside its set", result, error);
    // The price's failure value is -1.0, scaled by the outstanding factor of
    // an amortising bond when the failure comes after set-up.
    if (error != 0)
      check(result == -1.0 || (b.factor && std::isfinite(result) && result < 0.0),
            "price: failure value", result, error);
  } else {
    check(one_of(error, kAccruedErrors), "accrued: error code outside its set", result, error);
    if (error != 0) check(result == -1.0, "accrued: failure value", result, error);
  }
  if (error == 0) check_finite(result, error, "result not finite on success");
  return 0;
}
