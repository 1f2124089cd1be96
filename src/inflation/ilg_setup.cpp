#include "inflation/ilg_desc.h"

#include <cmath>

#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "engine/catalogue.h"
#include "engine/safe_math.h"

namespace kbond::inflation {

int32_t ilg_exdiv_date(int32_t coupon_date, const dates::BusinessCalendar& cal,
                       const int32_t* override_days) noexcept {
  // The Gilt row of the catalogue (code 40) holds the market rule; an
  // override takes the place of a custom type's ex-dividend field.
  constexpr int32_t kGilt = 40;
  if (override_days == nullptr) return engine::bond_type_exdiv_date(coupon_date, kGilt, cal, nullptr);
  engine::CustomType record;
  record.exdiv_days = *override_days;
  return engine::bond_type_exdiv_date(coupon_date, kGilt, cal, &record);
}

bool ilg_setup(const IlgArgs& args, IlgDesc* desc) noexcept {
  *desc = IlgDesc{};
  // A real coupon is a positive fraction of par; tiny (denormal) values
  // would only overflow the redemption ratio fixed by the last coupon, and
  // neither it nor a coupon payment comes anywhere near 1e100.
  if (!std::isnormal(args.real_coupon) || !(args.real_coupon < engine::kAbsurdMagnitude) ||
      !(args.next_coupon_amount < engine::kAbsurdMagnitude))
    return false;
  if (!(args.real_coupon > 0.0) || !(args.next_coupon_amount > 0.0) || !(args.base_index > 0.0) ||
      !(args.latest_index > 0.0) || !std::isfinite(args.real_coupon) ||
      !std::isfinite(args.next_coupon_amount) || !std::isfinite(args.base_index) ||
      !std::isfinite(args.latest_index) || !std::isfinite(args.latest_index / args.base_index)) {
    return false;
  }
  double inflation = 0.0;
  if (!assumed_inflation(args.inflation, &inflation)) return false;
  if (args.holiday_count < 0) return false;
  if (!dates::valid_serial(args.maturity) || !dates::valid_serial(args.settlement) ||
      args.settlement > args.maturity) {
    return false;
  }
  if (args.extra_date != nullptr && *args.extra_date != 0 && !dates::valid_serial(*args.extra_date)) {
    return false;
  }

  desc->real_coupon = args.real_coupon;
  desc->next_coupon_amount = args.next_coupon_amount * 0.01;
  desc->base_index = args.base_index;
  desc->latest_index = args.latest_index;
  if (!set_indexed_bond(desc, args.maturity, args.settlement, inflation, args.end_of_month,
                        args.pay_on_business_day, args.holiday_options, args.holidays, args.holiday_count)) {
    return false;
  }
  desc->latest_index_date = args.extra_date != nullptr ? *args.extra_date : 0;

  if (!resolve_coupon_period(args.settlement, args.maturity, kIlgMonthsPerPeriod, desc->end_of_month,
                             args.previous_coupon, args.next_coupon, kIlgNearMaturityDays,
                             &desc->period)) {
    return false;
  }
  const CouponPeriod& p = desc->period;

  // Actual/actual over the quasi-coupon period, semi-annual basis.
  const double year_days = dates::year_basis(p.quasi_start, p.next, 2, dates::kActAct);
  desc->accrued_fraction = static_cast<double>(args.settlement - p.previous) / year_days;
  if (desc->accrued_fraction < 0.0) desc->accrued_fraction = 0.0;
  desc->period_fraction = static_cast<double>(p.next - p.previous) / (0.5 * year_days);

  const int32_t exdiv = ilg_exdiv_date(p.next, desc->calendar, args.ex_dividend_override);
  desc->ex_dividend = args.settlement >= exdiv;

  double accrued =
      2.0 * desc->accrued_fraction * desc->next_coupon_amount / desc->period_fraction * 100.0;
  if (desc->ex_dividend) accrued -= desc->next_coupon_amount * 100.0;
  desc->accrued = engine::round_to(accrued, 6);
  return true;
}

}  // namespace kbond::inflation
