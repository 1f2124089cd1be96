// The two cash-flow columns (payment dates, amounts per 100) that the
// inflation-linked families hand to their callers. They are allocated with
// malloc and given back through the family's ..._free export. An out pointer
// that is NULL means the caller does not want that column.
#pragma once
#include <cstdint>

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

}  // namespace kbond::inflation
