// Release of the cash-flow columns the library hands to its callers.
//
// Cash-flow tables leave the library as parallel columns allocated with
// malloc (a column of payment dates and a column of amounts). The caller
// gives them back through the family's ..._free export, which ends here, so
// that memory allocated by the library's heap is also freed by it.
#pragma once
#include <cstdint>

namespace kbond::engine {

// Frees both columns; either pointer may be NULL.
void release_cashflow_columns(int32_t* dates, double* amounts) noexcept;

}  // namespace kbond::engine
