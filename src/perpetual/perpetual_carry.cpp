// Carry of a perpetual bond: the coupons in the period, the financing of the
// purchase, and the accrued interest at both ends.
#include "perpetual/perpetual_carry.h"

#include <cmath>

#include "engine/catalogue.h"
#include "engine/coupon_schedule.h"
#include "engine/carry.h"
#include "k_bond.h"

namespace kbond::perpetual {

double perpetual_carry(const perpetual_desc& desc, const perpetual_args& args,
                       const CarryTerms& terms, int32_t* error) noexcept {
  *error = 0;
  const auto& g = desc.grid;
  engine::CarryAccount account;
  if (!account.start(terms.mode, terms.repo, terms.reinvest, g.frequency)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const int32_t end = terms.end_date;
  if (end <= g.settlement) {
    *error = KVL_ERR_DATE_ORDER;
    return -999.0;
  }
  // The bond as the forward buyer takes it (also checks the end date).
  perpetual_args end_args = args;
  end_args.settlement = end;
  perpetual_desc at_end;
  if (perpetual_setup(end_args, at_end) != 0) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const auto& e = at_end.grid;

  const double unit = 1.0 / engine::bond_type_mm_basis(g.type, g.settlement);
  account.unit = unit;
  account.cash = terms.price * 0.01 + g.accrued;
  account.from = g.settlement;
  // Coupons paid in the period: those before the buyer's next coupon.
  const double net_per_period = (1.0 - g.coupon_tax) / g.frequency;
  for (int32_t date = g.next_coupon; date < e.next_coupon;
       date = engine::grid_after(g, date, nullptr)) {
    account.accrue_to(date);
    if (date == g.next_coupon) {
      account.income += g.exdiv ? 0.0 : g.full_coupon;
    } else {
      account.income += rate_on(desc, date) * net_per_period;
    }
  }
  account.accrue_to(end);
  account.finish(g.settlement, end);

  // Ex-coupon at the end: the coming coupon stays with the position, worth
  // its amount discounted from its payment date at the reinvestment rate
  // (unless the seller had already kept it at settlement).
  const bool kept_by_seller = g.exdiv && e.next_coupon == g.next_coupon;
  if (e.exdiv && !kept_by_seller) {
    account.income += e.full_coupon * account.discount((e.next_coupon - end) * unit);
  }
  const double carry = e.accrued - g.accrued + account.income - account.financing_cost;
  // A price or rate that is not a number (or too large to finance) leaves no
  // carry to report.
  if (!std::isfinite(carry)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  return carry;
}

}  // namespace kbond::perpetual
