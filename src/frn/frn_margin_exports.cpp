// KVLfrnsm, KVLtfrnsm, KVLfrndm, KVLtfrndm: simple and discount margins.
#include "k_bond.h"

#include "frn/frn_margin_call.h"
#include "frn/frn_margins.h"

using kbond::frn::MarginCall;
using kbond::frn::MarginMarket;

namespace {

// The simple margin runs in the discount margin's frame, with no rate for
// a short first period.
double margin(bool discount, int32_t type, int32_t maturity, int32_t settlement, double current_coupon,
              double price, double stub_rate, double index_rate, double quoted_margin,
              const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count,
              const int32_t* frequency, const int32_t* end_of_month, int32_t* error) noexcept {
  const MarginCall call{type,        maturity,  settlement, previous_coupon,
                        next_coupon, day_count, frequency,  end_of_month};
  const MarginMarket market{current_coupon, price, stub_rate, index_rate, quoted_margin};
  return kbond::frn::run_margin_call(call, error, [&](const kbond::frn::FrnSchedule& s, int32_t& e) {
    if ((e = kbond::frn::check_margin_inputs(price, {current_coupon, stub_rate, index_rate, quoted_margin}))) {
      return -1.0;
    }
    return discount ? kbond::frn::discount_margin(s, market, e) : kbond::frn::simple_margin(s, market, e);
  });
}

}  // namespace

extern "C" {

KVL_EXPORT double KVL_API KVLtfrnsm(int32_t type, int32_t maturity, int32_t settlement,
                                    double current_coupon, double price, double index_rate,
                                    double quoted_margin, const int32_t* previous_coupon,
                                    const int32_t* next_coupon, const int32_t* day_count,
                                    const int32_t* frequency, const int32_t* end_of_month,
                                    int32_t* error) {
  return margin(false, type, maturity, settlement, current_coupon, price, 0.0, index_rate, quoted_margin,
                previous_coupon, next_coupon, day_count, frequency, end_of_month, error);
}

KVL_EXPORT double KVL_API KVLfrnsm(int32_t maturity, int32_t settlement, double current_coupon,
                                   double price, double index_rate, double quoted_margin,
                                   const int32_t* previous_coupon, const int32_t* next_coupon,
                                   const int32_t* day_count, const int32_t* frequency,
                                   const int32_t* end_of_month, int32_t* error) {
  return KVLtfrnsm(0, maturity, settlement, current_coupon, price, index_rate, quoted_margin,
                   previous_coupon, next_coupon, day_count, frequency, end_of_month, error);
}

KVL_EXPORT double KVL_API KVLtfrndm(int32_t type, int32_t maturity, int32_t settlement,
                                    double current_coupon, double price, double stub_rate,
                                    double index_rate, double quoted_margin,
                                    const int32_t* previous_coupon, const int32_t* next_coupon,
                                    const int32_t* day_count, const int32_t* frequency,
                                    const int32_t* end_of_month, int32_t* error) {
  return margin(true, type, maturity, settlement, current_coupon, price, stub_rate, index_rate,
                quoted_margin, previous_coupon, next_coupon, day_count, frequency, end_of_month, error);
}

KVL_EXPORT double KVL_API KVLfrndm(int32_t maturity, int32_t settlement, double current_coupon,
                                   double price, double stub_rate, double index_rate,
                                   double quoted_margin, const int32_t* previous_coupon,
                                   const int32_t* next_coupon, const int32_t* day_count,
                                   const int32_t* frequency, const int32_t* end_of_month,
                                   int32_t* error) {
  return KVLtfrndm(0, maturity, settlement, current_coupon, price, stub_rate, index_rate,
                   quoted_margin, previous_coupon, next_coupon, day_count, frequency, end_of_month,
                   error);
}

}  // extern "C"
