#include "inflation/cashflow_columns.h"

#include <cstdlib>

#include "engine/cashflow_release.h"

namespace kbond::inflation {

void clear_cashflow_outputs(int32_t** dates_out, double** amounts_out) noexcept {
  if (dates_out != nullptr) *dates_out = nullptr;
  if (amounts_out != nullptr) *amounts_out = nullptr;
}

bool allocate_cashflow_columns(int32_t rows, bool want_dates, bool want_amounts,
                               CashflowColumns* columns) noexcept {
  *columns = CashflowColumns{};
  const auto n = static_cast<std::size_t>(rows);
  if (want_dates) columns->dates = static_cast<int32_t*>(std::malloc(n * sizeof(int32_t)));
  if (want_amounts) columns->amounts = static_cast<double*>(std::malloc(n * sizeof(double)));
  if ((want_dates && columns->dates == nullptr) || (want_amounts && columns->amounts == nullptr)) {
    engine::release_cashflow_columns(columns->dates, columns->amounts);
    *columns = CashflowColumns{};
    return false;
  }
  return true;
}

}  // namespace kbond::inflation
