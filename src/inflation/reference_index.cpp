#include "inflation/reference_index.h"

#include "dates/date_serial.h"
#include "k_bond.h"

namespace kbond::inflation {

int32_t index_days_in_month(int32_t month, int32_t year, int32_t* error) noexcept {
  if (year < 200) year += 1900;
  if (year < 1900) {
    *error = KVL_ERR_BAD_YEAR;
    return 0;
  }
  if (month < 1 || month > 12) {
    *error = KVL_ERR_BAD_MONTH;
    return 0;
  }
  return dates::days_in_month(month, year);
}

double reference_index_at(int32_t date, const double* values, int32_t count, int32_t* error) noexcept {
  *error = 0;
  if (values == nullptr || count < 1 || count > 2 || !(values[0] > 0.0)) {
    *error = KVL_ERR_INVALID;
    return 0.0;
  }
  if (count == 1) return values[0];
  if (!(values[1] > 0.0)) {
    *error = KVL_ERR_INVALID;
    return 0.0;
  }
  int32_t day = 0, month = 0, year = 0;
  if (dates::serial_to_date(date, &day, &month, &year) != 0) {
    *error = KVL_ERR_INVALID;
    return 0.0;
  }
  const int32_t month_days = index_days_in_month(month, year, error);
  if (*error != 0) return 0.0;
  return values[0] + static_cast<double>(day - 1) / month_days * (values[1] - values[0]);
}

double index_ratio(double settlement_reference, double base_reference) noexcept {
  return settlement_reference / base_reference;
}

}  // namespace kbond::inflation
