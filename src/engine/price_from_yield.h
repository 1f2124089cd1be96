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

enum YieldMethod : int32_t {
  kStandardYield = 0, kJapaneseSimpleYield = 1, kBraessYield = 2, kMoosmullerYield = 3,
  kActual36525Yield = 4
};

enum FinalPeriodMethod : int32_t {
  kWholePeriods = 0, kSimpleFinalPeriod = 1, kActual365Exponents = 2, kChainedSimple = 3,
  kDelayedMaturity = 4
};

// Evaluators that give only the first derivative have the second as the
// central difference of the first, this far either side of the yield.
inline constexpr double kSecondDerivativeStep = 5e-06;
inline constexpr double kSecondDerivativeScale = 99999.99999999999;  // 1 / (2 x 5e-6)

// The final-period method of a standard-method bond.
int32_t final_period_method(const bond_desc& desc) noexcept;

using FirstDerivativeEvaluator = double (*)(double, const bond_desc&, double*, int32_t*) noexcept;

// The compound-yield evaluator that prices a bullet (no amortisation) with
// its second derivative taken numerically; null for the methods that give
// their own (simple final period, Japanese simple yield) and for an
// unknown method.
FirstDerivativeEvaluator compound_evaluator_for(const bond_desc& desc) noexcept;

}  // namespace kbond::engine
