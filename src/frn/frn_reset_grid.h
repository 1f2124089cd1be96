// The reset dates of a floating-rate note anchored at one known date: every
// 12/frequency months from the anchor for 1..12 resets a year, every 14 or 7
// days for 26 and 52.
//
// Month stepping follows the anchor's month end: an anchor on the 31st keeps
// month ends (31 March, 30 September, 31 March ...), an anchor inside its
// month never does, and an anchor on the last day of a shorter month
// (30 April, 28 February) keeps them only under the note's end-of-month rule.
#pragma once
#include <cstdint>

namespace kbond::frn {

struct FrnType;

class FrnResetGrid {
 public:
  FrnResetGrid() noexcept = default;
  FrnResetGrid(int32_t anchor, const FrnType& type) noexcept;

  int32_t anchor() const noexcept { return anchor_; }
  int32_t end_of_month() const noexcept { return eom_; }

  // The date j periods from the anchor (j may be negative).
  int32_t at(int32_t j) const noexcept;

  // The smallest j whose date lies after `date`.
  int32_t index_after(int32_t date) const noexcept;

 private:
  int32_t anchor_ = 0;
  int32_t eom_ = 0;
  int32_t step_ = 6;        // months, or days when by_days_
  bool by_days_ = false;
};

}  // namespace kbond::frn
