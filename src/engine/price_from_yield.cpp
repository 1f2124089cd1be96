// The price-yield core: picks the evaluator for a bond and supplies the
// second derivative of those evaluators that only give the first.
//
// Amortising bonds are priced as bullets whatever their method; otherwise
// the yield method decides (standard, Japanese simple, Braess, Moosmüller,
// actual/365.25 exponents), and a standard-method bond is priced by its
// final-period method: whole periods, a simple-interest last period,
// actual/365 exponents, chained simple interest or a delayed maturity.
#include "engine/price_from_yield.h"

#include "dates/day_count.h"
#include "engine/catalogue.h"
#include "engine/evaluators.h"
#include "k_bond.h"

namespace kbond::engine {

namespace {

// The actual/365.25 method is used for bonds with at most this many periods.
constexpr int32_t kActual36525MaxPeriods = 12;

FirstDerivativeEvaluator compound_evaluator(const bond_desc& desc, int32_t yield_method) noexcept {
  switch (yield_method) {
    case kBraessYield:
      return braess_evaluator;
    case kMoosmullerYield:
      return moosmuller_evaluator;
    case kActual36525Yield:
      return desc.remaining_periods() <= kActual36525MaxPeriods ? actual36525_evaluator
                                                               : standard_evaluator;
    default:
      break;
  }
  switch (final_period_method(desc)) {
    case kActual365Exponents:
      return actual365_evaluator;
    case kChainedSimple:
      return chained_simple_evaluator;
    case kDelayedMaturity:
      return delayed_maturity_evaluator;
    default:
      return standard_evaluator;
  }
}

// The second derivative as the central difference of the evaluator's first
// derivative, then the price at the yield itself.
double price_with_numerical_curvature(FirstDerivativeEvaluator evaluate, double yield,
                                      const bond_desc& desc, double* first_derivative,
                                      double* second_derivative, int32_t* error) noexcept {
  if (second_derivative) {
    double below = 0.0, above = 0.0;
    double price = evaluate(yield - kSecondDerivativeStep, desc, &below, error);
    if (*error != 0) return price;
    price = evaluate(yield + kSecondDerivativeStep, desc, &above, error);
    if (*error != 0) return price;
    *second_derivative = (above - below) * kSecondDerivativeScale;
  }
  return evaluate(yield, desc, first_derivative, error);
}

}  // namespace

int32_t final_period_method(const bond_desc& desc) noexcept {
  const bool one_period_left = desc.remaining_periods() == 1;
  const bool simple_final = desc.simple_final != 0;
  const bool within_spanish_simple = desc.maturity - desc.settlement < kSpanishSimpleDays;

  switch (final_period_rule(desc.type)) {
    case FinalPeriodRule::kActualDays:
      if (!one_period_left) return kActual365Exponents;
      return simple_final ? kSimpleFinalPeriod : kActual365Exponents;
    case FinalPeriodRule::kSpanish:
      if (within_spanish_simple && simple_final) return kChainedSimple;
      if (desc.accrual_basis == dates::kAct365) return kActual365Exponents;
      if (!pays_maturity_on_spanish_calendar(desc.type, desc.settlement)) return kWholePeriods;
      return desc.yield_method_arg != 1 ? kDelayedMaturity : kWholePeriods;
    case FinalPeriodRule::kSpanishPreEmu:
      if (within_spanish_simple && simple_final) return kChainedSimple;
      return desc.accrual_basis == dates::kAct365 ? kActual365Exponents : kWholePeriods;
    case FinalPeriodRule::kStandard:
      break;
  }
  return one_period_left && simple_final ? kSimpleFinalPeriod : kWholePeriods;
}

FirstDerivativeEvaluator compound_evaluator_for(const bond_desc& desc) noexcept {
  if (desc.amort_kind != kNoAmortisation) return nullptr;
  const int32_t yield_method = bond_type_yield_method(desc.conventions, desc.yield_method_arg);
  switch (yield_method) {
    case kStandardYield:
      if (final_period_method(desc) == kSimpleFinalPeriod) return nullptr;
      return compound_evaluator(desc, yield_method);
    case kBraessYield:
    case kMoosmullerYield:
    case kActual36525Yield:
      return compound_evaluator(desc, yield_method);
    default:
      return nullptr;
  }
}

double price_from_yield(double yield, const bond_desc& desc, double* first_derivative,
                        double* second_derivative, int32_t* error) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;

  if (desc.amort_kind != kNoAmortisation)
    return amortising_evaluator(yield, desc, first_derivative, second_derivative, err);
  if (const FirstDerivativeEvaluator evaluate = compound_evaluator_for(desc)) {
    return price_with_numerical_curvature(evaluate, yield, desc, first_derivative,
                                          second_derivative, err);
  }
  const int32_t yield_method = bond_type_yield_method(desc.conventions, desc.yield_method_arg);
  if (yield_method == kJapaneseSimpleYield)
    return japanese_simple_evaluator(yield, desc, first_derivative, second_derivative, err);
  if (yield_method == kStandardYield)  // in its simple-interest final period
    return simple_final_evaluator(yield, desc, first_derivative, second_derivative, err);
  *err = KVL_ERR_INVALID;
  return -1.0;
}

}  // namespace kbond::engine
