// PIK bonds: every KVLpik... export, on an 8 % cash / 4 % in-kind bond
// maturing 15 June 2030, or on one whose rates step in 2026 and 2028 (a
// stepped cash rate with one in-kind rate, or the other way round).
#include "cashflow_check.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kTypes[] = {0, 3, 13, 500, 501, 510, 511, 530, 540, 541, 1, 2, 40, 60, 200,
                              1000, 1099, -1, 999};
constexpr int32_t kPriceErrors[] = {0, 1, 401, -60};
constexpr int32_t kYieldErrors[] = {0, 1, 460, -60};
constexpr int32_t kAccruedErrors[] = {0, 1, -60};
constexpr int32_t kTableErrors[] = {1, -50, -60};
constexpr int32_t kValueErrors[] = {0, 1, 310, 401, -60};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const int function = in.byte() % 7;
  int32_t type_value = in.code(0, kTypes);
  const int32_t* type = (in.byte() % 4 == 3) ? nullptr : &type_value;

  Array<double> cash, pik;
  Array<int32_t> dates;
  const int32_t maturity = serial(2030, 6, 15);
  switch (in.byte() % 3) {
    case 1:  // stepped cash rates, one in-kind rate
      cash.decode(in, {0.06, 0.07, 0.08}, [&] { return in.real(0.07); });
      pik.decode(in, {0.04}, [&] { return in.real(0.04); });
      break;
    case 2:  // one cash rate, stepped in-kind rates
      cash.decode(in, {0.05}, [&] { return in.real(0.05); });
      pik.decode(in, {0.06, 0.04, 0.0}, [&] { return in.real(0.04); });
      break;
    default:
      cash.decode(in, {0.08}, [&] { return in.real(0.08); });
      pik.decode(in, {0.04}, [&] { return in.real(0.04); });
      break;
  }
  const bool single = cash.buffer.size() <= 1 && pik.buffer.size() <= 1;
  dates.decode(in,
               single ? std::vector<int32_t>{maturity}
                      : std::vector<int32_t>{serial(2026, 6, 15), serial(2028, 6, 15), maturity},
               [&] { return in.date(maturity); });
  const int32_t settlement = in.date(serial(2024, 3, 1));
  const double market = in.real(function == 1 ? 97.0 : 0.09);
  int32_t dated_value = 0, first_value = 0, frequency_value = 0, call_value = 0, pay_value = 0,
          options_value = 0, kind_value = 0;
  double redemption_value = 0, scale_value = 0;
  const int32_t* dated = in.optional(dated_value, [&] { return in.date(serial(2023, 6, 15)); });
  const int32_t* first = in.optional(first_value, [&] { return in.date(serial(2023, 12, 15)); });
  const int32_t* frequency =
      in.optional(frequency_value, [&] { return in.code(2, {0, 1, 2, 3, 4, 6, 12, 5, 24, -2}); });
  const double* redemption = in.optional(redemption_value, [&] { return in.real(100.0); });
  const int32_t* call = in.optional(call_value, [&] { return in.date(serial(2028, 6, 15)); });
  const int32_t* pay = in.optional(pay_value, [&] { return in.code(1, {0, 1, 2, -1}); });
  const int32_t* options = in.optional(options_value, [&] { return in.code(0, {0, 1, 2, 3, 4}); });
  Array<int32_t> holidays;
  holidays.decode(in, {}, [&] { return in.date(serial(2024, 6, 17)); });
  const int32_t* kind = in.optional(kind_value, [&] { return in.code(1); });
  const double* scale = in.optional(scale_value, [&] { return in.real(100.0); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;
  const uint8_t outputs = in.byte();

#define KBOND_PIK_HEAD cash.pointer, cash.count, pik.pointer, pik.count, dates.pointer, dates.count, settlement
#define KBOND_PIK_DAYS pay, options, holidays.pointer, holidays.count, error_out

  if (function == 3) {
    int32_t* row_dates = nullptr;
    double *coupons = nullptr, *principal = nullptr, *periods = nullptr;
    const bool want[4] = {(outputs & 1) == 0, (outputs & 2) == 0, (outputs & 4) == 0,
                          (outputs & 8) == 0};
    const int32_t rows = KVLpikcshflw(want[0] ? &row_dates : nullptr, want[1] ? &coupons : nullptr,
                                      want[2] ? &principal : nullptr, want[3] ? &periods : nullptr,
                                      KBOND_PIK_HEAD, dated, first, type, frequency, redemption, call,
                                      KBOND_PIK_DAYS);
    const int32_t code = error_out ? error : 0;
    Input::traced("rows", rows);
    Input::traced("error", code);
    check_cashflows(rows, row_dates, coupons, want[0], want[1], error_out, kTableErrors);
    if (rows == 0) {
      check(!principal && !periods, "pik cash flows: columns left after a failure", rows, code);
    } else {
      check(!want[2] || principal, "pik cash flows: principal column missing", rows, code);
      check(!want[3] || periods, "pik cash flows: periods column missing", rows, code);
      for (int32_t i = 0; i < rows; ++i) {
        if (principal) check_finite(principal[i], code, "pik cash flows: principal not finite");
        if (periods) check_finite(periods[i], code, "pik cash flows: period not finite");
      }
    }
    KVLpikcshflw_free(row_dates, coupons, principal, periods);
    return 0;
  }

  double result = 0;
  switch (function) {
    case 0:
      result = KVLpikpr(KBOND_PIK_HEAD, market, dated, first, type, frequency, redemption, call,
                        KBOND_PIK_DAYS);
      break;
    case 1:
      result = KVLpikyld(KBOND_PIK_HEAD, market, dated, first, type, frequency, redemption, call,
                         KBOND_PIK_DAYS);
      break;
    case 2:
      result = KVLpikai(KBOND_PIK_HEAD, dated, first, type, frequency, error_out);
      break;
    case 4:
      result = KVLpikdur(KBOND_PIK_HEAD, market, dated, first, type, frequency, redemption, kind,
                         call, KBOND_PIK_DAYS);
      break;
    case 5:
      result = KVLpikvalbp(KBOND_PIK_HEAD, market, dated, first, type, frequency, redemption, call,
                           scale, KBOND_PIK_DAYS);
      break;
    default:
      result = KVLpikval32(KBOND_PIK_HEAD, market, dated, first, type, frequency, redemption, call,
                           scale, KBOND_PIK_DAYS);
      break;
  }
  Input::traced("result", result);
  Input::traced("error", error_out ? error : 0);
  if (!error_out) return 0;
  switch (function) {
    case 0:
      check(one_of(error, kPriceErrors), "pikpr: error code outside its set", result, error);
      if (error != 0)
        check(result == (error == 401 ? -100.0 : -1.0), "pikpr: failure value", result, error);
      break;
    case 1:
      check(one_of(error, kYieldErrors), "pikyld: error code outside its set", result, error);
      if (error != 0) check(result == -1.0 || result == -999.0, "pikyld: failure value", result, error);
      break;
    case 2:
      check(one_of(error, kAccruedErrors), "pikai: error code outside its set", result, error);
      if (error != 0) check(result == -1.0, "pikai: failure value", result, error);
      break;
    case 4:
      check(one_of(error, kPriceErrors), "pikdur: error code outside its set", result, error);
      if (error != 0) check(result == -1.0, "pikdur: failure value", result, error);
      break;
    case 5:
      check(one_of(error, kValueErrors), "pikvalbp: error code outside its set", result, error);
      if (error != 0)
        check(result == (error == 1 ? -1.0 : -999.0), "pikvalbp: failure value", result, error);
      break;
    default:
      // 1 / (basis-point value x ticks): only a bad tick size has a fixed
      // failure value.
      check(one_of(error, kValueErrors), "pikval32: error code outside its set", result, error);
      if (error == 310) check(result == -999.0, "pikval32: failure value", result, error);
      break;
  }
  if (error == 0) check_finite(result, error, "pik: not finite on success");
  return 0;
}
