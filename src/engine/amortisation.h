// Amortisation of a bond description: the amortisation dates on the coupon
// grid, the amount due on each, and the face still outstanding.
//
// Amortisation dates lie on the coupon grid, every periods_per_sink coupon
// periods from the first one: the grid date on or after the first of the
// caller's sinking dates (`first_amortisation_date`).
//
// Kind 1 (equal amortisation) repays the face in N equal parts, one on each
// amortisation date up to and including maturity.
//
// Kind 2 (schedule) reads the copied list as a step function: the amount due
// on an amortisation date is the amount of the last entry dated on or before
// it, so an entry keeps repaying its amount every amortisation period until
// the next entry. A sinking end date inserts a zero entry on the following
// day, which closes the entry's run.
//
// The outstanding factor at t counts every amortisation on or before t (a
// buyer settling on an amortisation date does not receive that repayment).
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {


// The first amortisation date (0 when the bond does not amortise); its grid
// index relative to the anchor goes to `grid_index` (may be null).
int32_t first_amortisation_date(const bond_desc& desc, int32_t* grid_index) noexcept;

// Outstanding fraction of the initial face at date t: 1.0 before the first
// amortisation date and from maturity on, 0 when the repayments exceed 1.
double outstanding_factor(const bond_desc& desc, int32_t t) noexcept;

// The outstanding factor along dates that never go back: `at(t)` equals
// outstanding_factor(desc, t) but walks the amortisation dates only once,
// so a coupon-by-coupon walk over a long sinking fund stays linear.
class OutstandingCursor {
 public:
  explicit OutstandingCursor(const bond_desc& desc) noexcept;
  // t must not be earlier than the previous call's t.
  double at(int32_t t) noexcept;

 private:
  const bond_desc& desc_;
  int32_t first_ = 0;   // first amortisation date, 0 when none
  int32_t step_ = 0;    // months between amortisation dates
  int32_t equal_count_ = 0;  // equal repayments: how many, maturity the last
  int32_t index_ = 0;   // grid index of the next amortisation date to count
  int32_t previous_ = 0;
  bool exhausted_ = false;
  double repaid_ = 0.0;
};

// Amount repaid on amortisation date d (fraction of initial face), 0 for
// dates before the first amortisation date or from maturity on; the
// remainder at maturity is 1 - the repayments before it.
double amortisation_due(const bond_desc& desc, int32_t d) noexcept;

// Amortisation steps of bond_setup (amortisation frequency, kind, owned
// copy, outstanding factor at settlement, next amortisation date). Needs the
// grid fields, settlement, maturity and next_coupon. 0 or 1; on failure no
// array stays allocated.
int32_t setup_amortisation(const bond_args& args, bond_desc& desc) noexcept;

}  // namespace kbond::engine
