#include "frn/frn_period.h"

#include "dates/business_days.h"

namespace kbond::frn {

FrnPeriodWalk::FrnPeriodWalk(const FrnSchedule& s) noexcept
    : schedule_(s),
      start_(s.previous_coupon),
      end_(s.next_coupon),
      later_(s.later_resets),
      later_count_(s.later_count),
      grid_(s.grid),
      index_(s.next_index) {}

int32_t FrnPeriodWalk::payment_date() const noexcept {
  if (schedule_.type->option_flag != 1) return end_;
  return dates::adjust_business_day(end_, dates::kFollowing, schedule_.calendar());
}

void FrnPeriodWalk::advance() noexcept {
  const int32_t maturity = schedule_.maturity;
  start_ = end_;
  int32_t next = 0;
  if (later_count_ > 0) {
    // Listed reset dates are taken as given; stepping resumes from the last.
    next = *later_++;
    --later_count_;
    grid_ = FrnResetGrid(next, *schedule_.type);
    index_ = 0;
  } else {
    next = grid_.at(++index_);
    if (next < maturity && schedule_.adjusts_dates()) next = schedule_.adjust(next);
  }
  // Past maturity, or a grid that cannot move on (dates beyond the calendar):
  // the period ends at maturity.
  end_ = next >= maturity || next <= start_ ? maturity : next;
}

int32_t count_frn_periods(const FrnSchedule& schedule) noexcept {
  int32_t count = 1;
  for (FrnPeriodWalk p(schedule); !p.is_last(); p.advance()) ++count;
  return count;
}

}  // namespace kbond::frn
