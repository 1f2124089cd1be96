// Contracts whose factor is the clean price per unit of face at which the
// deliverable bond yields the notional coupon on the delivery day, priced
// with the conventions of the contract's terms by the straight-bond price
// function.
//
//   MATIF notional contracts on OATs and the LIFFE gilt contracts, on the
//   third-Wednesday timetable; MEFF's Spanish government bond contracts
//   (BTAN-style annual conventions during the December 1998 - November 1999
//   transition); Belfox's Belgian government bond contracts, delivered on
//   the last business day of the month; Porto's Portuguese government bond
//   contract.
#include "dates/business_days.h"
#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "futures/factor_common.h"

namespace kbond::futures {
namespace {

constexpr int32_t kSerial2Mar2000 = 36586;

// Common tail: the delivery day must lie before maturity, then the price.
double priced_factor(const FactorRequest& req, int32_t settlement, const ContractTerms& terms,
                     bool with_coupon_dates, int32_t* error) {
  if (settlement >= req.maturity) return refuse(KVL_ERR_DATE_ORDER, error);
  return price_at_notional(req, settlement, notional_coupon(req, terms), terms.priced_as,
                           with_coupon_dates, error);
}

// The third-Wednesday timetable: delivery on `delivery_day`, time to
// maturity by the date library's year fraction, the bond valued for
// settlement the business day before the third Wednesday.
double third_wednesday_priced(const FactorRequest& req, const Contract& contract,
                              int32_t anchor, int32_t delivery_day, int32_t* error) {
  const ContractTerms& terms = contract.terms_on(delivery_day);
  const double years = dates::year_fraction(delivery_day, req.maturity, dates::kActAct);
  if (req.check_eligibility && !terms.deliverable(years)) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  }
  const int32_t settlement = dates::add_business_days(anchor, -1, req.calendar);
  return priced_factor(req, settlement, terms, true, error);
}

}  // namespace

// MATIF: delivery two business days after the third Wednesday.
double factor_matif(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  const int32_t anchor = third_wednesday(req.delivery_ymd);
  return third_wednesday_priced(req, contract, anchor,
                                dates::add_business_days(anchor, 2, req.calendar), error);
}

// LIFFE gilts: delivery on the third Wednesday, or the business day after.
double factor_liffe_gilt_priced(const FactorRequest& req, const Contract& contract,
                                int32_t* error) noexcept {
  const int32_t anchor = third_wednesday(req.delivery_ymd);
  return third_wednesday_priced(
      req, contract, anchor, dates::adjust_business_day(anchor, dates::kFollowing, req.calendar),
      error);
}

double factor_spain(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  int32_t day = dates::adjust_business_day(third_wednesday(req.delivery_ymd), dates::kFollowing,
                                           req.calendar);
  if (req.delivery > day) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  if (req.check_eligibility && !terms.deliverable(years_by_months(day, req.maturity))) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  }
  return priced_factor(req, day, terms, true, error);
}

double factor_belgium(const FactorRequest& req, const Contract& contract, int32_t* error) noexcept {
  const int32_t month_end = dates::end_of_month(req.delivery);
  int32_t day = dates::adjust_business_day(month_end, dates::kPreceding, req.calendar);
  // A delivery date in the last few days of the month, before the last
  // business day, is taken as given.
  if (req.delivery < day && month_end - req.delivery < 5) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  if (req.check_eligibility && !terms.deliverable(dates::year_fraction(day, req.maturity, dates::k30E_360))) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  }
  return priced_factor(req, day, terms, false, error);
}

// Two business days before the third Wednesday, then four business days on
// (three from March 2000).
double factor_portugal(const FactorRequest& req, const Contract& contract,
                       int32_t* error) noexcept {
  const int32_t back = dates::add_business_days(third_wednesday(req.delivery_ymd), -2, req.calendar);
  int32_t day = dates::add_business_days(back, back < kSerial2Mar2000 ? 4 : 3, req.calendar);
  if (req.delivery > day) day = req.delivery;
  const ContractTerms& terms = contract.terms_on(day);
  if (req.check_eligibility && !terms.deliverable(years_by_months(day, req.maturity))) {
    return refuse(KVL_ERR_NOT_DELIVERABLE, error);
  }
  return priced_factor(req, day, terms, true, error);
}

}  // namespace kbond::futures
