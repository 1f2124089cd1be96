// The coupon grid of a bond and the period fractions around settlement.
//
// Coupon dates are never stored as a list: they are the dates
// anchor + j * months_per_period months (j any integer), with the bond's
// end-of-month rule, where the anchor is maturity or an explicit first
// coupon date. `grid_on_or_before` and `grid_after` find the grid dates
// around a date and report their index j relative to the anchor.
//
//   int32_t j = 0;
//   const int32_t previous = grid_on_or_before(desc, desc.settlement, &j);
//   const int32_t next = grid_date(desc, j + 1);   // == grid_after(desc, settlement)

#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {

// The grid date with index j (anchor + j periods).
int32_t grid_date(const bond_desc& desc, int32_t j) noexcept;

// The last grid date on or before d; its index goes to `index` (may be null).
int32_t grid_on_or_before(const bond_desc& desc, int32_t d, int32_t* index = nullptr) noexcept;

// The first grid date after d; its index goes to `index` (may be null).
int32_t grid_after(const bond_desc& desc, int32_t d, int32_t* index = nullptr) noexcept;

// Day counts of the schedule: the coupon day count (dcC) of the catalogue's
// ex-dividend rule, and the accrual day count (dcA) that discounting uses
// (actual/actual when the caller asks for yield method -6).
int32_t coupon_day_count(const bond_desc& desc) noexcept;
int32_t discount_day_count(const bond_desc& desc) noexcept;

}  // namespace kbond::engine
