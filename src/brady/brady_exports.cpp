// KVLbradypr, KVLbradyyld, KVLbradydur: price, stripped yield and duration
// of a Brady bond from the straight bond's cash-flow table and accrued
// interest.
#include <cmath>

#include "brady/brady_valuation.h"
#include "engine/catalogue.h"
#include "engine/type_lock.h"
#include "k_bond.h"

namespace {

constexpr int32_t kNoConvergence = 21;
constexpr int32_t kBadRate = 250;
constexpr int32_t kBadPrice = 350;
constexpr int32_t kBadCount = 460;
constexpr int32_t kLockNotObtained = -60;

// The common bond arguments a Brady export passes on.
struct BondWords {
  const double* coupons;
  int32_t n_coupons;
  const int32_t* dates;
  int32_t n_dates;
  int32_t settlement;
  const int32_t* dated_date;
  const int32_t* first_coupon;
  const int32_t* type;
  const int32_t* frequency;
  int32_t n_frequency;
  const double* redemption;
  const double* coupon_tax;
  const int32_t* yield_method;
  const int32_t* bd_flags;
  const int32_t* holidays;
  int32_t n_holidays;
  const double* factor;
  const int32_t* sink_dates;
  int32_t n_sink;
  const int32_t* sink_ends;
  int32_t n_sink_ends;
  const double* sink_amounts;
  const double* sink_premium;
  const int32_t* exdiv_days;
};

bool bad_rate(double rate) { return !(rate >= 0.0) || !std::isfinite(rate); }

// The straight bond's cash-flow table and accrued interest, held for one
// call and released with it.
class BradyBond {
 public:
  BradyBond(const BondWords& w, int32_t* error) noexcept : error_(error), lock_(w.type) {
    // The table and the accrued interest read one view of a custom type.
    if (lock_.failed()) {
      *error_ = kLockNotObtained;
      return;
    }
    const int32_t rows = KVLbcshflw(
        nullptr, &interest_, &principal_, &periods_, w.coupons, w.n_coupons, w.dates, w.n_dates,
        w.settlement, w.dated_date, w.first_coupon, w.type, w.frequency, w.n_frequency,
        w.redemption, w.coupon_tax, nullptr, nullptr, nullptr, nullptr, w.yield_method,
        w.bd_flags, w.holidays, w.n_holidays, w.factor, w.sink_dates, w.n_sink, w.sink_ends,
        w.n_sink_ends, w.sink_amounts, w.sink_premium, w.exdiv_days, error_);
    if (*error_ != 0 || rows < 1) {
      if (*error_ == 0) *error_ = 1;
      return;
    }
    accrued_ = KVLbai1(w.coupons, w.n_coupons, w.dates, w.n_dates, w.settlement, w.dated_date,
                       w.first_coupon, w.type, w.frequency, w.n_frequency, w.coupon_tax, w.factor,
                       w.sink_dates, w.n_sink, w.sink_ends, w.n_sink_ends, w.sink_amounts,
                       w.sink_premium, w.exdiv_days, w.bd_flags, w.holidays, w.n_holidays,
                       error_);
    if (*error_ != 0) return;
    flows_.interest = interest_;
    flows_.principal = principal_;
    flows_.periods = periods_;
    flows_.count = rows;
    flows_.frequency = coupon_frequency(w);
    ready_ = true;
  }

  ~BradyBond() { KVLbcshflw_free(nullptr, interest_, principal_, periods_); }

  BradyBond(const BradyBond&) = delete;
  BradyBond& operator=(const BradyBond&) = delete;

  bool ok() const noexcept { return ready_; }
  const kbond::brady::BradyFlows& flows() const noexcept { return flows_; }
  double accrued() const noexcept { return accrued_; }

 private:
  // The frequency given, else the type's default, else semi-annual.
  static double coupon_frequency(const BondWords& w) noexcept {
    if (w.frequency && w.n_frequency > 0 && w.frequency[0] != 0) return w.frequency[0];
    const int32_t base = w.type ? kbond::engine::bond_type_base(*w.type) : 0;
    const int32_t f = base >= 0 ? kbond::engine::bond_type_frequency(base) : -1;
    return f > 0 ? f : 2.0;
  }

