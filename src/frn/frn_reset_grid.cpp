#include "frn/frn_reset_grid.h"

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "frn/frn_type.h"

namespace kbond::frn {

FrnResetGrid::FrnResetGrid(int32_t anchor, const FrnType& type) noexcept
    : anchor_(anchor), by_days_(steps_by_days(type.frequency)) {
  step_ = by_days_ ? period_days(type.frequency) : period_months(type.frequency);
  if (by_days_) return;
  int32_t day = 0, month = 0, year = 0;
  dates::serial_to_date(anchor, &day, &month, &year);
  if (!dates::is_end_of_month(anchor)) {
    eom_ = 0;
  } else if (day == 31) {
    eom_ = 1;
  } else {
    eom_ = type.end_of_month;
  }
}

int32_t FrnResetGrid::at(int32_t j) const noexcept {
  if (by_days_) return anchor_ + j * step_;
  return dates::add_months(anchor_, j * step_, eom_);
}

int32_t FrnResetGrid::index_after(int32_t date) const noexcept {
  if (by_days_) {
    const int32_t offset = date - anchor_;
    const int32_t whole = offset >= 0 ? offset / step_ : -((-offset + step_ - 1) / step_);
    return whole + 1;
  }
  int32_t j = 0;
  dates::schedule_date(date, 1, step_, anchor_, eom_, &j);
  // Settle the index on the grid itself, so that at(j) is the first date
  // after; a couple of steps at most (bounded against unconvertible dates).
  for (int guard = 0; guard < 4 && at(j) <= date; ++guard) ++j;
  for (int guard = 0; guard < 4 && at(j - 1) > date; ++guard) --j;
  return j;
}

}  // namespace kbond::frn
