// Hand-built bond descriptions for the price-yield evaluator tests: a bond
// with mid-month coupon dates (no end-of-month effects), accruing
// actual/actual, settled in a regular period, described the way the
// schedule step describes it. Tests adjust single fields to reach the
// shapes they need.
//
//   TestBond bond;
//   bond.settlement = serial(15, 2, 2025);
//   bond.maturity = serial(15, 11, 2034);
//   bond_desc desc = bond.describe();   // borrows bond's arrays
#pragma once
#include <cmath>
#include <cstdint>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/bond_desc.h"
#include "engine/price_from_yield.h"

namespace kbond::engine::testing {

inline int32_t serial(int32_t day, int32_t month, int32_t year) {
  return dates::date_to_serial(day, month, year);
}

struct TestBond {
  int32_t type = 500;  // generic bond: standard yield, simple final period
  int32_t frequency = 2;
  double rates[4] = {0.05, 0.0, 0.0, 0.0};
  int32_t step_dates[4] = {0, 0, 0, 0};  // coupon-change dates; the last is maturity
  int32_t n_steps = 1;
  int32_t settlement = 0;
  int32_t maturity = 0;
  double redemption = 100.0;
  double coupon_tax = 0.0;
  double discount_tax = 0.0;
  int32_t yield_method_arg = 0;

  // The description the engine sees; it points into this object's arrays.
  bond_desc describe() {
    step_dates[n_steps - 1] = maturity;
    bond_desc d;
    d.type = type;
    d.conventions = bond_type_ref(type);
    d.accrual_basis = 0;
    d.frequency = frequency;
    d.months_per_period = 12 / frequency;
    d.eom = 0;
    d.coupons = rates;
    d.n_coupons = n_steps;
    d.dates = step_dates;
    d.n_dates = n_steps;
    d.maturity = maturity;
    d.anchor = maturity;
    d.redemption = redemption;
    d.settlement = settlement;
    d.coupon_tax = coupon_tax;
    d.discount_tax = discount_tax;
    d.horizon_date = dates::add_months(settlement, 12, 1);
    d.yield_method_arg = yield_method_arg;
    d.simple_final = 1;

    const int32_t mpp = d.months_per_period;
    const int32_t start = dates::schedule_date(settlement, 0, mpp, maturity, 0, nullptr);
    const int32_t next = dates::schedule_date(settlement, 1, mpp, maturity, 0, nullptr);
    d.period_start = start;
    d.quasi_start = start;
    d.next_coupon = next;
    d.first_coupon = next;
    d.dated_date = start;
    d.position = kRegularPeriod;
    d.whole_periods = dates::months_between(start, maturity, 0, nullptr) / mpp;
    d.next_sink = maturity;

    d.coupon_index = 0;
    while (d.coupon_index < n_steps - 1 && step_dates[d.coupon_index] <= start) ++d.coupon_index;
    const double rate = rates[d.coupon_index];

    const double period_days = next - start;
    d.basis = d.basis_accrual = period_days * frequency;
    d.tn = (next - settlement) / d.basis_accrual;
    d.ay = (settlement - start) / d.basis;
    d.cf = 1.0;
    d.full_coupon = (1.0 - coupon_tax) * rate / frequency;
    d.accrued = (1.0 - coupon_tax) * rate * d.ay;
    return d;
  }
};

// Settlement moved past the ex-dividend date: the next coupon goes to the
// seller and the accrued interest turns negative.
inline void go_ex_dividend(bond_desc& d) {
  d.exdiv = 1;
  d.accrued -= d.full_coupon;
}

inline double price(const bond_desc& d, double y, double* first = nullptr, double* second = nullptr,
                    int32_t* error = nullptr) {
  int32_t local = 0;
  return price_from_yield(y, d, first, second, error ? error : &local);
}

// Central difference of the price per 100, as a derivative per unit of face.
inline double price_slope(const bond_desc& d, double y, double h = 1e-6) {
  return (price(d, y + h) - price(d, y - h)) / (2.0 * h) / 100.0;
}

// Second difference of the price per 100, per unit of face.
inline double price_curvature(const bond_desc& d, double y, double h = 1e-4) {
  return (price(d, y + h) - 2.0 * price(d, y) + price(d, y - h)) / (h * h) / 100.0;
}

}  // namespace kbond::engine::testing
