// A straight bond's schedule without its coupon: KVLbcpn, KVLbncpn,
// KVLbexdiv and KVLbal. Dates come back in 1..1825000 or not at all.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kScheduleErrors[] = {0, 1, -60};
constexpr int32_t kExdivErrors[] = {0, 1, 50, 60, 460, -60};
constexpr int32_t kSteps[] = {0, 1, -1, 2, -2, 40, -40, 60000, -60000, INT32_MAX, INT32_MIN};
constexpr int32_t kPeriods[] = {7, 1, 0, -7, -30, 30, 92, -92, 93, -93, INT32_MAX, INT32_MIN};

void define_custom_types() {
  static const bool done = [] {
    const int32_t monthly = 12, exdiv = 92, early = -92, days = -31;
    KVLbcustom(1000, nullptr, nullptr, nullptr, &monthly, nullptr, nullptr, &days, nullptr,
               nullptr, &exdiv, nullptr);
    KVLbcustom(1001, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
               nullptr, &early, nullptr);
    return true;
  }();
  (void)done;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  define_custom_types();
  Input in(data, size);
  const int function = in.byte() % 4;
  BondArguments b;
  b.decode_type(in);
  const int32_t maturity = in.date(serial(2030, 11, 15));
  const int32_t settlement = in.date(serial(2024, 3, 1));
  b.dated_date = in.optional(b.dated_date_value, [&] { return in.date(serial(2020, 11, 15)); });
  b.first_coupon = in.optional(b.first_coupon_value, [&] { return in.date(serial(2021, 5, 15)); });
  int32_t frequency_value = 0, eom_value = 0, step_value = 0;
  const int32_t* frequency =
      in.optional(frequency_value, [&] { return in.code(2, {0, 1, 2, 3, 4, 6, 12, 5, 24, -2}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

  if (function == 0 || function == 1) {
    const int32_t* eom = in.optional(eom_value, [&] { return in.code(1, {0, 1, 2, -1}); });
    int32_t result = 0;
    if (function == 0) {
      const int32_t* k = in.optional(step_value, [&] { return in.code(1, kSteps); });
      result = KVLbcpn(maturity, settlement, k, b.dated_date, b.first_coupon, b.type, frequency,
                       eom, error_out);
      if (error_out && error == 0)
        check(valid_serial(result) && result <= maturity, "coupon date: no date on success", result, error);
    } else {
      result = KVLbncpn(maturity, settlement, b.dated_date, b.first_coupon, b.type, frequency, eom,
                        error_out);
      if (error_out && error == 0) check(result >= 0, "coupon count: negative on success", result, error);
    }
    if (!error_out) return 0;
    check(one_of(error, kScheduleErrors), "schedule: error code outside its set", result, error);
    if (error != 0) check(result == -1, "schedule: failure value", result, error);
    return 0;
  }

  if (function == 2) {
    const int32_t* period = in.optional(step_value, [&] { return in.code(7, kPeriods); });
    Array<int32_t> holidays;
    holidays.decode(in, {serial(2030, 11, 5)}, [&] { return in.date(serial(2030, 11, 1)); });
    uint8_t flags_value = 0;
    const uint8_t* flags = in.optional(flags_value, [&] { return in.byte(); });
    const int32_t result = KVLbexdiv(maturity, settlement, b.type, period, holidays.pointer,
                                     holidays.count, flags, error_out);
    if (!error_out) return 0;
    check(one_of(error, kExdivErrors), "ex-dividend: error code outside its set", result, error);
    if (error != 0) check(result == -1, "ex-dividend: failure value", result, error);
    if (error == 0) check(valid_serial(result), "ex-dividend: no date on success", result, error);
    return 0;
  }

  b.frequency.decode(in, {}, [&] { return in.code(2, {0, 1, 2, 3, 4, 6, 12, 5, 24, -2}); });
  b.redemption = in.optional(b.redemption_value, [&] { return in.real(100.0); });
  b.factor = in.optional(b.factor_value, [&] { return in.real(-1.0); });
  std::vector<double> amounts;
  if (b.factor) {
    b.sink_dates.decode(in, {serial(2026, 11, 15)}, [&] { return in.date(serial(2027, 11, 15)); });
    b.sink_ends.decode(in, {}, [&] { return in.date(serial(2029, 11, 15)); });
    amounts.assign(std::max<std::size_t>({b.sink_dates.buffer.size(),
                                          static_cast<std::size_t>(std::max(b.sink_dates.count, 0)), 1}),
                   0.1);
    if (in.byte() % 2 == 1) amounts[0] = in.real(0.1);
    b.sink_amounts = (in.byte() % 8 == 7) ? nullptr : amounts.data();
    b.sink_premium = in.optional(b.sink_premium_value, [&] { return in.real(0.01); });
  }
  const double result = KVLbal(maturity, settlement, b.dated_date, b.first_coupon, b.type,
                               b.frequency.pointer, b.frequency.count, b.redemption, b.factor,
                               b.sink_dates.pointer, b.sink_dates.count, b.sink_ends.pointer,
                               b.sink_ends.count, b.sink_amounts, b.sink_premium, error_out);
  if (!error_out) return 0;
  check(one_of(error, kScheduleErrors), "average life: error code outside its set", result, error);
  // Failure: 0.0 for an invalid description, -1 / frequency when nothing is
  // left to repay, -1.0 for the lock.
  if (error != 0)
    check(result == 0.0 || result == -1.0 || result == -0.5 || result == -1.0 / 3 ||
              result == -0.25 || result == -1.0 / 6 || result == -1.0 / 12,
          "average life: failure value", result, error);
  check_finite(result, error, "average life: result not finite");
  return 0;
}
