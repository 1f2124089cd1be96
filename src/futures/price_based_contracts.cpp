// Contracts whose factor is the clean price per unit of face at which the
// deliverable bond yields the notional coupon on the delivery day, priced
// with the bond's own market conventions by the straight-bond price
// function.
//
//   family 1  MATIF notional contracts on OATs (type 81) and the LIFFE gilt
//             contracts (type 40) on the third-Wednesday timetable; 6 dp.
//   family 5  MEFF Spanish government bond contracts (BTAN-style annual
//             type 80 during the December 1998 - November 1999 transition,
//             Spanish type 280 otherwise); 7 dp.
//   family 8  Belfox Belgian government bond contracts (type 120),
//             delivered on the last business day of the month; 4 dp.
//   family 12 Porto's Portuguese government bond contract (types 700 and
//             701, the Portuguese conventions the exchange fixed); 7 dp.
#include "dates/business_days.h"
#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/safe_math.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kGilt = 40;
constexpr int32_t kSpanishBtanStyle = 80;
constexpr int32_t kOat = 81;
constexpr int32_t kBelgianGovernmentBond = 120;
constexpr int32_t kSpanishGovernmentBond = 280;
constexpr int32_t kPortugueseFuturesOld = 700;
constexpr int32_t kPortugueseFutures = 701;

constexpr int32_t kSerial1Mar1998 = 35854;
constexpr int32_t kSerial1Dec1998 = 36129;
constexpr int32_t kSerial1Mar1999 = 36219;
constexpr int32_t kSerial1May1999 = 36280;
constexpr int32_t kSerial1Sep1999 = 36403;
constexpr int32_t kSerial1Dec1999 = 36494;
constexpr int32_t kSerial2Mar2000 = 36586;

double refuse(int32_t code, int32_t* error) {
  *error = code;
  return -1.0;
}

// Common tail: the delivery day must lie before maturity, then the price.
double priced_factor(const FactorRequest& req, int32_t settlement, double n, int32_t type,
                     bool with_coupon_dates, int decimals, int32_t* error) {
  if (settlement >= req.maturity) return refuse(kErrDateOrder, error);
  const double f = price_at_notional(req, settlement, n, type, with_coupon_dates, error);
  if (*error != 0) return -1.0;
  return engine::round_to(f, decimals);
}

// Family 1: notional coupon and deliverable years per contract rule.
//   2  LIFFE long gilt      7 %,  8.75 to 13 years
//   3  LIFFE medium gilt    7 %,  4 to 7 years
//   4  MATIF Euro notional  5.5 %, 8.5 to 10.5 years
//   5  MATIF notional (the 10 % contract), 8.5 to 10.5 years
//   6  MATIF 5-year         4.5 %, 3.5 to 5.5 years
//   7  MATIF 30-year        5.5 %, 25 to 35 years
//   8  MATIF Euro notional with the old 6-10 year basket kept alongside,
//                           5.5 %, 8.5 to 10.5 or 6 to 10 years
//   9  MATIF 2-year         3.5 %, 1.5 to 2.5 years
// Bounds are inclusive at both ends, as the exchanges word their baskets
// ("between 8.5 and 10.5 years").
struct OatRule {
  double notional;
  double low, high;
  double alt_low, alt_high;  // a second basket, empty when alt_low > alt_high
};

bool oat_rule(int32_t rule, OatRule* out) {
  switch (rule) {
    case 2: *out = {0.07, 8.75, 13.0, 1.0, 0.0}; return true;
    case 3: *out = {0.07, 4.0, 7.0, 1.0, 0.0}; return true;
    case 4: *out = {0.055, 8.5, 10.5, 1.0, 0.0}; return true;
    case 5: *out = {0.10, 8.5, 10.5, 1.0, 0.0}; return true;
    case 6: *out = {0.045, 3.5, 5.5, 1.0, 0.0}; return true;
    case 7: *out = {0.055, 25.0, 35.0, 1.0, 0.0}; return true;
    case 8: *out = {0.055, 8.5, 10.5, 6.0, 10.0}; return true;
    case 9: *out = {0.035, 1.5, 2.5, 1.0, 0.0}; return true;
    default: return false;
  }
}

}  // namespace

