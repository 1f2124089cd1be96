// User-customised bond types, codes 1000..1099. Their conventions live in a
// process-wide table of 100 slots that the catalogue consults for every code
// in that range. Analytic calls read a slot only while holding the type lock
// as readers (type_lock.h); KVLbcustom writes it holding the lock as writer.
#pragma once
#include <cstdint>

namespace kbond::engine {

inline constexpr int32_t kFirstCustomCode = 1000;
inline constexpr int32_t kLastCustomCode = 1099;

struct CustomType {
  const char* name = nullptr;  // "User-customized bond"; null marks an empty slot
  int32_t accrual_basis = 0;
  int32_t exdiv_basis = 0;
  int32_t eom = 0;
  int32_t frequency = 0;
  int32_t yield_frequency = 0;
  int32_t simple_final = 0;
  int32_t yield_method = 0;
  int32_t accrual_days = 0;
  int32_t canadian_cap = 0;
  int32_t mm_basis = 0;
  int32_t exdiv_days = 0;
};

inline bool is_custom_code(int32_t code) noexcept {
  return code >= kFirstCustomCode && code <= kLastCustomCode;
}

inline constexpr const char kCustomTypeName[] = "User-customized bond";

// The slot of a defined custom code, or null (out of range or empty).
const CustomType* custom_type(int32_t code) noexcept;

// The arguments of KVLbcustom; a null pointer selects the field's default.
struct CustomTypeInput {
  const int32_t* accrual_basis = nullptr;
  const int32_t* exdiv_basis = nullptr;
  const int32_t* eom = nullptr;
  const int32_t* frequency = nullptr;
  const int32_t* simple_final = nullptr;
  const int32_t* yield_method = nullptr;
  const int32_t* accrual_days = nullptr;
  const int32_t* canadian_cap = nullptr;
  const int32_t* mm_basis = nullptr;
  const int32_t* exdiv_days = nullptr;
  const int32_t* yield_frequency = nullptr;
};

// Defines or redefines custom type `code` under the writer lock. Returns the
// code, or -1 when the code is outside 1000..1099, the lock cannot be had, or
// an argument lies outside its set. A refused argument leaves its field as it
// was while every other field is still written and the slot becomes defined.
int32_t define_custom_type(int32_t code, const CustomTypeInput& input) noexcept;

}  // namespace kbond::engine
