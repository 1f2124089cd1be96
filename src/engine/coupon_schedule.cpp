// The coupon grid of a bond: the dates anchor + j periods, and the day
// counts its period fractions are measured in.
#include "engine/coupon_schedule.h"

#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"

namespace kbond::engine {

int32_t grid_date(const bond_desc& desc, int32_t j) noexcept {
  // add_months applies the end-of-month rule only to a month-end anchor.
  return dates::add_months(desc.anchor, j * desc.months_per_period, desc.eom);
}

int32_t grid_on_or_before(const bond_desc& desc, int32_t d, int32_t* index) noexcept {
  return dates::schedule_date(d, 0, desc.months_per_period, desc.anchor, desc.eom, index);
}

int32_t grid_after(const bond_desc& desc, int32_t d, int32_t* index) noexcept {
  return dates::schedule_date(d, 1, desc.months_per_period, desc.anchor, desc.eom, index);
}

int32_t coupon_day_count(const bond_desc& desc) noexcept {
  return bond_type_exdiv_basis(desc.conventions, desc.period_start, desc.accrual_basis);
}

int32_t discount_day_count(const bond_desc& desc) noexcept {
  return desc.yield_method_arg == -6 ? dates::kActAct : desc.accrual_basis;
}

}  // namespace kbond::engine
