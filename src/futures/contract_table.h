// The futures contracts callers name by code in the conversion-factor
// exports, one row each: the exchange's contract, the routine that computes
// its factor, how the factor is rounded, what a notional override may be,
// and the terms of its basket (notional coupon, deliverable range, the
// conventions the deliverable bond is priced under) as they changed over
// the years.
#pragma once
#include <array>
#include <cstdint>
#include <limits>

namespace kbond::futures {

struct Contract;
struct FactorRequest;

// Computes the factor of `req` under `contract`, unrounded; sets *error
// (150, 160, 910 or the price function's code) on failure.
using FactorRoutine = double (*)(const FactorRequest& req, const Contract& contract,
                                 int32_t* error) noexcept;

inline constexpr double kUnbounded = std::numeric_limits<double>::infinity();
// The routine does not price a bond: its exchange's closed form applies.
inline constexpr int32_t kClosedForm = -1;

// Deliverable time to maturity, both bounds inclusive, in the unit the
// contract's routine measures (years; months or quarters where stated).
struct Basket {
  double low = 1.0, high = 0.0;  // empty unless given
  bool holds(double t) const noexcept { return t >= low && t <= high; }
};

// The terms of a contract from a delivery date on.
struct ContractTerms {
  int32_t from = std::numeric_limits<int32_t>::max();  // first delivery date (serial)
  double notional = 0.0;          // notional coupon, decimal
  Basket basket{};                // deliverable maturities
  Basket second_basket{};         // a second range also deliverable
  int32_t priced_as = kClosedForm;  // bond type of the notional-yield price
  bool deliverable(double t) const noexcept { return basket.holds(t) || second_basket.holds(t); }
};

// What a notional override may be.
enum class NotionalFloor {
  kPositive,    // zero or below refused
  kNonNegative, // below zero refused
  kGrowth,      // 1 + notional must be positive (annual discounting)
};

struct Contract {
  int32_t code;
  const char* name;
  FactorRoutine routine;
  int32_t decimals;         // the factor is rounded half up at this many decimals,
  bool truncated = false;   // or cut there when the exchange truncates
  NotionalFloor floor = NotionalFloor::kNonNegative;
  // In date order; the first holds before every later one (its `from` is
  // not read), unused entries never hold.
  std::array<ContractTerms, 4> terms;

  const ContractTerms& terms_on(int32_t date) const noexcept {
    const ContractTerms* in_force = &terms[0];
    for (std::size_t i = 1; i < terms.size(); ++i) {
      if (terms[i].from <= date) in_force = &terms[i];
    }
    return *in_force;
  }
};

// The row for `code`, or null when the code is unknown.
const Contract* find_contract(int32_t code) noexcept;

}  // namespace kbond::futures
