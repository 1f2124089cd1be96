// Library error codes as sentences a user can act on.
#pragma once

#include <cstdint>

namespace kbond::cli {

// The sentence for an error code ("the bond description is invalid ...");
// unknown codes get a generic sentence, never an empty one.
const char* error_sentence(int32_t code);

// The header constant for a code ("KVL_ERR_INVALID"), or "unknown".
const char* error_constant(int32_t code);

}  // namespace kbond::cli
