// The process-wide table of user-customised bond types and KVLbcustom's
// update of one slot.
#include "engine/custom_types.h"

#include "engine/setup_steps.h"
#include "engine/type_lock.h"

namespace kbond::engine {
namespace {

constexpr int32_t kSlots = kLastCustomCode - kFirstCustomCode + 1;

// Zero-initialised at load: every slot starts empty (null name).
CustomType g_slots[kSlots];

// Day counts a custom type may name. 7 and 8 are refused: 7 arises by itself
// from 1 when the end-of-month rule is on.
bool valid_day_count(int32_t code) noexcept {
  return (code >= 0 && code <= 6) || (code >= 9 && code <= 13);
}

bool valid_yield_frequency(int32_t f) noexcept { return f == 0 || valid_frequency(f); }

// Writes one field: the default when the argument is absent, the argument
// when it passes `valid`, otherwise leaves the field and marks the failure.
template <typename Valid>
void set_field(int32_t& field, const int32_t* arg, int32_t fallback, Valid valid, bool& ok) noexcept {
  if (!arg) {
    field = fallback;
  } else if (valid(*arg)) {
    field = *arg;
  } else {
    ok = false;
  }
}

bool any_value(int32_t) noexcept { return true; }

}  // namespace

const CustomType* custom_type(int32_t code) noexcept {
  if (!is_custom_code(code)) return nullptr;
  const CustomType& slot = g_slots[code - kFirstCustomCode];
  return slot.name ? &slot : nullptr;
}

int32_t define_custom_type(int32_t code, const CustomTypeInput& in) noexcept {
  if (!is_custom_code(code)) return -1;
  const int lock = writer_lock();
  if (lock < 0) return -1;

  CustomType& slot = g_slots[code - kFirstCustomCode];
  bool ok = true;
  set_field(slot.accrual_basis, in.accrual_basis, 0, valid_day_count, ok);
  // Without its own argument the ex-dividend day count follows the accrual
  // field (as it now stands, so a refused accrual code is not copied).
  set_field(slot.exdiv_basis, in.exdiv_basis, in.accrual_basis ? slot.accrual_basis : 0,
            valid_day_count, ok);
  set_field(slot.eom, in.eom, 1, any_value, ok);
  set_field(slot.frequency, in.frequency, 2, valid_frequency, ok);
  set_field(slot.simple_final, in.simple_final, 1, any_value, ok);
  set_field(slot.yield_method, in.yield_method, 0, [](int32_t m) { return m >= 0 && m <= 4; }, ok);
  set_field(slot.accrual_days, in.accrual_days, 0, any_value, ok);
  set_field(slot.canadian_cap, in.canadian_cap, 0, any_value, ok);
  set_field(slot.mm_basis, in.mm_basis, 360, [](int32_t b) { return b >= 1; }, ok);
  set_field(slot.exdiv_days, in.exdiv_days, 0, any_value, ok);
  set_field(slot.yield_frequency, in.yield_frequency, 0, valid_yield_frequency, ok);
  slot.name = kCustomTypeName;

  if (lock == 1) writer_unlock();
  return ok ? code : -1;
}

}  // namespace kbond::engine
