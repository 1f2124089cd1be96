// Business-day payment times, the capital-gains tax rule and the finishing
// of a compound-yield price, shared by the price-yield evaluators.
#include "engine/evaluator_common.h"

#include "dates/business_days.h"

namespace kbond::engine {

int32_t payment_date(const bond_desc& desc, int32_t date) noexcept {
  return dates::adjust_business_day(date, dates::kFollowing, desc.calendar());
}

namespace {

double accrual_year_days(const bond_desc& desc) noexcept {
  return desc.basis_accrual > 0.0 ? desc.basis_accrual : 365.0;
}

}  // namespace

double business_day_periods(const bond_desc& desc, double nominal, int32_t date) noexcept {
  const int32_t paid = payment_date(desc, date);
  const double f = desc.frequency;
  if (counts_payment_days_over_365(desc.accrual_basis)) return (paid - desc.settlement) * f * kPerDay365;
  return nominal + (paid - date) * f / accrual_year_days(desc);
}

double periods_to_next_coupon(const bond_desc& desc) noexcept {
  const double nominal = desc.frequency * desc.tn;
  return pays_on_business_days(desc) ? business_day_periods(desc, nominal, desc.next_coupon)
                                     : nominal;
}

double capital_gains_rate(const bond_desc& desc) noexcept {
  if (desc.discount_tax != 0.0 && desc.maturity < desc.horizon_date) return desc.coupon_tax;
  return desc.discount_tax;
}

double finish_price(const bond_desc& desc, double dirty, double dirty_derivative,
                    double redemption_df, double redemption_df_derivative,
                    double* first_derivative, int32_t* error) noexcept {
  const double redemption = desc.redemption * 0.01;
  double clean = dirty - desc.accrued;
  double derivative = dirty_derivative;
  if (clean < redemption) {
    // The gain from the discount up to redemption is taxed; the tax is
    // itself part of what the buyer pays for, hence the division.
    const double g = capital_gains_rate(desc);
    if (g != 0.0) {
      const double divisor = 1.0 - g * redemption_df;
      if (divisor == 0.0) return zero_denominator(error);
      const double taxed = clean - g * redemption * redemption_df;
      const double taxed_derivative = derivative - g * redemption * redemption_df_derivative;
      clean = taxed / divisor;
      derivative = (taxed_derivative + clean * g * redemption_df_derivative) / divisor;
    }
  }
  if (first_derivative) *first_derivative = derivative;
  return clean * 100.0;
}

}  // namespace kbond::engine
