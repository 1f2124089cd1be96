// Taxes of one valuation: income tax on coupons and accrued interest, and a
// tax on the gain from price to redemption, charged at maturity.
//
// A gain realised within the holding period (12 months unless the caller
// says otherwise; a holding above 24 is a number of days) is taxed as income
// when the note is subject to gains tax at all.
#pragma once
#include <cstdint>

namespace kbond::frn {

struct FrnTax {
  double income_keep = 1.0;  // 1 - income tax rate
  double gain_rate = 0.0;    // rate on the gain to redemption
};

// 0, or 250 (a tax rate negative or not a number), 460 (negative holding).
int32_t build_frn_tax(int32_t settlement, int32_t maturity, const double* income_tax,
                      const double* gain_tax, const int32_t* holding, FrnTax* tax) noexcept;

}  // namespace kbond::frn
