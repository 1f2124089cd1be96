// Accrued interest per 100 of face as the market quotes it.
#pragma once

#include "engine/bond_desc.h"

namespace kbond::bond {

// The description's accrued interest per 100, rounded where the bond's
// market rounds it (KVLbai1's result).
double quoted_accrued(const engine::bond_desc& bond) noexcept;

}  // namespace kbond::bond
