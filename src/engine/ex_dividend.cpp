// Ex-dividend dates: how long before a coupon date each market stops
// paying the coupon to the buyer. Settlement on or after the ex-dividend
// date of the next coupon buys the bond without that coupon.
#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/catalogue.h"
#include "engine/catalogue_table.h"

namespace kbond::engine {
namespace {

using dates::BusinessCalendar;

// A custom period: n < 1 shifts by n calendar days (n is zero or negative),
// n >= 1 steps n business days back on the caller's calendar.
int32_t custom_exdiv(int32_t coupon_date, int32_t n, const BusinessCalendar& cal) noexcept {
  if (n < 1) return coupon_date + n;
  return dates::add_business_days(coupon_date, -n, cal);
}

// Pre-EMU Austrian bonds: a coupon paid from the 10th to the 24th went ex on
// the month's first Monday; otherwise the date is counted from the 14th of
// the coupon month (of the month before for coupons before the 10th).
int32_t austrian_exdiv(int32_t coupon_date) noexcept {
  int32_t day = 0, month = 0, year = 0;
  if (dates::serial_to_date(coupon_date, &day, &month, &year) != 0) return coupon_date;
  if (day >= 10 && day <= 24) {
    const int32_t monday = dates::nth_weekday_of_month(1, dates::kMonday, month, year, 0);
    return monday > 0 ? monday : coupon_date;
  }
  if (day < 10) {
    if (--month < 1) {
      month = 12;
      --year;
    }
  }
  const int32_t fourteenth = dates::date_to_serial(14, month, year);
  if (fourteenth < 0) return coupon_date;
  int32_t shift = (dates::weekday_of(fourteenth) + 4) % 7;
  if (shift == 0) shift = 7;
  return fourteenth + shift;
}

int32_t market_exdiv(int32_t d, const CatalogueRow& row, const BusinessCalendar& cal) noexcept {
  switch (row.exdiv_rule) {
    case ExdivRule::kNone:
      return d;
    case ExdivRule::kCalendarDays:
      return d - row.exdiv_param;
    case ExdivRule::kBusinessDays:
      return dates::add_business_days(d, -row.exdiv_param, cal);
    case ExdivRule::kBusinessDaysPlusOne: {
      // Gilts: seven business days back from the coupon, then one day on;
      // the London market's weekends are closed whatever the caller's flags.
      const BusinessCalendar weekdays{cal.holidays, cal.count, 0, 0};
      return dates::add_business_days(d, -row.exdiv_param, weekdays) + 1;
    }
    case ExdivRule::kBusinessDaysSaturdayMinusOne: {
      // Indian government securities also traded on Saturdays, so Saturday
      // counts as a business day here.
      const BusinessCalendar with_saturday{cal.holidays, cal.count, 1, 0};
      return dates::add_business_days(d, -row.exdiv_param, with_saturday) - 1;
    }
    case ExdivRule::kMonthBack:
      return dates::add_months(d, -1, 0);
    case ExdivRule::kMonthBackEom:
      return dates::add_months(d, -1, 1);
    case ExdivRule::kIrish:
      // The Wednesday of the coupon's week (weeks run Saturday to Friday),
      // three weeks earlier.
      return d - 21 + (dates::kWednesday - dates::weekday_of(d));
    case ExdivRule::kAustrian:
      return austrian_exdiv(d);
  }
  return d;
}

}  // namespace

int32_t bond_type_exdiv_date(int32_t coupon_date, int32_t base, const BusinessCalendar& cal,
                             const CustomType* override_record) noexcept {
  if (coupon_date <= 0) return coupon_date;
  if (override_record) return custom_exdiv(coupon_date, override_record->exdiv_days, cal);
  return bond_type_exdiv_date(coupon_date, bond_type_ref(base), cal, nullptr);
}

int32_t bond_type_exdiv_date(int32_t coupon_date, const BondTypeRef& type,
                             const BusinessCalendar& cal,
                             const CustomType* override_record) noexcept {
  if (coupon_date <= 0) return coupon_date;
  if (override_record) return custom_exdiv(coupon_date, override_record->exdiv_days, cal);
  if (type.row) return market_exdiv(coupon_date, *type.row, cal);
  if (type.custom) return custom_exdiv(coupon_date, type.custom->exdiv_days, cal);
  return coupon_date;
}

}  // namespace kbond::engine
