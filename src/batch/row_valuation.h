// One row of a portfolio valuation, valued by the single-bond exports.
#pragma once
#include <cstdint>

#include "batch/batch_request.h"

namespace kbond::batch {

// Values row i and writes its measures, its error code and the measure that
// failed. Returns the row's error code (0 on success).
int32_t value_row(const BatchRequest& request, int64_t i) noexcept;

}  // namespace kbond::batch
