#include "frn/frn_type.h"

#include <cmath>

#include "frn/frn_registry.h"
#include "k_bond.h"

namespace kbond::frn {

int32_t check_frequency(int32_t frequency) noexcept {
  switch (frequency) {
    case 1: case 2: case 3: case 4: case 6: case 12: case 26: case 52:
      return 0;
    default:
      return KVL_ERR_FRN_FREQUENCY;
  }
}

int32_t check_day_count(int32_t day_count) noexcept {
  return day_count >= kFrnAct360 && day_count <= kFrnActPeriod ? 0 : KVL_ERR_FRN_DAYCOUNT;
}

int32_t check_business_day_rule(int32_t rule) noexcept {
  return rule >= 0 && rule <= 3 ? 0 : KVL_ERR_FRN_BDRULE;
}

int32_t check_end_of_month(int32_t flag) noexcept {
  return flag == 0 || flag == 1 ? 0 : KVL_ERR_FRN_EOM;
}

int32_t check_holiday_options(int32_t options) noexcept {
  return options >= 0 && options <= 2 ? 0 : KVL_ERR_FRN_HOLIDAY_OPT;
}

int32_t check_option_flag(int32_t flag) noexcept {
  return flag == 0 || flag == 1 ? 0 : KVL_ERR_FRN_OPTION;
}

int32_t check_year_length(double year_length) noexcept {
  return std::isfinite(year_length) && year_length >= 0.0 ? 0 : KVL_ERR_FRN_YEAR_LENGTH;
}

double default_year_length(int32_t day_count) noexcept {
  switch (day_count) {
    case kFrnAct360: case kFrnThirty360: case kFrnThirtyE360:
      return 360.0;
    case kFrnAct365:
      return 365.0;
    case kFrnActLeap: case kFrnActPeriod:
      return 365.25;
    default:
      return -1.0;
  }
}

namespace {

// Copies an override the caller gave after its check: 0 or the check's code.
template <class T>
int32_t checked_copy(const T* given, int32_t (*check)(T) noexcept, T& field) noexcept {
  if (!given) return 0;
  if (int32_t code = check(*given)) return code;
  field = *given;
  return 0;
}

}  // namespace

int32_t apply_overrides(FrnType& record, const FrnTypeOverrides& o) noexcept {
  int32_t code = 0;
  if ((code = checked_copy(o.frequency, check_frequency, record.frequency)) ||
      (code = checked_copy(o.day_count, check_day_count, record.day_count)) ||
      (code = checked_copy(o.business_day_rule, check_business_day_rule, record.business_day_rule)) ||
      (code = checked_copy(o.end_of_month, check_end_of_month, record.end_of_month))) {
    return code;
  }
  if (o.holiday_options) {
    if ((code = check_holiday_options(*o.holiday_options))) return code;
    record.holiday_option_a = *o.holiday_options & 1;
    record.holiday_option_b = *o.holiday_options & 2;
  }
  if ((code = checked_copy(o.option_flag, check_option_flag, record.option_flag)) ||
      (code = checked_copy(o.year_length, check_year_length, record.year_length))) {
    return code;
  }
  if (o.extra_accrual_days) record.extra_accrual_days = *o.extra_accrual_days;
  return 0;
}

int32_t create_frn_type(int32_t base, const FrnTypeOverrides& overrides, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  FrnType working;
  if (base != 0 && !registry_lookup(base, &working)) {
    err = KVL_ERR_FRN_HANDLE;
    return 0;
  }
  if ((err = apply_overrides(working, overrides))) return 0;
  const int32_t handle = registry_insert(working);
  if (handle == 0) err = KVL_ERR_NO_MEMORY;
  return handle;
}

}  // namespace kbond::frn
