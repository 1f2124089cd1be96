// Floating-rate notes: FRN types and every KVLfrn... / KVLtfrn... export.
#include "fuzz_input.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kErrors[] = {0,   1,   50,  60,  150, 160, 250, 300, 301, 302, 303,
                               304, 305, 306, 350, 400, 460, 901, -50, -100};
constexpr int32_t kTypeErrors[] = {0, 300, 301, 302, 303, 304, 305, 306, 901, -50};

// The FRN type the typed exports use: the defaults, a freshly registered
// type (released afterwards), a handle never registered, or one released.
struct TypeHandle {
  int32_t handle = 0;
  bool owned = false;

  void decode(Input& in) {
    switch (in.byte() % 4) {
      case 1: {
        int32_t v[8] = {};
        double year = 0;
        const int32_t* frequency = in.optional(v[0], [&] { return in.code(4, {1, 2, 3, 4, 6, 12, 26, 52, 5, 0}); });
        const int32_t* day_count = in.optional(v[1], [&] { return in.code(1, {0, 1, 2, 3, 4, 5, 6, -1}); });
        const int32_t* rule = in.optional(v[2], [&] { return in.code(2, {0, 1, 2, 3, 4}); });
        const int32_t* eom = in.optional(v[3], [&] { return in.code(1, {0, 1, 2}); });
        const int32_t* holiday = in.optional(v[4], [&] { return in.code(1, {0, 1, 2, 3}); });
        const int32_t* option = in.optional(v[5], [&] { return in.code(1, {0, 1, 2}); });
        const double* year_length = in.optional(year, [&] { return in.real(365.0); });
        const int32_t* extra = in.optional(v[6], [&] { return in.code(1); });
        int32_t error = 12345;
        handle = KVLfrntype(0, frequency, day_count, rule, eom, holiday, option, year_length, extra,
                            0, 0, 0, 0, 0, 0, &error);
        check(one_of(error, kTypeErrors), "frntype: error code outside its set", handle, error);
        check((handle != 0) == (error == 0), "frntype: handle and error disagree", handle, error);
        owned = handle != 0;
        break;
      }
      case 2: handle = in.code(7); break;
      case 3: {
        handle = KVLfrntype(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                            nullptr, 0, 0, 0, 0, 0, 0, nullptr);
        check(handle != 0, "frntype: default type refused", handle, 0);
        check(KVLfreefrntype(handle) == 0, "freefrntype: result", handle, 0);
        break;
      }
      default: handle = 0; break;
    }
  }
  ~TypeHandle() {
    if (owned) KVLfreefrntype(handle);
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 22;
  TypeHandle type;
  type.decode(in);
  const int32_t t = type.handle;

  Array<double> rates;
  Array<int32_t> rate_dates;
  rates.decode(in, {0.05}, [&] { return in.real(0.05); });
  // Rate dates as long as the rates: the schedule's count is the rates' count.
  rate_dates.buffer.assign(rates.buffer.size(), serial(2025, 12, 15));
  for (std::size_t i = 1; i < rate_dates.buffer.size(); ++i)
    rate_dates.buffer[i] = rate_dates.buffer[i - 1] + 91;
  if (!rate_dates.buffer.empty() && in.byte() % 2 == 1)
    rate_dates.buffer[in.byte() % rate_dates.buffer.size()] = in.date(serial(2026, 6, 15));
  const bool rate_dates_null = in.byte() % 8 == 7;
  rate_dates.pointer = rate_dates_null || rate_dates.buffer.empty() ? nullptr : rate_dates.buffer.data();
  const int32_t rate_count = rates.count;

  const int32_t maturity = in.date(serial(2030, 6, 15));
  const int32_t settlement = in.date(serial(2026, 3, 1));
  const double market = in.real(function >= 10 && function <= 11 ? 99.5 : 0.052);
  int32_t previous_value = 0, next_value = 0, dc_value = 0, freq_value = 0, eom_value = 0;
  int32_t holding_value = 0, pay_value = 0, adjust_value = 0, holiday_value = 0, macaulay_value = 0;
  double redemption_value = 0, income_value = 0, gain_value = 0, divisor_value = 0, price_value = 0;
  const int32_t* previous = in.optional(previous_value, [&] { return in.date(serial(2025, 12, 15)); });
  const int32_t* next = in.optional(next_value, [&] { return in.date(serial(2026, 6, 15)); });
  Array<int32_t> coupon_dates;
  coupon_dates.decode(in, {}, [&] { return in.date(serial(2026, 6, 15)); });
  const int32_t* day_count = in.optional(dc_value, [&] { return in.code(1, {0, 1, 2, 3, 4, 5, 6, -1}); });
  const int32_t* frequency = in.optional(freq_value, [&] { return in.code(4, {1, 2, 3, 4, 6, 12, 26, 52, 5, 0}); });
  const int32_t* eom = in.optional(eom_value, [&] { return in.code(1, {0, 1, 2}); });
  const double* redemption = in.optional(redemption_value, [&] { return in.real(100.0); });
  const double* income_tax = in.optional(income_value, [&] { return in.real(0.3); });
  const double* gain_tax = in.optional(gain_value, [&] { return in.real(0.2); });
  const int32_t* holding = in.optional(holding_value, [&] { return in.code(12, {0, 6, 12, 24, 25, 400, -1}); });
  const int32_t* pay = in.optional(pay_value, [&] { return in.code(1, {0, 1, 2}); });
  const int32_t* adjust = in.optional(adjust_value, [&] { return in.code(4, {0, 1, 2, 3, 4, 5, 6, 7, 8}); });
  const int32_t* holiday_options = in.optional(holiday_value, [&] { return in.code(1, {0, 1, 2, 3}); });
  Array<int32_t> holidays;
  holidays.decode(in, {}, [&] { return in.date(serial(2026, 6, 15)); });
  const int32_t* macaulay = in.optional(macaulay_value, [&] { return in.code(1); });
  const double* divisor = in.optional(divisor_value, [&] { return in.real(100.0); });
  const double* price = in.optional(price_value, [&] { return in.real(99.0); });
  const double current = in.real(0.05), money_market = in.real(0.049), index = in.real(0.048),
               margin = in.real(0.002);
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;
  const uint8_t outputs = in.byte();

#define KBOND_FRN_RATES rates.pointer, rate_dates.pointer, rate_count, maturity, settlement
#define KBOND_FRN_COUPONS previous, coupon_dates.pointer, coupon_dates.count, day_count, frequency
#define KBOND_FRN_TAX redemption, income_tax, gain_tax, holding
#define KBOND_FRN_DAYS pay, adjust, holiday_options, holidays.pointer, holidays.count, error_out

  if (function >= 20) {
    int32_t* dates_out = nullptr;
    double* amounts_out = nullptr;
    int32_t** dates_arg = (outputs % 16 == 1) ? nullptr : &dates_out;
    double** amounts_arg = (outputs % 16 == 2) ? nullptr : &amounts_out;
    const int32_t rows =
        function == 20
            ? KVLfrncshflw(dates_arg, amounts_arg, KBOND_FRN_RATES, KBOND_FRN_COUPONS, KBOND_FRN_TAX, price, KBOND_FRN_DAYS)
            : KVLtfrncshflw(dates_arg, amounts_arg, t, KBOND_FRN_RATES, KBOND_FRN_COUPONS, KBOND_FRN_TAX, price, KBOND_FRN_DAYS);
    check(rows >= 0, "cash flows: negative row count", rows, error);
    if (rows == 0) {
      check(!dates_out && !amounts_out, "cash flows: something allocated on failure", rows, error);
      if (error_out) check(error != 0 && one_of(error, kErrors), "cash flows: failure code", rows, error);
    } else {
      check(dates_out && amounts_out, "cash flows: a column missing", rows, error);
      if (error_out) check(error == 0, "cash flows: rows with an error", rows, error);
      for (int32_t i = 0; i < rows; ++i) {
        check(valid_serial(dates_out[i]), "cash flows: bad date", dates_out[i], error);
        check_finite(amounts_out[i], error, "cash flows: amount not finite");
      }
    }
    KVLfrncshflw_free(dates_out, amounts_out);
    return 0;
  }

  double result = 0;
  switch (function) {
    case 0: result = KVLfrnsm(maturity, settlement, current, market, index, margin, previous, next, day_count, frequency, eom, error_out); break;
    case 1: result = KVLtfrnsm(t, maturity, settlement, current, market, index, margin, previous, next, day_count, frequency, eom, error_out); break;
    case 2: result = KVLfrndm(maturity, settlement, current, market, money_market, index, margin, previous, next, day_count, frequency, eom, error_out); break;
    case 3: result = KVLtfrndm(t, maturity, settlement, current, market, money_market, index, margin, previous, next, day_count, frequency, eom, error_out); break;
    case 4: result = KVLfrnai(KBOND_FRN_RATES, KBOND_FRN_COUPONS, adjust, holiday_options, holidays.pointer, holidays.count, error_out); break;
    case 5: result = KVLtfrnai(t, KBOND_FRN_RATES, KBOND_FRN_COUPONS, adjust, holiday_options, holidays.pointer, holidays.count, error_out); break;
    case 6: result = KVLfrncamt(KBOND_FRN_RATES, previous, next, day_count, frequency, adjust, holiday_options, holidays.pointer, holidays.count, error_out); break;
    case 7: result = KVLtfrncamt(t, KBOND_FRN_RATES, previous, next, day_count, frequency, adjust, holiday_options, holidays.pointer, holidays.count, error_out); break;
    case 8: result = KVLfrnpr(KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, KBOND_FRN_DAYS); break;
    case 9: result = KVLtfrnpr(t, KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, KBOND_FRN_DAYS); break;
    case 10: result = KVLfrnyld(KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, KBOND_FRN_DAYS); break;
    case 11: result = KVLtfrnyld(t, KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, KBOND_FRN_DAYS); break;
    case 12: result = KVLfrndur(KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, redemption, macaulay, income_tax, gain_tax, holding, KBOND_FRN_DAYS); break;
    case 13: result = KVLtfrndur(t, KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, redemption, macaulay, income_tax, gain_tax, holding, KBOND_FRN_DAYS); break;
    case 14: result = KVLfrnconv(KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, KBOND_FRN_DAYS); break;
    case 15: result = KVLtfrnconv(t, KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, KBOND_FRN_DAYS); break;
    case 16: result = KVLfrnvalbp(KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, divisor, KBOND_FRN_DAYS); break;
    case 17: result = KVLtfrnvalbp(t, KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, divisor, KBOND_FRN_DAYS); break;
    case 18: result = KVLfrnval32(KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, divisor, KBOND_FRN_DAYS); break;
    default: result = KVLtfrnval32(t, KBOND_FRN_RATES, market, KBOND_FRN_COUPONS, KBOND_FRN_TAX, divisor, KBOND_FRN_DAYS); break;
  }
  if (!error_out) return 0;
  check(one_of(error, kErrors), "frn: error code outside its set", result, error);
  if (error != 0) {
    // The discount margin search returns the margin reached so far when a
    // denominator vanishes; yields and values of a point fail with -999.0.
    const bool margin_so_far = (function == 2 || function == 3) && error == 400;
    check(margin_so_far ? std::isfinite(result) : (result == -1.0 || result == -999.0),
          "frn: failure value", result, error);
  } else {
    check_finite(result, error, "frn: not finite on success");
  }
  return 0;
}
