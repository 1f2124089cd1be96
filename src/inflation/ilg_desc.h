// Index-linked gilts (8-month indexation lag): the validated description of
// one bond and the set-up that fills it from an export's arguments.
//
// An index-linked gilt pays semi-annual coupons and a redemption scaled by
// RPI(payment month - 8) / RPI(base month). The next coupon is always known
// when the bond trades, so the caller passes it in cash; later flows are
// projected from the latest published index at an assumed annual inflation
// rate (3 % unless the caller gives one), as the UK Debt Management Office's
// price/yield formula does.
//
// Gilts go ex-dividend seven business days before the coupon: a settlement on
// or after the day after that date receives no coupon, and its accrued
// interest is negative.
#pragma once
#include <cstdint>

#include "dates/business_days.h"
#include "inflation/indexed_bond.h"

namespace kbond::inflation {

inline constexpr int32_t kIlgMonthsPerPeriod = 6;
// A next coupon within this many days of maturity is paid with the redemption.
inline constexpr int32_t kIlgNearMaturityDays = 27;
inline constexpr double kGiltMoneyMarketBasis = 365.0;

// The arguments every ilg export passes to the set-up (NULL = absent).
struct IlgArgs {
  double real_coupon = 0.0;          // annual rate before indexation, fraction of par
  double next_coupon_amount = 0.0;   // cash per 100 nominal, already fixed
  double base_index = 0.0;
  double latest_index = 0.0;
  int32_t maturity = 0;
  int32_t settlement = 0;
  const int32_t* previous_coupon = nullptr;
  const int32_t* next_coupon = nullptr;
  const double* inflation = nullptr;
  const int32_t* pay_on_business_day = nullptr;
  const int32_t* holiday_options = nullptr;
  const int32_t* holidays = nullptr;
  int32_t holiday_count = 0;
  const int32_t* ex_dividend_override = nullptr;
  const int32_t* end_of_month = nullptr;
  const int32_t* extra_date = nullptr;  // month of the latest index (the "2" variants)
};

struct IlgDesc : IndexedBond {
  double real_coupon = 0.0;
  double next_coupon_amount = 0.0;  // fraction of par (cash per 100 x 0.01)
  double base_index = 0.0;
  double latest_index = 0.0;
  int32_t latest_index_date = 0;  // 0: the index month two months before settlement
  bool ex_dividend = false;
  double period_fraction = 0.0;   // current period over a regular half-year
};

// Ex-dividend date of coupon date `coupon_date`: the day after the date seven
// business days before it on the holiday list. An override n >= 1 means n
// business days before the coupon (with the weekend options), n < 1 the
// coupon date plus n calendar days.
int32_t ilg_exdiv_date(int32_t coupon_date, const dates::BusinessCalendar& cal,
                       const int32_t* override_days) noexcept;

// Validates the arguments and fills `desc`; false (error 1) when invalid.
bool ilg_setup(const IlgArgs& args, IlgDesc* desc) noexcept;

}  // namespace kbond::inflation
