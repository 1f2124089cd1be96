// The remaining cash flows of a straight bond, row by row, as the cash-flow
// table and the average life read them.
//
// Row 0 is the next coupon date (its coupon is 0 when settlement is
// ex-dividend), then one row per regular coupon date, then the maturity of
// a broken last period. Amounts are per unit of initial face: a sinking
// fund repays its amounts on the amortisation dates of the coupon grid and
// the coupons are paid on the face still outstanding before each date's
// repayment, as the amortising price counts them. Principal is repaid at
// par before maturity and at the redemption value at maturity, before tax.
//
//   walk_cash_flows(desc, [&](const CashFlowRow& row) { ... });
#pragma once
#include <cstdint>

#include "engine/bond_desc.h"
#include "engine/coupon_schedule.h"
#include "engine/evaluator_common.h"

namespace kbond::engine {

struct CashFlowRow {
  int32_t index = 0;            // 0 for the next coupon date
  int32_t date = 0;             // scheduled date
  int32_t paid = 0;             // date moved to a business day when the bond pays so
  double coupon = 0.0;          // per unit of initial face, net of withholding tax
  double principal = 0.0;       // per unit of initial face, before tax on the gain
  double face = 0.0;            // fraction of initial face repaid (principal at par)
  double nominal_periods = 0.0; // coupon periods from settlement on the regular grid
  double periods = 0.0;         // discounting exponent of the bond's yield convention
  bool at_maturity = false;
};

// A repayment smaller than this is no repayment (as the amortising price
// counts it).
inline constexpr double kNegligibleFace = 1e-9;

// The columns of the cash-flow table (per 100 of initial face); a null
// column is not filled.
struct CashFlowColumns {
  int32_t* dates = nullptr;      // payment dates
  double* coupons = nullptr;     // coupons, net of withholding tax
  double* principal = nullptr;   // principal, net of the tax on the gain over `purchase_price`
  double* periods = nullptr;     // discounting exponents in coupon periods
};

// Fills the first `rows` rows of the table of a holder who bought at
// `purchase_price` per 100.
void fill_cash_flow_columns(const engine::bond_desc& desc, double purchase_price, int32_t rows,
                            const CashFlowColumns& out) noexcept;

// Number of rows: the remaining cash-flow periods of the description.
inline int32_t cash_flow_rows(const engine::bond_desc& desc) noexcept {
  return desc.remaining_periods();
}

// The discounting exponent, in coupon periods from settlement, of each row
// under the bond's yield convention: whole periods on the grid for most
// markets, actual days over 365 (or 365.25) for the conventions that count
// their exponents in days, with payments moved to business days when the
// bond asks for it.
class DiscountClock {
 public:
  explicit DiscountClock(const engine::bond_desc& desc) noexcept;
  // Periods to a payment scheduled on `date`, `nominal` periods on the grid.
  double periods(int32_t date, double nominal) const noexcept;
  double first() const noexcept { return first_; }

 private:
  enum class Kind { kGrid, kActual365, kActual36525 };
  const engine::bond_desc& desc_;
  Kind kind_ = Kind::kGrid;
  double first_ = 0.0;       // periods to the next coupon
  int32_t next_paid_ = 0;    // the next coupon's business-day payment date
};

// Visits every row in date order; `visit` is `void(const CashFlowRow&)`.
template <class Visit>
void walk_cash_flows(const engine::bond_desc& desc, Visit&& visit) {
  const double f = desc.frequency;
  const double net = (1.0 - desc.coupon_tax) / f;
  const int32_t further = engine::further_coupons(desc);
  const bool broken_last = engine::has_broken_last_period(desc);
  const bool amortises = desc.amort_kind != engine::kNoAmortisation;
  const DiscountClock clock(desc);
  const double t0 = f * desc.tn;

  // Sinking-fund dates are met as the amortising price meets them: on the
  // coupon grid every periods_per_sink periods from the next one.
  double repaid = amortises ? 1.0 - desc.factor : 0.0;
  const int32_t sink_step = desc.periods_per_sink > 0 ? desc.periods_per_sink : 1;
  int32_t sink_index = 0;
  int32_t sink = 0;
  if (amortises) {
    engine::grid_on_or_before(desc, desc.next_sink, &sink_index);
    sink = engine::grid_date(desc, sink_index);
  }
  auto next_sink = [&] {
    sink_index += sink_step;
    sink = engine::grid_date(desc, sink_index);
  };

  auto emit = [&](int32_t index, int32_t date, double coupon_rate_part, double nominal,
                  bool at_maturity) {
    CashFlowRow row;
    row.index = index;
    row.date = date;
    row.paid = engine::pays_on_business_days(desc) ? engine::payment_date(desc, date) : date;
    row.coupon = coupon_rate_part * (1.0 - repaid);
    row.nominal_periods = nominal;
    row.periods = index == 0 ? clock.first() : clock.periods(date, nominal);
    row.at_maturity = at_maturity;
    if (at_maturity) {
      row.face = 1.0 - repaid;
      row.principal = row.face * desc.redemption * 0.01;
      repaid = 1.0;
    } else if (amortises) {
      while (sink > 0 && sink < date) next_sink();
      if (sink == date) {
        double amount = engine::amortisation_due(desc, date);
        if (repaid + amount >= 1.0) amount = 1.0 - repaid;
        if (amount > kNegligibleFace) {
          row.face = row.principal = amount;
          repaid += amount;
        }
        next_sink();
      }
    }
    visit(row);
  };

  const bool next_is_last = further <= 0 && !broken_last;
  emit(0, desc.next_coupon, desc.exdiv ? 0.0 : desc.full_coupon, t0, next_is_last);
  int32_t period_start = desc.next_coupon;
  const engine::CouponGrid grid(desc);
  for (int32_t k = 1; k <= further; ++k) {
    const bool last = k == further && !broken_last;
    const int32_t date = last ? desc.maturity : grid.after_next_coupon(k);
    emit(k, date, engine::rate_in_force(desc, period_start) * net, t0 + k, last);
    period_start = date;
  }
  if (broken_last) {
    const int32_t k = further > 0 ? further : 0;
    emit(k + 1, desc.maturity, engine::rate_in_force(desc, period_start) * desc.last_coupon * net,
         t0 + k + desc.last_discount, true);
  }
}

}  // namespace kbond::engine
