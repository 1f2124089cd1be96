// Perpetual bonds: every KVLpb... export, on a flat perpetual (3.5 % paid
// half-yearly on 1 June and 1 December, as the War Loan) or on one whose
// coupon steps up from 5 % to 6 % in 2029 and to 6.5 % for ever from 2034.
#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kDateErrors[] = {0, 1, -60};
constexpr int32_t kPriceErrors[] = {0, 1, 401, 460, -60};
constexpr int32_t kValueErrors[] = {0, 1, 310, 401, 460, -60};
constexpr int32_t kYieldErrors[] = {0, 1, 350, 460, -60};
constexpr int32_t kCarryErrors[] = {0, 1, 160, -60};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 12;
  int32_t type_value = in.code(40, kBondTypes);
  const int32_t* type = (in.byte() % 4 == 3) ? nullptr : &type_value;
  const bool stepped = in.byte() % 2 == 1;

  Array<double> coupons;
  Array<int32_t> steps;
  if (stepped) {
    coupons.decode(in, {0.05, 0.06, 0.065}, [&] { return in.real(0.06); });
    steps.decode(in, {serial(2029, 6, 1), serial(2034, 6, 1), serial(2039, 6, 1)},
                 [&] { return in.date(serial(2034, 6, 1)); });
  } else {
    coupons.decode(in, {0.035}, [&] { return in.real(0.035); });
    steps.decode(in, {}, [&] { return in.date(serial(2029, 6, 1)); });
  }
  const int32_t reference = in.date(serial(2023, 12, 1));
  const int32_t settlement = in.date(serial(2024, 3, 1));
  const double market = in.real(function == 8 ? 62.5 : 0.055);
  int32_t frequency_value = 0, rule_value = 0, flags_value = 0, dated_value = 0, kind_value = 0,
          k_value = 0, step_value = 0, mode_value = 0;
  double tax_value = 0, scale_value = 0, reinvest_value = 0;
  const int32_t* frequency =
      in.optional(frequency_value, [&] { return in.code(2, {0, 1, 2, 3, 4, 6, 12, 5, 24, -2}); });
  const double* tax = in.optional(tax_value, [&] { return in.real(0.2); });
  const int32_t* rule =
      in.optional(rule_value, [&] { return in.code(0, {0, 1, -1, -2, -3, -4, -5, -6, 2, 7}); });
  const int32_t* flags = in.optional(flags_value, [&] { return in.code(0, {0, 1, 2, 3, 4, -1}); });
  Array<int32_t> holidays;
  holidays.decode(in, {}, [&] { return in.date(serial(2024, 6, 3)); });
  const int32_t* dated = in.optional(dated_value, [&] { return in.date(serial(2023, 9, 15)); });
  // The function's own arguments.
  const int32_t* kind = in.optional(kind_value, [&] { return in.code(1); });
  const double* scale = in.optional(scale_value, [&] { return in.real(100.0); });
  const int32_t* k = in.optional(k_value, [&] { return in.code(1, {0, 1, -1, 2, -2, 100, -100, INT32_MAX, INT32_MIN}); });
  const int32_t* step_date = in.optional(step_value, [&] { return in.date(serial(2023, 6, 1)); });
  const int32_t end_date = in.date(serial(2024, 6, 3));
  const double price = in.real(62.5);
  const double repo = in.real(0.04);
  const double forward_price = in.real(62.0);
  const double* reinvest = in.optional(reinvest_value, [&] { return in.real(0.03); });
  const int32_t* mode = in.optional(mode_value, [&] { return in.code(0, {0, 1, 2, 3, 4, 5, 6, 7}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

#define KBOND_PB_HEAD coupons.pointer, coupons.count, reference, settlement
#define KBOND_PB_STEPS steps.pointer, steps.count, type, frequency
#define KBOND_PB_DAYS flags, holidays.pointer, holidays.count, dated

  if (function == 0) {
    const int32_t date = KVLpbcpn(reference, settlement, k, step_date, type, frequency, error_out);
    Input::traced("result", date);
    Input::traced("error", error_out ? error : 0);
    if (!error_out) return 0;
    check(one_of(error, kDateErrors), "pbcpn: error code outside its set", date, error);
    if (error != 0) check(date == -1, "pbcpn: failure value", date, error);
    else check(valid_serial(date), "pbcpn: not a date on success", date, error);
    return 0;
  }

  double result = 0;
  const int32_t* codes = kPriceErrors;
  std::size_t n_codes = std::size(kPriceErrors);
  bool fails_with_999 = false;  // -999.0 is a failure value besides -1.0
  switch (function) {
    case 1:
      result = KVLpbpr(KBOND_PB_HEAD, market, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, error_out);
      break;
    case 2:
      result = KVLpbai(KBOND_PB_HEAD, KBOND_PB_STEPS, tax, KBOND_PB_DAYS, error_out);
      codes = kDateErrors;
      n_codes = std::size(kDateErrors);
      break;
    case 3:
      result = KVLpbdur(KBOND_PB_HEAD, market, KBOND_PB_STEPS, kind, tax, rule, KBOND_PB_DAYS,
                        error_out);
      break;
    case 4:
      result = KVLpbconv(KBOND_PB_HEAD, market, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, error_out);
      fails_with_999 = true;
      break;
    case 5:
    case 6:
      result = function == 5 ? KVLpbvalbp(KBOND_PB_HEAD, market, KBOND_PB_STEPS, tax, rule, scale,
                                          KBOND_PB_DAYS, error_out)
                             : KVLpbval32(KBOND_PB_HEAD, market, KBOND_PB_STEPS, tax, rule, scale,
                                          KBOND_PB_DAYS, error_out);
      codes = kValueErrors;
      n_codes = std::size(kValueErrors);
      fails_with_999 = true;
      break;
    case 7:
      result = KVLpbcamt(KBOND_PB_HEAD, KBOND_PB_STEPS, tax, error_out);
      codes = kDateErrors;
      n_codes = std::size(kDateErrors);
      break;
    case 8:
      result = KVLpbyld(KBOND_PB_HEAD, market, KBOND_PB_STEPS, tax, rule, KBOND_PB_DAYS, error_out);
      codes = kYieldErrors;
      n_codes = std::size(kYieldErrors);
      fails_with_999 = true;
      break;
    case 9:
      result = KVLpbcarry(KBOND_PB_HEAD, end_date, price, repo, KBOND_PB_STEPS, tax, rule,
                          KBOND_PB_DAYS, mode, error_out);
      codes = kCarryErrors;
      n_codes = std::size(kCarryErrors);
      fails_with_999 = true;
      break;
    case 10:
      result = KVLpbfwd(KBOND_PB_HEAD, end_date, price, repo, KBOND_PB_STEPS, tax, rule,
                        KBOND_PB_DAYS, reinvest, mode, error_out);
      codes = kCarryErrors;
      n_codes = std::size(kCarryErrors);
      fails_with_999 = true;
      break;
    default:
      result = KVLpbirepo(KBOND_PB_HEAD, price, forward_price, end_date, KBOND_PB_STEPS, tax, rule,
                          KBOND_PB_DAYS, reinvest, mode, error_out);
      codes = kCarryErrors;
      n_codes = std::size(kCarryErrors);
      fails_with_999 = true;
      break;
  }
  Input::traced("result", result);
  Input::traced("error", error_out ? error : 0);
  if (!error_out) return 0;
  check(std::find(codes, codes + n_codes, error) != codes + n_codes,
        "perpetual: error code outside its set", result, error);
  if (error == 0) {
    check_finite(result, error, "perpetual: not finite on success");
  } else if (function == 6) {
    // The tick value is 1 / (basis-point value x ticks): only a bad tick
    // size has a fixed failure value.
    if (error == 310) check(result == -999.0, "pbval32: failure value", result, error);
  } else {
    check(result == -1.0 || (fails_with_999 && result == -999.0), "perpetual: failure value",
          result, error);
  }
  return 0;
}
