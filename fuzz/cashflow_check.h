// The cash-flow invariant shared by the table exports: on failure no rows and
// nothing allocated; on success every requested column present, dates
// valid, amounts finite.
#pragma once

#include "fuzz_input.h"

namespace kbond_fuzz {

template <std::size_t N>
void check_cashflows(int32_t rows, const int32_t* dates, const double* amounts, bool want_dates,
                     bool want_amounts, const int32_t* error, const int32_t (&codes)[N]) {
  const int32_t code = error ? *error : 0;
  check(rows >= 0, "cash flows: negative row count", rows, code);
  if (rows == 0) {
    check(!dates && !amounts, "cash flows: something allocated without rows", rows, code);
    if (error) check(*error != 0 && one_of(*error, codes), "cash flows: failure code", rows, code);
    return;
  }
  if (error) check(*error == 0, "cash flows: rows with an error", rows, code);
  check(!want_dates || dates, "cash flows: dates column missing", rows, code);
  check(!want_amounts || amounts, "cash flows: amounts column missing", rows, code);
  for (int32_t i = 0; i < rows; ++i) {
    if (dates) check(valid_serial(dates[i]) && (i == 0 || dates[i] >= dates[i - 1]), "cash flows: dates", dates[i], code);
    if (amounts) check_finite(amounts[i], code, "cash flows: amount not finite");
  }
}

}  // namespace kbond_fuzz
