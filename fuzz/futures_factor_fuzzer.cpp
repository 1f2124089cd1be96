// Bond futures conversion factors: KVLbfact1 and KVLbfact for every contract.
#include "fuzz_input.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kContracts[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 15, 16,
                                  17, 18, 20, 22, 25, 26, 31, 32, 33, 34, 35, 36, 37, 40,
                                  41, 42, 45, 46, 47, 50, 51, 55, 60, 61, 70, 71, 12, 99, -1};
constexpr int32_t kErrors[] = {0, 1, 150, 160, 900, 910, 920};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  const bool extended = in.byte() % 2 == 0;
  int32_t contract_value = in.code(0, kContracts);
  const int32_t* contract = (in.byte() % 8 == 7) ? nullptr : &contract_value;
  // A bond comfortably inside most contracts' deliverable ranges: 6 % of
  // 15 August 2033, for a June 2024 delivery.
  const double coupon = in.real(0.06);
  const int32_t maturity = in.date(serial(2033, 8, 15));
  const int32_t delivery = in.date(serial(2024, 6, 1));
  Array<int32_t> holidays;
  holidays.decode(in, {}, [&] { return in.date(serial(2024, 6, 10)); });
  int32_t weekend = 0, adjust = 0, extra = 0, dated = 0, first = 0, check_value = 1;
  double notional_value = 0;
  const int32_t* weekend_flag = in.optional(weekend, [&] { return in.code(1); });
  const int32_t* adjust_flag = in.optional(adjust, [&] { return in.code(1); });
  const int32_t* extra_option = in.optional(extra, [&] { return in.code(7, {7, 0, 1, -7, 30}); });
  const int32_t* dated_date = in.optional(dated, [&] { return in.date(serial(2023, 8, 15)); });
  const int32_t* first_coupon = in.optional(first, [&] { return in.date(serial(2024, 2, 15)); });
  const double* notional = in.optional(notional_value, [&] { return in.real(0.06); });
  const int32_t* eligibility = in.optional(check_value, [&] { return in.code(0, {0, 1, -1}); });
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;

  const double factor =
      extended ? KVLbfact1(coupon, maturity, delivery, contract, holidays.pointer, holidays.count,
                           weekend_flag, adjust_flag, extra_option, dated_date, first_coupon,
                           notional, eligibility, error_out)
               : KVLbfact(coupon, maturity, delivery, contract, holidays.pointer, holidays.count,
                          weekend_flag, adjust_flag, extra_option, dated_date, first_coupon,
                          error_out);
  if (!error_out) return 0;
  check(one_of(error, kErrors), "factor: error code outside its set", factor, error);
  if (error != 0) check(factor == -1.0, "factor: failure value", factor, error);
  else check_finite(factor, error, "factor: not finite on success");
  return 0;
}
