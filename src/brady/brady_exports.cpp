// KVLbradypr, KVLbradyyld, KVLbradydur: price, stripped yield and duration
// of a Brady bond from the straight bond's cash-flow table and accrued
// interest.
#include <cmath>
#include <memory>
#include <new>

#include "engine/cash_flow_walk.h"
#include "brady/brady_valuation.h"
#include "engine/call_frame.h"
#include "engine/market_rules.h"
#include "engine/shortened_bond.h"
#include "engine/catalogue.h"
#include "k_bond.h"

namespace {

bool bad_rate(double rate) { return !(rate >= 0.0) || !std::isfinite(rate); }

// The straight bond's cash-flow table and accrued interest from one
// description, held for one call.
class BradyBond {
 public:
  // `args` carries the caller's bond type; municipals that ignore odd
  // coupons and Canadian bonds under Bank of Canada conventions pay the
  // cash flows and accrue the interest of their plain counterparts.
  BradyBond(const kbond::engine::bond_args& args, int32_t* error) noexcept
      : flow_type_(args.type ? kbond::engine::accrual_substitute(*args.type) : 0),
        call_(with_flow_type(args), error) {
    if (!call_.ok()) return;
    const kbond::engine::bond_desc& bond = call_.desc();
    const int32_t rows = kbond::engine::cash_flow_rows(bond);
    const std::size_t column = static_cast<std::size_t>(rows > 0 ? rows : 1);
    columns_.reset(new (std::nothrow) double[3 * column]);
    if (!columns_) {
      call_.error() = KVL_ERR_NO_MEMORY;
      return;
    }
    if (rows < 1) {
      call_.error() = KVL_ERR_INVALID;
      return;
    }
    // A holder at par: the table's principal is net of any tax on a gain
    // over 100.
    double* interest = columns_.get();
    double* principal = interest + column;
    double* periods = principal + column;
    kbond::engine::fill_cash_flow_columns(bond, 100.0, rows,
                                        {nullptr, interest, principal, periods});
    flows_ = {interest, principal, periods, rows, coupon_frequency(args)};
    accrued_ = kbond::engine::accrued_per_100(bond.accrued, bond.type);
    // The accrued interest is the straight bond's (KVLbai1's), which takes
    // no redemption override and no yield method: a description that stands
    // only with them is refused as KVLbai1 refuses it.
    if (args.redemption || args.yield_method) {
      kbond::engine::bond_args accrual = with_flow_type(args);
      accrual.redemption = nullptr;
      accrual.yield_method = nullptr;
      const kbond::engine::ScopedDescription plain(accrual);
      if (plain.status != 0) {
        call_.error() = plain.status;
        return;
      }
      accrued_ = kbond::engine::accrued_per_100(plain.desc.accrued, plain.desc.type);
    }
    ready_ = true;
  }

  bool ok() const noexcept { return ready_; }
  const kbond::brady::BradyFlows& flows() const noexcept { return flows_; }
  double accrued() const noexcept { return accrued_; }

 private:
  kbond::engine::bond_args with_flow_type(kbond::engine::bond_args args) const noexcept {
    if (args.type) args.type = &flow_type_;
    return args;
  }

  // The frequency given, else the type's default, else semi-annual.
  static double coupon_frequency(const kbond::engine::bond_args& a) noexcept {
    if (a.frequency && a.n_frequency > 0 && a.frequency[0] != 0) return a.frequency[0];
    const int32_t base = a.type ? kbond::engine::bond_type_base(*a.type) : 0;
    const int32_t f = base >= 0 ? kbond::engine::bond_type_frequency(base) : -1;
    return f > 0 ? f : 2.0;
  }

  int32_t flow_type_;
  // The table reads the custom type's conventions: the lock is held to the end.
  kbond::engine::BondCall call_;
  std::unique_ptr<double[]> columns_;
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
    *error = KVL_ERR_OUT_OF_SET;
    return false;
  }
  return true;
}

// The checks and set-up the three exports share: `rejected` is the code of
// the export's own first check (0 when it passed), then the guarantee and
// collateral rates, the terms and the bond; `compute(bond, terms, err)` runs
// on success. Failure value -1.0.
template <class Compute>
double run_brady(int32_t rejected, const kbond::engine::bond_args& args, double guarantee_rate,
                 double collateral_yield, const int32_t* guaranteed, const int32_t* collateral,
                 int32_t* error, Compute&& compute) noexcept {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  *err = rejected;
  if (*err == 0 && (bad_rate(guarantee_rate) || bad_rate(collateral_yield))) *err = KVL_ERR_BAD_RATE;
  if (*err != 0) return -1.0;
  kbond::brady::BradyTerms terms;
  if (!read_terms(guarantee_rate, collateral_yield, guaranteed, collateral, &terms, err))
    return -1.0;
  const BradyBond bond(args, err);
  if (!bond.ok()) return -1.0;
  return compute(bond, terms, *err);
}

}  // namespace

// The common bond arguments of the three exports, in their order.
#define KBOND_BRADY_BOND_ARGS                                                                  \
  kbond::engine::bond_args {                                                                   \
    .coupons = coupons, .n_coupons = n_coupons, .dates = dates, .n_dates = n_dates,            \
    .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,          \
    .type = type, .frequency = frequency, .n_frequency = n_frequency,                          \
    .redemption = redemption, .coupon_tax = coupon_tax, .yield_method = yield_method,          \
    .bd_flags = bd_flags, .holidays = holidays, .n_holidays = n_holidays, .factor = factor,    \
    .sink_dates = sink_dates, .n_sink = n_sink, .sink_ends = sink_ends,                        \
    .n_sink_ends = n_sink_ends, .sink_amounts = sink_amounts, .sink_premium = sink_premium,    \
    .exdiv_days = exdiv_days                                                                   \
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
  return run_brady(bad_rate(stripped_yield) ? KVL_ERR_BAD_RATE : 0, KBOND_BRADY_BOND_ARGS,
                   guarantee_rate, collateral_yield, guaranteed, collateral, error,
                   [&](const BradyBond& bond, const kbond::brady::BradyTerms& terms, int32_t&) {
                     return kbond::brady::brady_value(bond.flows(), terms, stripped_yield, nullptr) -
                            bond.accrued();
                   });
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
  return run_brady(bad_rate(stripped_yield) ? KVL_ERR_BAD_RATE : 0, KBOND_BRADY_BOND_ARGS,
                   guarantee_rate, collateral_yield, guaranteed, collateral, error,
                   [&](const BradyBond& bond, const kbond::brady::BradyTerms& terms, int32_t& err) {
                     double weighted = 0.0;
                     const double value =
                         kbond::brady::brady_value(bond.flows(), terms, stripped_yield, &weighted);
                     if (!(value > 0.0)) {
                       err = KVL_ERR_INVALID;
                       return -1.0;
                     }
                     return weighted / (bond.flows().frequency * value);
                   });
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
  const bool bad_price = !(price > 0.0) || !std::isfinite(price);
  return run_brady(bad_price ? KVL_ERR_BAD_PRICE : 0, KBOND_BRADY_BOND_ARGS, guarantee_rate,
                   collateral_yield, guaranteed, collateral, error,
                   [&](const BradyBond& bond, const kbond::brady::BradyTerms& terms, int32_t& err) {
                     double stripped = 0.0;
                     if (!kbond::brady::solve_stripped_yield(bond.flows(), terms,
                                                             price + bond.accrued(), &stripped)) {
                       err = KVL_ERR_NO_CONVERGENCE;
                       return -1.0;
                     }
                     return stripped;
                   });
}
