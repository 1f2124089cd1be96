// The discounting clock of the cash-flow rows: the exponents the bond's own
// price-yield evaluator gives each payment.
#include "engine/cash_flow_walk.h"

#include "dates/day_count.h"
#include "engine/catalogue.h"
#include "engine/price_from_yield.h"

namespace kbond::engine {

namespace {

constexpr int32_t kActual365FinalMethod = 2;
constexpr int32_t kActual36525YieldMethod = 4;
constexpr int32_t kActual36525MaxPeriods = 12;
constexpr int32_t kActual365DayCount = 5;

// The tax on the gain when a holder who bought at `price` is repaid: the
// gain over the price is taxed as income before the tax cut-over date and
// as a capital gain from then on; without a capital-gains tax rate nothing
// is taxed.
double tax_on_gain(const engine::bond_desc& desc, const CashFlowRow& row, double price) noexcept {
  if (desc.discount_tax == 0.0 || row.face <= 0.0) return 0.0;
  const double repaid_at = row.at_maturity ? desc.redemption : 100.0;
  const double gain = (repaid_at - price) * 0.01;
  if (!(gain > 0.0)) return 0.0;
  const double rate = row.date < desc.horizon_date ? desc.coupon_tax : desc.discount_tax;
  return rate * gain * row.face;
}

}  // namespace

void fill_cash_flow_columns(const engine::bond_desc& desc, double purchase_price, int32_t rows,
                            const CashFlowColumns& out) noexcept {
  walk_cash_flows(desc, [&](const CashFlowRow& row) {
    if (row.index >= rows) return;
    if (out.dates) out.dates[row.index] = row.paid;
    if (out.coupons) out.coupons[row.index] = row.coupon * 100.0;
    if (out.principal)
      out.principal[row.index] = (row.principal - tax_on_gain(desc, row, purchase_price)) * 100.0;
    if (out.periods) out.periods[row.index] = row.periods;
  });
}

DiscountClock::DiscountClock(const engine::bond_desc& desc) noexcept : desc_(desc) {
  const int32_t method = engine::bond_type_yield_method(desc.conventions, desc.yield_method_arg);
  if (method == 0 && engine::final_period_method(desc) == kActual365FinalMethod) {
    kind_ = Kind::kActual365;
  } else if (method == kActual36525YieldMethod &&
             desc.remaining_periods() <= kActual36525MaxPeriods) {
    kind_ = Kind::kActual36525;
  }
  if (kind_ == Kind::kActual36525) {
    first_ = (desc.next_coupon - desc.settlement) * desc.frequency * engine::kPerDay36525;
  } else {
    first_ = engine::periods_to_next_coupon(desc);
  }
  next_paid_ = engine::payment_date(desc, desc.next_coupon);
}

double DiscountClock::periods(int32_t date, double nominal) const noexcept {
  const double f = desc_.frequency;
  const bool business_days = engine::pays_on_business_days(desc_);
  switch (kind_) {
    case Kind::kActual365:
      if (business_days) {
        const int32_t days = dates::day_count(next_paid_, engine::payment_date(desc_, date),
                                              kActual365DayCount, nullptr);
        return first_ + days * f * engine::kPerDay365;
      }
      return first_ + (date - desc_.next_coupon) * f * engine::kPerDay365;
    case Kind::kActual36525:
      return first_ + (date - desc_.next_coupon) * f * engine::kPerDay36525;
    case Kind::kGrid:
      break;
  }
  return business_days ? engine::business_day_periods(desc_, nominal, date) : nominal;
}

}  // namespace kbond::engine
