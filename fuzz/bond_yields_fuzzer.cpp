// Straight-bond yields beyond the yield to maturity: KVLbhyld, KVLbryld,
// KVLbyldal, KVLbel, KVLbyworst, on decoded bond descriptions.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kHorizonErrors[] = {0, 1, 160, 350, 460, -50, -60};
constexpr int32_t kRealizedErrors[] = {0, 1, 250, -60};
constexpr int32_t kAverageLifeErrors[] = {0, 1, 50, 60, 160, 350, 460, -50, -60};
constexpr int32_t kLifeErrors[] = {0, 1, 160, 350, 401, 460, -60};
constexpr int32_t kWorstErrors[] = {0, 1, 50, 60, 70, 150, 160, 350, 460, -50, -60};

// Custom codes with the widest day counts a custom type may name.
void define_custom_types() {
  static const bool done = [] {
    const int32_t basis = 5, frequency = 1, method = 1, exdiv = -92, days = 31, late = 92;
    KVLbcustom(1000, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &days, nullptr,
               nullptr, &exdiv, nullptr);
    KVLbcustom(1001, &basis, nullptr, nullptr, &frequency, nullptr, &method, nullptr, nullptr,
               nullptr, &late, nullptr);
    return true;
  }();
  (void)done;
}

// A count that may claim anything when its array is absent.
template <class T>
void widen_absent_count(Input& in, Array<T>& array) {
  if (!array.pointer && in.byte() % 2 == 1)
    array.count = in.code(array.count, {INT32_MAX, INT32_MIN, INT32_MAX - 1, -1, 1 << 30});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  define_custom_types();
  Input in(data, size);
  const int function = in.byte() % 5;
  BondArguments b;
  b.decode_type(in);
  b.decode(in);
  const double price = in.real(function == 3 && in.byte() % 2 == 1 ? 0.045 : 101.5);
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

#define KBOND_FUZZ_HEAD b.coupons.pointer, b.coupons.count, b.dates.pointer, b.dates.count, b.settlement
#define KBOND_FUZZ_DESC b.dated_date, b.first_coupon, b.type, b.frequency.pointer, b.frequency.count
#define KBOND_FUZZ_DAYS b.yield_method, b.bd_flags, b.holidays.pointer, b.holidays.count
#define KBOND_FUZZ_SINK b.factor, b.sink_dates.pointer, b.sink_dates.count, b.sink_ends.pointer, \
    b.sink_ends.count, b.sink_amounts, b.sink_premium

  double result = 0.0;
  // KVLbyworst walks its call dates on after a failure, and each step's code
  // replaces the last: with calls, a nonzero code may come with any candidate.
  bool walked_calls = false;
  const int32_t* codes = nullptr;
  std::size_t n_codes = 0;
  auto expect = [&](const auto& set) {
    codes = set;
    n_codes = sizeof set / sizeof set[0];
  };
  switch (function) {
    case 0: {
      const int32_t horizon_date = in.date(serial(2027, 11, 15));
      const double horizon_price = in.real(100.5);
      result = KVLbhyld(KBOND_FUZZ_HEAD, price, horizon_date, horizon_price, KBOND_FUZZ_DESC,
                        b.coupon_tax, b.discount_tax, b.horizon, b.issue_price, KBOND_FUZZ_DAYS,
                        KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      expect(kHorizonErrors);
      break;
    }
    case 1: {
      const double rate = in.real(0.04);
      result = KVLbryld(KBOND_FUZZ_HEAD, price, rate, KBOND_FUZZ_DESC, b.redemption, b.coupon_tax,
                        b.discount_tax, b.horizon, b.issue_price, KBOND_FUZZ_DAYS, error_out);
      expect(kRealizedErrors);
      break;
    }
    case 2:
      result = KVLbyldal(KBOND_FUZZ_HEAD, price, KBOND_FUZZ_DESC, b.redemption, b.coupon_tax,
                         b.discount_tax, b.horizon, b.issue_price, b.yield_method, KBOND_FUZZ_SINK,
                         error_out);
      expect(kAverageLifeErrors);
      break;
    case 3:
      result = KVLbel(KBOND_FUZZ_HEAD, price, KBOND_FUZZ_DESC, b.redemption, b.coupon_tax,
                      b.discount_tax, b.horizon, b.issue_price, KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK,
                      b.exdiv_days, error_out);
      expect(kLifeErrors);
      break;
    default: {
      Array<int32_t> calls;
      Array<double> call_prices;
      calls.decode(in, {serial(2026, 11, 15), serial(2028, 11, 15)},
                   [&] { return in.date(serial(2027, 5, 15)); });
      call_prices.decode(in, {101.0, 100.5}, [&] { return in.real(100.0); });
      widen_absent_count(in, calls);
      widen_absent_count(in, call_prices);
      walked_calls = calls.pointer && calls.count > 0;
      result = KVLbyworst(KBOND_FUZZ_HEAD, price, KBOND_FUZZ_DESC, calls.pointer, calls.count,
                          call_prices.pointer, call_prices.count, b.coupon_tax, b.discount_tax,
                          b.horizon, KBOND_FUZZ_DAYS, KBOND_FUZZ_SINK, b.exdiv_days, error_out);
      expect(kWorstErrors);
      break;
    }
  }
  if (!error_out) return 0;
  bool known = false;
  for (std::size_t i = 0; i < n_codes; ++i) known = known || codes[i] == error;
  check(known, "yields: error code outside its set", result, error);
  if (error != 0 && !walked_calls)
    check(result == -1.0 || result == -999.0, "yields: failure value", result, error);
  check_finite(result, error, "yields: result not finite");
  return 0;
}
