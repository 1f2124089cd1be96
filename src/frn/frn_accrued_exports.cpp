// KVLfrnai, KVLtfrnai: accrued interest; KVLfrncamt, KVLtfrncamt: the coupon
// of the current period. Both per 100 of par.
#include "k_bond.h"

#include "frn/frn_note_call.h"
#include "frn/frn_rate_schedule.h"

using kbond::frn::FrnSchedule;
using kbond::frn::NoteCall;

extern "C" {

KVL_EXPORT double KVL_API KVLtfrnai(int32_t type, const double* rates, const int32_t* rate_dates,
                                    int32_t rate_count, int32_t maturity, int32_t settlement,
                                    const int32_t* previous_coupon, const int32_t* coupon_dates,
                                    int32_t coupon_count, const int32_t* day_count,
                                    const int32_t* frequency, const int32_t* adjustment_code,
                                    const int32_t* holiday_options, const int32_t* holidays,
                                    int32_t holiday_count, int32_t* error) {
  const NoteCall call{type, {rates, rate_dates, rate_count}, maturity, settlement, previous_coupon,
                      coupon_dates, coupon_count, day_count, frequency, nullptr, adjustment_code,
                      holiday_options, holidays, holiday_count};
  return kbond::frn::run_note_call(call, error, -1.0, [&](const FrnSchedule& s, int32_t&) {
    return kbond::frn::frn_accrued(call.rates, s) * 100.0;
  });
}

KVL_EXPORT double KVL_API KVLfrnai(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                   int32_t maturity, int32_t settlement, const int32_t* previous_coupon,
                                   const int32_t* coupon_dates, int32_t coupon_count,
                                   const int32_t* day_count, const int32_t* frequency,
                                   const int32_t* adjustment_code, const int32_t* holiday_options,
                                   const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  return KVLtfrnai(0, rates, rate_dates, rate_count, maturity, settlement, previous_coupon,
                   coupon_dates, coupon_count, day_count, frequency, adjustment_code,
                   holiday_options, holidays, holiday_count, error);
}

KVL_EXPORT double KVL_API KVLtfrncamt(int32_t type, const double* rates, const int32_t* rate_dates,
                                      int32_t rate_count, int32_t maturity, int32_t settlement,
                                      const int32_t* previous_coupon, const int32_t* next_coupon,
                                      const int32_t* day_count, const int32_t* frequency,
                                      const int32_t* adjustment_code, const int32_t* holiday_options,
                                      const int32_t* holidays, int32_t holiday_count, int32_t* error) {
  const NoteCall call{type, {rates, rate_dates, rate_count}, maturity, settlement, previous_coupon,
                      next_coupon, next_coupon ? 1 : 0, day_count, frequency, nullptr, adjustment_code,
                      holiday_options, holidays, holiday_count};
  return kbond::frn::run_note_call(call, error, -1.0, [&](const FrnSchedule& s, int32_t&) {
    return kbond::frn::frn_period_coupon(call.rates, *s.type, s.previous_coupon, s.next_coupon) * 100.0;
  });
}

KVL_EXPORT double KVL_API KVLfrncamt(const double* rates, const int32_t* rate_dates, int32_t rate_count,
                                     int32_t maturity, int32_t settlement, const int32_t* previous_coupon,
                                     const int32_t* next_coupon, const int32_t* day_count,
                                     const int32_t* frequency, const int32_t* adjustment_code,
                                     const int32_t* holiday_options, const int32_t* holidays,
                                     int32_t holiday_count, int32_t* error) {
  return KVLtfrncamt(0, rates, rate_dates, rate_count, maturity, settlement, previous_coupon,
                     next_coupon, day_count, frequency, adjustment_code, holiday_options, holidays,
                     holiday_count, error);
}

}  // extern "C"
