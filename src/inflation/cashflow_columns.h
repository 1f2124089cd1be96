// The two cash-flow columns (payment dates, amounts per 100) that the
// inflation-linked families hand to their callers. They are allocated with
// malloc and given back through the family's ..._free export. An out pointer
// that is NULL means the caller does not want that column.
#pragma once
#include <cmath>
#include <cstdint>

#include "k_bond.h"

namespace kbond::inflation {

struct CashflowColumns {
  int32_t* dates = nullptr;
  double* amounts = nullptr;
};

// Sets the given out pointers to NULL.
void clear_cashflow_outputs(int32_t** dates_out, double** amounts_out) noexcept;

// Allocates the wanted columns of `rows` rows; false (nothing allocated) when
// memory is not available.
bool allocate_cashflow_columns(int32_t rows, bool want_dates, bool want_amounts,
                               CashflowColumns* columns) noexcept;

// Writes the rows of a flow walk into the wanted columns, amounts per 100.
// `visit(on_flow)` calls on_flow(date, amount, periods) per row and returns
// the redemption factor, which is added to the last row when
// `redemption_in_last_row`; `*redemption` receives it per 100. The rows are
// counted and checked first: error 1 when an amount overflows (inflation
// projected over millennia, a tiny base index), KVL_ERR_NO_MEMORY when the
// columns cannot be allocated; 0 rows and nothing held on failure.
template <class Visit>
int32_t write_flow_columns(const Visit& visit, bool redemption_in_last_row, int32_t** dates_out,
                           double** amounts_out, double* redemption, int32_t& err) noexcept {
  int32_t rows = 0;
  bool finite = true;
  const double factor = visit([&](int32_t, double amount, double) {
    finite = finite && std::isfinite(amount * 100.0);
    ++rows;
  });
  if (!finite || !std::isfinite(factor * 100.0)) {
    err = KVL_ERR_INVALID;
    return 0;
  }
  CashflowColumns columns;
  if (!allocate_cashflow_columns(rows, dates_out != nullptr, amounts_out != nullptr, &columns)) {
    err = KVL_ERR_NO_MEMORY;
    return 0;
  }
  int32_t row = 0;
  visit([&](int32_t date, double amount, double) {
    if (columns.dates != nullptr) columns.dates[row] = date;
    if (columns.amounts != nullptr) columns.amounts[row] = amount * 100.0;
    ++row;
  });
  if (redemption_in_last_row && columns.amounts != nullptr) columns.amounts[rows - 1] += factor * 100.0;
  if (dates_out != nullptr) *dates_out = columns.dates;
  if (amounts_out != nullptr) *amounts_out = columns.amounts;
  *redemption = factor * 100.0;
  err = 0;
  return rows;
}

}  // namespace kbond::inflation
