// The price of a straight bond and its derivatives by the quoted yield.
//
// Yields are quoted at the type's quotation frequency q and priced at the
// coupon frequency f. When the two differ (and more than one period
// remains) the quoted yield y becomes y' = f ((1 + y/q)^(q/f) - 1), and the
// derivatives by y follow by the chain rule:
//
//   dy'/dy   = r = (1 + y'/f) / (1 + y/q)
//   d2y'/dy2 = (q - f) r / (f (q + y))
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {

struct YieldSensitivity {
  double price = 0.0;        // clean, per 100 of the description's face
  double first = 0.0;        // dP/dy' per unit of face
  double second = 0.0;       // d2P/dy'2 per unit of face (when asked)
  double ratio = 1.0;        // r, 1 when not converted
  bool converted = false;    // the quoted yield was re-expressed
  double quote_frequency = 0.0;  // q when converted, else f
  double dirty = 0.0;        // P x 0.01 + accrued (x price factor), per unit of face
};

// Fills `out` at quoted yield `yield`; error 1 for a non-finite yield or a
// failed conversion, or the price function's code.
int32_t yield_sensitivity(double yield, const engine::bond_desc& desc, bool want_second,
                          YieldSensitivity& out) noexcept;

}  // namespace kbond::engine