  int32_t* error_;
  kbond::engine::TypeReadGuard lock_;
  double* interest_ = nullptr;
  double* principal_ = nullptr;
  double* periods_ = nullptr;
  kbond::brady::BradyFlows flows_;
  double accrued_ = 0.0;
  bool ready_ = false;
};

// Reads the guarantee count and the collateral switch; false (error 460)
// for a negative count.
bool read_terms(double guarantee_rate, double collateral_yield, const int32_t* guaranteed,
                const int32_t* collateral, kbond::brady::BradyTerms* terms, int32_t* error) {
  terms->guarantee_rate = guarantee_rate;
  terms->collateral_yield = collateral_yield;
  terms->guaranteed = guaranteed ? *guaranteed : 2;
  terms->collateralised = collateral ? *collateral != 0 : true;
  if (terms->guaranteed < 0) {
    *error = kBadCount;
    return false;
  }
  return true;
}

}  // namespace

#define KBOND_BRADY_BOND_WORDS                                                                \
  BondWords {                                                                                  \
    coupons, n_coupons, dates, n_dates, settlement, dated_date, first_coupon, type, frequency, \
        n_frequency, redemption, coupon_tax, yield_method, bd_flags, holidays, n_holidays,     \
        factor, sink_dates, n_sink, sink_ends, n_sink_ends, sink_amounts, sink_premium,        \
        exdiv_days                                                                             \
  }

extern "C" KVL_EXPORT double KVL_API KVLbradypr(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double guarantee_rate, double collateral_yield, double stripped_yield,
    const int32_t* guaranteed, const int32_t* collateral, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    int32_t n_frequency, const double* redemption, const double* coupon_tax,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, const double* factor, const int32_t* sink_dates, int32_t n_sink,
    const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  if (bad_rate(guarantee_rate) || bad_rate(collateral_yield) || bad_rate(stripped_yield)) {
    *err = kBadRate;
    return -1.0;
  }
  kbond::brady::BradyTerms terms;
  if (!read_terms(guarantee_rate, collateral_yield, guaranteed, collateral, &terms, err))
    return -1.0;
  const BradyBond bond(KBOND_BRADY_BOND_WORDS, err);
  if (!bond.ok()) return -1.0;
  return kbond::brady::brady_value(bond.flows(), terms, stripped_yield, nullptr) - bond.accrued();
}

extern "C" KVL_EXPORT double KVL_API KVLbradydur(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double guarantee_rate, double collateral_yield, double stripped_yield,
    const int32_t* guaranteed, const int32_t* collateral, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    int32_t n_frequency, const double* redemption, const double* coupon_tax,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, const double* factor, const int32_t* sink_dates, int32_t n_sink,
    const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  if (bad_rate(guarantee_rate) || bad_rate(collateral_yield) || bad_rate(stripped_yield)) {
    *err = kBadRate;
    return -1.0;
  }
  kbond::brady::BradyTerms terms;
  if (!read_terms(guarantee_rate, collateral_yield, guaranteed, collateral, &terms, err))
    return -1.0;
  const BradyBond bond(KBOND_BRADY_BOND_WORDS, err);
  if (!bond.ok()) return -1.0;
  double weighted = 0.0;
  const double value = kbond::brady::brady_value(bond.flows(), terms, stripped_yield, &weighted);
  if (!(value > 0.0)) {
    *err = 1;
    return -1.0;
  }
  return weighted / (bond.flows().frequency * value);
}

extern "C" KVL_EXPORT double KVL_API KVLbradyyld(
    const double* coupons, int32_t n_coupons, const int32_t* dates, int32_t n_dates,
    int32_t settlement, double price, double guarantee_rate, double collateral_yield,
    const int32_t* guaranteed, const int32_t* collateral, const int32_t* dated_date,
    const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
    int32_t n_frequency, const double* redemption, const double* coupon_tax,
    const int32_t* yield_method, const int32_t* bd_flags, const int32_t* holidays,
    int32_t n_holidays, const double* factor, const int32_t* sink_dates, int32_t n_sink,
    const int32_t* sink_ends, int32_t n_sink_ends, const double* sink_amounts,
    const double* sink_premium, const int32_t* exdiv_days, int32_t* error) {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = 0;
  if (!(price > 0.0) || !std::isfinite(price)) {
    *err = kBadPrice;
    return -1.0;
  }
  if (bad_rate(guarantee_rate) || bad_rate(collateral_yield)) {
    *err = kBadRate;
    return -1.0;
  }
  kbond::brady::BradyTerms terms;
  if (!read_terms(guarantee_rate, collateral_yield, guaranteed, collateral, &terms, err))
    return -1.0;
  const BradyBond bond(KBOND_BRADY_BOND_WORDS, err);
  if (!bond.ok()) return -1.0;
  double stripped = 0.0;
  if (!kbond::brady::solve_stripped_yield(bond.flows(), terms, price + bond.accrued(),
                                          &stripped)) {
    *err = kNoConvergence;
    return -1.0;
  }
  return stripped;
}
