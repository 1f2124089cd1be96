// The cash-and-carry exports: carry, forward price, implied futures price,
// net basis and implied repo rate, each with a `1` variant that takes the
// business-day block.
#include <cmath>

#include "engine/carry.h"
#include "engine/solvers.h"
#include "futures/carry_frame.h"
#include "k_bond.h"

using kbond::engine::bond_desc;
using kbond::futures::BusinessDayBlock;
using kbond::futures::CarryBondTail;
using kbond::futures::CarryCall;
using kbond::engine::CarryTerms;

namespace {

bool is_finite_number(double x) { return std::isfinite(x); }

double price_factor(const bond_desc& desc) {
  return desc.price_factor_flag ? desc.price_factor : 1.0;
}

struct FuturesInputs {
  double price;
  double repo;
  double conversion_factor;
  const double* reinvest;  // NULL or negative: the repo rate
};

// The carry engine at `price` financed at `repo`, reinvesting at
// `reinvest` (NULL or negative: the repo rate).
double carry_at(const bond_desc& desc, const CarryCall& call, double price, double repo,
                const double* reinvest, int32_t* error) {
  CarryTerms terms = call.terms;
  terms.price = price;
  terms.repo = repo;
  terms.reinvest = reinvest && *reinvest >= 0.0 ? *reinvest : repo;
  return kbond::engine::carry_engine(desc, call.args, terms, error);
}

// (price - 100 * carry) / conversion factor; the carry per quoted face.
double implied_futures(const bond_desc& desc, const CarryCall& call, const void* context,
                       int32_t* error) {
  const auto& in = *static_cast<const FuturesInputs*>(context);
  if (!is_finite_number(in.price) || !is_finite_number(in.repo) || !is_finite_number(in.conversion_factor)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  if (in.conversion_factor == 0.0) {
    *error = KVL_ERR_ZERO_DIVISOR;
    return -1.0;
  }
  const double carry = carry_at(desc, call, in.price, in.repo, in.reinvest, error);
  if (*error != 0) return carry;
  return (in.price - 100.0 * carry / price_factor(desc)) / in.conversion_factor;
}

double carry_per_100(const bond_desc& desc, const CarryCall& call, const void* context,
                     int32_t* error) {
  const auto& in = *static_cast<const FuturesInputs*>(context);
  if (!is_finite_number(in.price) || !is_finite_number(in.repo)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double carry = carry_at(desc, call, in.price, in.repo, nullptr, error);
  if (*error != 0) return carry;
  return 100.0 * carry / price_factor(desc);
}

struct RepoInputs {
  double price;
  double futures_price;
  double conversion_factor;
  const double* reinvest;
};

// The repo rate at which the carry equals price - futures x factor.
double implied_repo(const bond_desc& desc, const CarryCall& call, const void* context,
                    int32_t* error) {
  const auto& in = *static_cast<const RepoInputs*>(context);
  if (!is_finite_number(in.price) || !is_finite_number(in.futures_price) || !is_finite_number(in.conversion_factor)) {
    *error = KVL_ERR_INVALID;
    return -1.0;
  }
  const double target =
      (in.price - in.futures_price * in.conversion_factor) * 0.01 * price_factor(desc);
  auto carry_for = [&](double rate, double*) {
    int32_t err = 0;
    const double carry = carry_at(desc, call, in.price, rate, in.reinvest, &err);
    return err != 0 ? std::nan("") : carry;
  };
  // Dates the solver cannot mend: report them as the carry would.
  const double probe = carry_at(desc, call, in.price, 0.0, in.reinvest, error);
  if (*error != 0) return probe;
  return kbond::engine::implied_repo_rate(carry_for, target, error);
}

CarryBondTail make_tail(const int32_t* dated_date, const int32_t* first_coupon,
                        const int32_t* type, const int32_t* frequency, int32_t n_frequency,
                        const double* coupon_tax, const double* factor,
                        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends,
                        int32_t n_sink_ends, const double* sink_amounts,
                        const double* sink_premium, const int32_t* exdiv_days,
                        const double* basis, const int32_t* days, const int32_t* mode) {
  return CarryBondTail{dated_date,   first_coupon, type,       frequency,    n_frequency,
                       coupon_tax,   factor,       sink_dates, n_sink,       sink_ends,
                       n_sink_ends,  sink_amounts, sink_premium, exdiv_days, basis,
                       days,         mode};
}

}  // namespace

#define KBOND_CARRY_TAIL_PARAMS                                                                \
  const int32_t *dated_date, const int32_t *first_coupon, const int32_t *type,                 \
      const int32_t *frequency, int32_t n_frequency, const double *coupon_tax,                 \
      const double *factor, const int32_t *sink_dates, int32_t n_sink, const int32_t *sink_ends, \
      int32_t n_sink_ends, const double *sink_amounts, const double *sink_premium,             \
      const int32_t *exdiv_days, const double *basis, const int32_t *days, const int32_t *mode
#define KBOND_CARRY_TAIL_ARGS                                                                  \
  dated_date, first_coupon, type, frequency, n_frequency, coupon_tax, factor, sink_dates,      \
      n_sink, sink_ends, n_sink_ends, sink_amounts, sink_premium, exdiv_days, basis, days, mode
#define KBOND_BLOCK_PARAMS \
  const int32_t *date_rule, const int32_t *holidays, int32_t n_holidays, const int32_t *calendar_flags

extern "C" {

KVL_EXPORT double KVL_API KVLbcarry1(const double* coupons, int32_t n_coupons,
                                     const int32_t* dates, int32_t n_dates, int32_t settlement,
                                     int32_t end_date, double price, double repo,
                                     KBOND_CARRY_TAIL_PARAMS, KBOND_BLOCK_PARAMS,
                                     int32_t* error) {
  const FuturesInputs in{price, repo, 1.0, nullptr};
  return kbond::futures::run_carry_frame(
      coupons, n_coupons, dates, n_dates, settlement, end_date,
      make_tail(KBOND_CARRY_TAIL_ARGS), BusinessDayBlock{date_rule, holidays, n_holidays, calendar_flags},
      false, carry_per_100, &in, error);
}

KVL_EXPORT double KVL_API KVLbcarry(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    int32_t end_date, double price, double repo,
                                    KBOND_CARRY_TAIL_PARAMS, int32_t* error) {
  return KVLbcarry1(coupons, n_coupons, dates, n_dates, settlement, end_date, price, repo,
                    KBOND_CARRY_TAIL_ARGS, nullptr, nullptr, 0, nullptr, error);
}

KVL_EXPORT double KVL_API KVLbifutp1(const double* coupons, int32_t n_coupons,
                                     const int32_t* dates, int32_t n_dates, int32_t settlement,
                                     double price, double repo, double conversion_factor,
                                     int32_t delivery, const double* reinvest,
                                     KBOND_CARRY_TAIL_PARAMS, KBOND_BLOCK_PARAMS,
                                     int32_t* error) {
  const FuturesInputs in{price, repo, conversion_factor, reinvest};
  return kbond::futures::run_carry_frame(
      coupons, n_coupons, dates, n_dates, settlement, delivery,
      make_tail(KBOND_CARRY_TAIL_ARGS), BusinessDayBlock{date_rule, holidays, n_holidays, calendar_flags},
      false, implied_futures, &in, error);
}

KVL_EXPORT double KVL_API KVLbifutp(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    double price, double repo, double conversion_factor,
                                    int32_t delivery, const double* reinvest,
                                    KBOND_CARRY_TAIL_PARAMS, int32_t* error) {
  return KVLbifutp1(coupons, n_coupons, dates, n_dates, settlement, price, repo,
                    conversion_factor, delivery, reinvest, KBOND_CARRY_TAIL_ARGS, nullptr,
                    nullptr, 0, nullptr, error);
}

KVL_EXPORT double KVL_API KVLbfwd1(const double* coupons, int32_t n_coupons,
                                   const int32_t* dates, int32_t n_dates, int32_t settlement,
                                   int32_t forward_date, double price, double repo,
                                   KBOND_CARRY_TAIL_PARAMS, KBOND_BLOCK_PARAMS, int32_t* error) {
  return KVLbifutp1(coupons, n_coupons, dates, n_dates, settlement, price, repo, 1.0,
                    forward_date, nullptr, KBOND_CARRY_TAIL_ARGS, date_rule, holidays,
                    n_holidays, calendar_flags, error);
}

KVL_EXPORT double KVL_API KVLbfwd(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                  int32_t n_dates, int32_t settlement, int32_t forward_date,
                                  double price, double repo, KBOND_CARRY_TAIL_PARAMS,
                                  int32_t* error) {
  return KVLbfwd1(coupons, n_coupons, dates, n_dates, settlement, forward_date, price, repo,
                  KBOND_CARRY_TAIL_ARGS, nullptr, nullptr, 0, nullptr, error);
}

KVL_EXPORT double KVL_API KVLbnbasis1(const double* coupons, int32_t n_coupons,
                                      const int32_t* dates, int32_t n_dates, int32_t settlement,
                                      int32_t forward_date, double price, double repo,
                                      double futures_price, double conversion_factor,
                                      KBOND_CARRY_TAIL_PARAMS, KBOND_BLOCK_PARAMS,
                                      int32_t* error) {
  int32_t local = 0;
  int32_t* err = error ? error : &local;
  const double forward =
      KVLbfwd1(coupons, n_coupons, dates, n_dates, settlement, forward_date, price, repo,
               KBOND_CARRY_TAIL_ARGS, date_rule, holidays, n_holidays, calendar_flags, err);
  if (*err != 0) return forward;
  if (!is_finite_number(futures_price) || !is_finite_number(conversion_factor)) {
    *err = KVL_ERR_INVALID;
    return -1.0;
  }
  // An invoice price (futures price x factor) beyond a double is no basis.
  const double net_basis = forward - futures_price * conversion_factor;
  if (!is_finite_number(net_basis)) {
    *err = KVL_ERR_INVALID;
    return -1.0;
  }
  return net_basis;
}

KVL_EXPORT double KVL_API KVLbnbasis(const double* coupons, int32_t n_coupons,
                                     const int32_t* dates, int32_t n_dates, int32_t settlement,
                                     int32_t forward_date, double price, double repo,
                                     double futures_price, double conversion_factor,
                                     KBOND_CARRY_TAIL_PARAMS, int32_t* error) {
  return KVLbnbasis1(coupons, n_coupons, dates, n_dates, settlement, forward_date, price, repo,
                     futures_price, conversion_factor, KBOND_CARRY_TAIL_ARGS, nullptr, nullptr,
                     0, nullptr, error);
}

KVL_EXPORT double KVL_API KVLbirepo1(const double* coupons, int32_t n_coupons,
                                     const int32_t* dates, int32_t n_dates, int32_t settlement,
                                     double price, double futures_price,
                                     double conversion_factor, int32_t delivery,
                                     const double* reinvest, KBOND_CARRY_TAIL_PARAMS,
                                     KBOND_BLOCK_PARAMS, int32_t* error) {
  const RepoInputs in{price, futures_price, conversion_factor, reinvest};
  return kbond::futures::run_carry_frame(
      coupons, n_coupons, dates, n_dates, settlement, delivery,
      make_tail(KBOND_CARRY_TAIL_ARGS), BusinessDayBlock{date_rule, holidays, n_holidays, calendar_flags},
      true, implied_repo, &in, error);
}

KVL_EXPORT double KVL_API KVLbirepo(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    double price, double futures_price, double conversion_factor,
                                    int32_t delivery, const double* reinvest,
                                    KBOND_CARRY_TAIL_PARAMS, int32_t* error) {
  return KVLbirepo1(coupons, n_coupons, dates, n_dates, settlement, price, futures_price,
                    conversion_factor, delivery, reinvest, KBOND_CARRY_TAIL_ARGS, nullptr,
                    nullptr, 0, nullptr, error);
}

}  // extern "C"
