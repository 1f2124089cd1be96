// The price-yield core: clean price per 100 of face at a yield, with the
// first and second derivatives by yield per unit of face. The evaluator is
// chosen by the bond's amortisation, yield method and final-period method.
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"

namespace kbond::engine {

// Error codes through `error` (may be null): 0, 401 (vanishing denominator,
// result -100), 1 (unsupported bond shape or unknown method).
double price_from_yield(double yield, const bond_desc& desc, double* first_derivative,
                        double* second_derivative, int32_t* error) noexcept;

// The final-period method of a standard-method bond (0 standard, 1 simple
// final period, 2 actual/365 exponents, 3 chained simple interest,
// 4 delayed maturity).
int32_t final_period_method(const bond_desc& desc) noexcept;

}  // namespace kbond::engine
