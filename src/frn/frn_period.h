// Walks the coupon periods of a floating-rate note from the current one to
// maturity. Each period ends at the caller's next listed reset date while any
// remain, then at the next date of the reset grid (adjusted by the note's
// business-day rule); the last period ends at maturity.
//
//   for (FrnPeriodWalk p(schedule); ; p.advance()) {
//     ... p.start(), p.end(), p.payment_date() ...
//     if (p.is_last()) break;
//   }
#pragma once
#include <cstdint>

#include "frn/frn_schedule.h"

namespace kbond::frn {

class FrnPeriodWalk {
 public:
  explicit FrnPeriodWalk(const FrnSchedule& schedule) noexcept;

  int32_t start() const noexcept { return start_; }
  int32_t end() const noexcept { return end_; }
  bool is_last() const noexcept { return end_ >= schedule_.maturity; }

  // The date the period's coupon is paid and discounted to: the end itself,
  // or its following business day when the note pays on business days.
  int32_t payment_date() const noexcept;

  void advance() noexcept;

 private:
  const FrnSchedule& schedule_;
  int32_t start_;
  int32_t end_;
  const int32_t* later_;
  int32_t later_count_;
  FrnResetGrid grid_;
  int32_t index_;
};

// Number of periods from the current one to maturity.
int32_t count_frn_periods(const FrnSchedule& schedule) noexcept;

}  // namespace kbond::frn
