// KVLfrntype and KVLfreefrntype: registering and releasing FRN types.
#include "k_bond.h"

#include "frn/frn_registry.h"
#include "frn/frn_type.h"

extern "C" {

KVL_EXPORT int32_t KVL_API KVLfrntype(int32_t base, const int32_t* frequency, const int32_t* day_count,
                                      const int32_t* business_day_rule, const int32_t* end_of_month,
                                      const int32_t* holiday_options, const int32_t* option_flag,
                                      const double* year_length, const int32_t* extra_accrual_days,
                                      int32_t reserved1, int32_t reserved2, int32_t reserved3,
                                      int32_t reserved4, int32_t reserved5, int32_t reserved6,
                                      int32_t* error) {
  (void)reserved1, (void)reserved2, (void)reserved3, (void)reserved4, (void)reserved5, (void)reserved6;
  kbond::frn::FrnTypeOverrides overrides;
  overrides.frequency = frequency;
  overrides.day_count = day_count;
  overrides.business_day_rule = business_day_rule;
  overrides.end_of_month = end_of_month;
  overrides.holiday_options = holiday_options;
  overrides.option_flag = option_flag;
  overrides.year_length = year_length;
  overrides.extra_accrual_days = extra_accrual_days;
  return kbond::frn::create_frn_type(base, overrides, error);
}

KVL_EXPORT int32_t KVL_API KVLfreefrntype(int32_t handle) {
  kbond::frn::registry_remove(handle);
  return 0;
}

}  // extern "C"
