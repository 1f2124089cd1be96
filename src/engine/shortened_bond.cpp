// Copies of a bond's description that mature earlier.
#include "engine/shortened_bond.h"
#include "k_bond.h"

#include <cstdlib>

namespace kbond::engine {

ShortenedBond::~ShortenedBond() { std::free(dates_); }

int32_t ShortenedBond::build(const engine::bond_args& original, const engine::bond_desc& desc,
                             int32_t maturity) noexcept {
  args = original;
  // The coupon steps that begin before the new maturity, the last of them
  // running to it.
  int32_t kept = 0;
  if (desc.n_coupons > 1) {
    while (kept < desc.n_dates - 1 && desc.dates[kept] < maturity) ++kept;
  }
  if (kept == 0) {
    single_date_ = maturity;
    args.dates = &single_date_;
    args.n_dates = 1;
    // A redemption given through the coupon array belongs to the old
    // maturity: the new one states its own.
    args.n_coupons = 1;
  } else {
    std::free(dates_);
    dates_ = static_cast<int32_t*>(std::malloc(sizeof(int32_t) * (kept + 1)));
    if (!dates_) return KVL_ERR_NO_MEMORY;
    for (int32_t i = 0; i < kept; ++i) dates_[i] = desc.dates[i];
    dates_[kept] = maturity;
    args.dates = dates_;
    args.n_dates = kept + 1;
    args.n_coupons = kept + 1;
  }
  // The coupon grid stays where it was.
  if (desc.settlement < desc.first_coupon) {
    dated_ = desc.dated_date;
    first_ = desc.first_coupon;
  } else {
    dated_ = desc.period_start;
    first_ = desc.next_coupon;
  }
  if (first_ > maturity) first_ = maturity;
  args.dated_date = &dated_;
  args.first_coupon = &first_;
  return 0;
}

}  // namespace kbond::engine
