// The common bond arguments of the straight-bond and carry exports, decoded
// around a 5 % bond maturing 15 November 2030 and settling 1 March 2024.
#pragma once

#include <algorithm>

#include "fuzz_input.h"

namespace kbond_fuzz {

// Bond type codes worth visiting: every market's base code and variant,
// custom codes, and codes that are not bond types.
inline constexpr int32_t kBondTypes[] = {
    0,   1,   2,   3,   4,   5,   6,   7,   8,   10,  11,  12,  13,  14,  15,  16,
    17,  20,  21,  22,  23,  30,  31,  40,  41,  50,  51,  60,  61,  70,  71,  80,
    81,  82,  90,  91,  100, 101, 110, 111, 120, 121, 130, 131, 140, 141, 150, 151,
    160, 161, 170, 180, 190, 200, 210, 220, 230, 240, 250, 260, 270, 280, 290, 300,
    310, 320, 330, 340, 350, 360, 370, 380, 390, 400, 410, 420, 430, 440, 450, 460,
    470, 480, 490, 500, 510, 520, 530, 540, 550, 600, 700, 800, 830, 831, 999, 1000,
    1001, 1050, 1099, 1100, -1};

struct BondArguments {
  Array<double> coupons;
  Array<int32_t> dates;
  int32_t settlement = serial(2024, 3, 1);
  int32_t dated_date_value = 0, first_coupon_value = 0, type_value = 0;
  const int32_t* dated_date = nullptr;
  const int32_t* first_coupon = nullptr;
  const int32_t* type = nullptr;
  Array<int32_t> frequency;
  double redemption_value = 0, coupon_tax_value = 0, discount_tax_value = 0, issue_price_value = 0;
  const double* redemption = nullptr;
  const double* coupon_tax = nullptr;
  const double* discount_tax = nullptr;
  const double* issue_price = nullptr;
  int32_t horizon_value = 0, yield_method_value = 0, bd_flags_value = 0, exdiv_value = 0;
  const int32_t* horizon = nullptr;
  const int32_t* yield_method = nullptr;
  const int32_t* bd_flags = nullptr;
  const int32_t* exdiv_days = nullptr;
  Array<int32_t> holidays;
  double factor_value = 0;
  const double* factor = nullptr;
  Array<int32_t> sink_dates;
  Array<int32_t> sink_ends;
  std::vector<double> sink_amounts_buffer;
  const double* sink_amounts = nullptr;
  double sink_premium_value = 0;
  const double* sink_premium = nullptr;

  // The type is decoded first so that a one-byte seed can pick a market.
  void decode_type(Input& in) {
    type_value = in.code(0, kBondTypes);
    type = (in.byte() % 4 == 3) ? nullptr : &type_value;
  }

  void decode(Input& in) {
    const int32_t maturity = serial(2030, 11, 15);
    coupons.decode(in, {0.05}, [&] { return in.real(0.05); });
    dates.decode(in, {maturity}, [&] { return in.date(maturity); });
    settlement = in.date(settlement);
    dated_date = in.optional(dated_date_value, [&] { return in.date(serial(2020, 11, 15)); });
    first_coupon = in.optional(first_coupon_value, [&] { return in.date(serial(2021, 5, 15)); });
    frequency.decode(in, {}, [&] { return in.code(2, {0, 1, 2, 3, 4, 6, 12, 5, 24, -2}); });
    redemption = in.optional(redemption_value, [&] { return in.real(100.0); });
    coupon_tax = in.optional(coupon_tax_value, [&] { return in.real(0.25); });
    discount_tax = in.optional(discount_tax_value, [&] { return in.real(0.1); });
    horizon = in.optional(horizon_value, [&] { return in.code(12, {0, 1, 24, 25, 30, 365, -1}); });
    issue_price = in.optional(issue_price_value, [&] { return in.real(98.0); });
    yield_method = in.optional(yield_method_value,
                               [&] { return in.code(-1, {-1, -2, -3, -4, -5, -6, -7, 1, 0}); });
    bd_flags = in.optional(bd_flags_value, [&] { return in.code(0, {0, 1, 2, 3, 4, -1}); });
    holidays.decode(in, {}, [&] { return in.date(serial(2024, 5, 15)); });
    exdiv_days = in.optional(exdiv_value, [&] { return in.code(7, {7, 1, 0, -7, -30, 30, 400}); });
    factor = in.optional(factor_value, [&] { return in.real(-1.0); });
    if (factor) {
      sink_dates.decode(in, {serial(2026, 11, 15)}, [&] { return in.date(serial(2027, 11, 15)); });
      sink_ends.decode(in, {}, [&] { return in.date(serial(2029, 11, 15)); });
      // One amount per amortisation date: as long as the dates' buffer and
      // as the count claims, so the amounts never lie about their length.
      const std::size_t amounts = std::max<std::size_t>(
          {sink_dates.buffer.size(), static_cast<std::size_t>(std::max(sink_dates.count, 0)), 1});
      sink_amounts_buffer.assign(amounts, 0.1);
      if (in.byte() % 2 == 1) sink_amounts_buffer[0] = in.real(0.1);
      sink_amounts = (in.byte() % 8 == 7) ? nullptr : sink_amounts_buffer.data();
      sink_premium = in.optional(sink_premium_value, [&] { return in.real(0.01); });
    }
  }
};

}  // namespace kbond_fuzz