double factor_price_oat_gilt(const FactorRequest& req, int32_t* error) noexcept {
  OatRule rule{};
  if (!oat_rule(req.rule, &rule)) return refuse(kErrContract, error);
  const bool gilt = req.rule == 2 || req.rule == 3;
  double n = 0.0;
  if (!notional_coupon(req, rule.notional, true, &n, error)) return -1.0;
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) return refuse(kErrBadDate, error);
  const int32_t anchor = third_wednesday(delivery);
  const int32_t delivery_day =
      gilt ? dates::adjust_business_day(anchor, dates::kFollowing, req.calendar)
           : dates::add_business_days(anchor, 2, req.calendar);
  const double years = dates::year_fraction(delivery_day, req.maturity, 0);
  if (req.check_eligibility && !within(years, rule.low, rule.high) &&
      !within(years, rule.alt_low, rule.alt_high)) {
    return refuse(kErrNotDeliverable, error);
  }
  // The bond is valued for settlement the business day before the anchor.
  const int32_t settlement = dates::add_business_days(anchor, -1, req.calendar);
  return priced_factor(req, settlement, n, gilt ? kGilt : kOat, true, 6, error);
}

double factor_spain(const FactorRequest& req, int32_t* error) noexcept {
  if (req.rule != 15 && req.rule != 16 && req.rule != 17) return refuse(kErrContract, error);
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) return refuse(kErrBadDate, error);
  int32_t day =
      dates::adjust_business_day(third_wednesday(delivery), dates::kFollowing, req.calendar);
  if (req.delivery > day) day = req.delivery;
  const int32_t type =
      day >= kSerial1Dec1998 && day < kSerial1Dec1999 ? kSpanishBtanStyle : kSpanishGovernmentBond;
  const double years = years_by_months(day, req.maturity);
  double standard = 0.0, low = 0.0, high = 1e9;
  if (req.rule == 16) {
    standard = day <= kSerial1May1999 ? 0.065 : 0.04;
    low = 7.5, high = 10.5;
  } else if (req.rule == 15) {
    standard = 0.065;
    low = 15.0;
  } else if (day >= kSerial1Mar1998) {
    standard = 0.055;
    low = 3.5, high = 5.5;
  } else {
    standard = 0.07;
    low = 2.0, high = 3.5;
  }
  double n = 0.0;
  if (!notional_coupon(req, standard, true, &n, error)) return -1.0;
  if (req.check_eligibility && !within(years, low, high)) return refuse(kErrNotDeliverable, error);
  return priced_factor(req, day, n, type, true, 7, error);
}

double factor_belgium(const FactorRequest& req, int32_t* error) noexcept {
  double standard = 0.0, low = 0.0, high = 0.0;
  if (req.rule == 23) {
    standard = 0.09, low = 7.0, high = 10.0;
  } else if (req.rule == 24) {
    standard = 0.05, low = 3.5, high = 5.5;
  } else {
    return refuse(kErrContract, error);
  }
  double n = 0.0;
  if (!notional_coupon(req, standard, true, &n, error)) return -1.0;
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) return refuse(kErrBadDate, error);
  const int32_t month_end = dates::end_of_month(req.delivery);
  int32_t day = dates::adjust_business_day(month_end, dates::kPreceding, req.calendar);
  // A delivery date in the last few days of the month, before the last
  // business day, is taken as given.
  if (req.delivery < day && month_end - req.delivery < 5) day = req.delivery;
  const double years = dates::year_fraction(day, req.maturity, 2);
  if (req.check_eligibility && !within(years, low, high)) return refuse(kErrNotDeliverable, error);
  return priced_factor(req, day, n, kBelgianGovernmentBond, false, 4, error);
}

double factor_portugal(const FactorRequest& req, int32_t* error) noexcept {
  if (req.rule != 28) return refuse(kErrContract, error);
  CivilDate delivery;
  if (!split_date(req.delivery, &delivery)) return refuse(kErrBadDate, error);
  const int32_t back = dates::add_business_days(third_wednesday(delivery), -2, req.calendar);
  int32_t day = dates::add_business_days(back, back < kSerial2Mar2000 ? 4 : 3, req.calendar);
  if (req.delivery > day) day = req.delivery;
  const int32_t type = day < kSerial1Mar1999 ? kPortugueseFuturesOld : kPortugueseFutures;
  const double years = years_by_months(day, req.maturity);
  double low = 6.5, high = 99.0;
  if (day >= kSerial1Sep1999) {
    low = 7.5, high = 10.5;
  } else if (day >= kSerial1Mar1999) {
    high = 11.0;
  }
  double n = 0.0;
  if (!notional_coupon(req, day < kSerial1Sep1999 ? 0.065 : 0.045, true, &n, error)) return -1.0;
  if (req.check_eligibility && !within(years, low, high)) return refuse(kErrNotDeliverable, error);
  return priced_factor(req, day, n, type, true, 7, error);
}

}  // namespace kbond::futures
