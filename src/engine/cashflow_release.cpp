#include "engine/cashflow_release.h"

#include <cstdlib>

namespace kbond::engine {

void release_cashflow_columns(int32_t* dates, double* amounts) noexcept {
  std::free(dates);
  std::free(amounts);
}

}  // namespace kbond::engine
