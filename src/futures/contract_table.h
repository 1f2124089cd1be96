// The futures contract codes callers pass to the conversion-factor exports.
// Each code names a rule family (the routine that knows an exchange's factor
// rule) and a contract rule within it (which contract of that exchange).
#pragma once
#include <cstdint>

namespace kbond::futures {

struct ContractEntry {
  int32_t code;
  int32_t family;
  int32_t rule;
};

// The entry for `code`, or null when the code is unknown.
const ContractEntry* find_contract(int32_t code) noexcept;

}  // namespace kbond::futures
