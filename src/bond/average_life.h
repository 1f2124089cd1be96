// The average life of a bond with a sinking fund: the time from settlement
// to each repayment of principal, weighted by its size. It is measured on a
// description of the schedule alone (the maturity as the only date and a
// nominal coupon of 0.1, the schedule being the same for any coupon rate).
//
//   const AverageLifeSchedule schedule(maturity, settlement, ...);
//   ... set up schedule.args ...
//   double years = average_life(desc, &err);
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::bond {

class AverageLifeSchedule {
 public:
  // Types 16, 17 and 22 are measured as their plain counterparts.
  AverageLifeSchedule(int32_t maturity, int32_t settlement, const int32_t* dated_date,
                      const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
                      int32_t n_frequency, const double* redemption, const double* factor,
                      const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
                      int32_t n_sink_ends, const double* sink_amounts,
                      const double* sink_premium) noexcept;
  AverageLifeSchedule(const AverageLifeSchedule&) = delete;
  AverageLifeSchedule& operator=(const AverageLifeSchedule&) = delete;

  engine::bond_args args;  // points into this object

 private:
  int32_t maturity_;
  int32_t type_ = 0;
};

// Average life in years of the bond `schedule` describes. With nothing
// repaid, error 1 and -1 over the frequency.
double average_life(const engine::bond_desc& schedule, int32_t* error) noexcept;

}  // namespace kbond::bond
