#include "frn/frn_tax.h"

#include <cmath>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "k_bond.h"

namespace kbond::frn {

int32_t build_frn_tax(int32_t settlement, int32_t maturity, const double* income_tax,
                      const double* gain_tax, const int32_t* holding, FrnTax* tax) noexcept {
  const double income = income_tax ? *income_tax : 0.0;
  const double gain = gain_tax ? *gain_tax : 0.0;
  if (!std::isfinite(income) || income < 0.0 || !std::isfinite(gain) || gain < 0.0)
    return KVL_ERR_BAD_RATE;
  const int32_t months_or_days = holding ? *holding : 12;
  if (months_or_days < 0) return KVL_ERR_OUT_OF_SET;
  // More than 24 is a number of days; a holding beyond the last serial ends
  // on it (the sum is formed in 64 bits: the caller's count may be huge).
  int32_t holding_end = 0;
  if (months_or_days > 24) {
    const int64_t end = static_cast<int64_t>(settlement) + months_or_days;
    holding_end = end > dates::kMaxSerial ? dates::kMaxSerial : static_cast<int32_t>(end);
  } else {
    holding_end = dates::add_months(settlement, months_or_days, 0);
  }
  tax->income_keep = 1.0 - income;
  tax->gain_rate = maturity < holding_end && gain > 0.0 ? income : gain;
  return 0;
}

}  // namespace kbond::frn
