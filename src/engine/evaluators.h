// The price-yield evaluators behind `price_from_yield`. Each returns the
// clean price per 100 of face at `yield` and writes its first derivative by
// yield per unit of face to `first_derivative` (may be null); `error` must
// not be null and is only written on failure (401 with -100 for a
// vanishing denominator, 1 for a bond shape the method cannot price).
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {

// Compound yield at the coupon frequency, the convention of most markets.
// A single coupon step with at least two further coupons is priced by the
// annuity closed form.
double standard_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                          int32_t* error) noexcept;

// Money-market yield over a single last period; also gives the second
// derivative (may be null).
double simple_final_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                              double* second_derivative, int32_t* error) noexcept;

// Compound yield with exponents counted in actual days over 365-day years.
double actual365_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                           int32_t* error) noexcept;

// Compound yield with exponents counted in actual days over 365.25-day years.
double actual36525_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                             int32_t* error) noexcept;

// Spanish bonds in their last year: simple interest on an actual/360 basis,
// chained from one cash flow to the next.
double chained_simple_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                                int32_t* error) noexcept;

// Spanish bonds maturing on a holiday: the cash flows due at maturity are
// discounted to the following business day.
double delayed_maturity_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                                  int32_t* error) noexcept;

// Japanese simple yield; also gives the second derivative (may be null).
double japanese_simple_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                                 double* second_derivative, int32_t* error) noexcept;

// Moosmüller: simple interest to the next coupon, compound after it.
double moosmuller_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                            int32_t* error) noexcept;

// Braess-Fangmeyer: annual compounding with simple interest inside each year.
double braess_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                        int32_t* error) noexcept;

// Amortising bonds as a weighted sum of bullets, one per amortisation date.
double amortising_evaluator(double yield, const bond_desc& desc, double* first_derivative,
                            double* second_derivative, int32_t* error) noexcept;

// The Spanish market's payment date for a maturity that falls on a weekend
// or on a holiday of its settlement calendar (1 January, 25 December): the
// following business day. False when the holiday list cannot be built.
bool spanish_maturity_payment_date(int32_t maturity, int32_t* paid) noexcept;

}  // namespace kbond::engine
