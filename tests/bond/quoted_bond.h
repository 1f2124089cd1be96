// A straight bond held as the common bond arguments, with one method per
// export so that tests read as the market question they ask:
//
//   QuotedBond gilt(40, 0.0425, ymd(2032, 6, 7), ymd(2024, 3, 12));
//   double y = gilt.yield(98.5);
//
// Every optional pointer argument is NULL unless its field is set, as
// callers pass them; issue price and sinking premium are always NULL.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {

constexpr int32_t ymd(int y, unsigned m, unsigned d) { return civil_serial(y, m, d); }

template <class T>
const T* opt(const std::optional<T>& v) { return v ? &*v : nullptr; }
template <class T>
const T* arr(const std::vector<T>& v) { return v.empty() ? nullptr : v.data(); }
template <class T>
int32_t len(const std::vector<T>& v) { return static_cast<int32_t>(v.size()); }

// Argument groups in the order the exports take them.
#define KB_BOND rates.data(), len(rates), dates.data(), len(dates), settlement
#define KB_DESC opt(dated), opt(first), &type, arr(frequency), len(frequency)
#define KB_TAX opt(coupon_tax), opt(discount_tax), opt(horizon), nullptr
#define KB_BD opt(bd_flags), arr(holidays), len(holidays)
#define KB_SINK \
  opt(factor), arr(sink_dates), len(sink_dates), arr(sink_ends), len(sink_ends), \
      arr(sink_amounts), nullptr
#define KB_TAIL opt(method), KB_BD, KB_SINK, opt(exdiv)

struct QuotedBond {
  int32_t type = 0;
  std::vector<double> rates{0.05};
  std::vector<int32_t> dates{0};  // last = maturity
  int32_t settlement = 0;
  std::optional<int32_t> dated, first, horizon, method, bd_flags, exdiv;
  std::vector<int32_t> frequency;  // {coupon} or {coupon, sinking fund}
  std::optional<double> redemption, coupon_tax, discount_tax, factor;
  std::vector<int32_t> holidays, sink_dates, sink_ends;
  std::vector<double> sink_amounts;

  QuotedBond() = default;
  QuotedBond(int32_t t, double rate, int32_t maturity, int32_t settle)
      : type(t), rates{rate}, dates{maturity}, settlement(settle) {}
  QuotedBond at(int32_t settle) const { QuotedBond b = *this; b.settlement = settle; return b; }
  int32_t maturity() const { return dates.back(); }

  double price(double y, int32_t* e = nullptr) const {
    return KVLbpr(KB_BOND, y, KB_DESC, opt(redemption), KB_TAX, KB_TAIL, e);
  }
  double yield(double clean, int32_t* e = nullptr) const {
    return KVLbyld(KB_BOND, clean, KB_DESC, opt(redemption), KB_TAX, KB_TAIL, e);
  }
  double accrued(int32_t* e = nullptr) const {
    return KVLbai(KB_BOND, KB_DESC, opt(coupon_tax), KB_SINK, opt(exdiv), e);
  }
  double accrued1(int32_t* e = nullptr) const {
    return KVLbai1(KB_BOND, KB_DESC, opt(coupon_tax), KB_SINK, opt(exdiv), KB_BD, e);
  }
  double duration(double y, const int32_t* kind = nullptr, int32_t* e = nullptr) const {
    return KVLbdur(KB_BOND, y, KB_DESC, opt(redemption), kind, KB_TAX, KB_TAIL, e);
  }
  double convexity(double y, int32_t* e = nullptr) const {
    return KVLbconv(KB_BOND, y, KB_DESC, opt(redemption), KB_TAX, KB_TAIL, e);
  }
  double value_of_bp(double y, const double* scale = nullptr, int32_t* e = nullptr) const {
    return KVLbvalbp(KB_BOND, y, KB_DESC, opt(redemption), KB_TAX, scale, KB_TAIL, e);
  }
  double value_of_tick(double y, const double* ticks = nullptr, int32_t* e = nullptr) const {
    return KVLbval32(KB_BOND, y, KB_DESC, opt(redemption), KB_TAX, ticks, KB_TAIL, e);
  }
  double coupon_amount(int32_t* e = nullptr) const {
    return KVLbcamt(KB_BOND, KB_DESC, opt(coupon_tax), KB_SINK, e);
  }
  // The cash-flow table; `clean` NULL for 100.
  int32_t cash_flows(int32_t** d, double** c, double** p, double** t,
                     const double* clean = nullptr, int32_t* e = nullptr) const {
    return KVLbcshflw(d, c, p, t, KB_BOND, KB_DESC, opt(redemption), KB_TAX, clean, KB_TAIL, e);
  }
  double horizon_yield(double clean, int32_t date, double sale, int32_t* e = nullptr) const {
    return KVLbhyld(KB_BOND, clean, date, sale, KB_DESC, KB_TAX, KB_TAIL, e);
  }
  double realized_yield(double clean, double rate, int32_t* e = nullptr) const {
    return KVLbryld(KB_BOND, clean, rate, KB_DESC, opt(redemption), KB_TAX, opt(method), KB_BD, e);
  }
  double yield_to_worst(double clean, const std::vector<int32_t>& calls,
                        const std::vector<double>& prices, int32_t* e = nullptr) const {
    return KVLbyworst(KB_BOND, clean, KB_DESC, arr(calls), len(calls), arr(prices), len(prices),
                      opt(coupon_tax), opt(discount_tax), opt(horizon), KB_TAIL, e);
  }
  double yield_to_average_life(double clean, int32_t* e = nullptr) const {
    return KVLbyldal(KB_BOND, clean, KB_DESC, opt(redemption), KB_TAX, opt(method), KB_SINK, e);
  }
  double remaining_life(double value, int32_t* e = nullptr) const {
    return KVLbel(KB_BOND, value, KB_DESC, opt(redemption), KB_TAX, KB_TAIL, e);
  }
  double average_life(int32_t* e = nullptr) const {
    return KVLbal(maturity(), settlement, KB_DESC, opt(redemption), KB_SINK, e);
  }
};

#undef KB_BOND
#undef KB_DESC
#undef KB_TAX
#undef KB_BD
#undef KB_SINK
#undef KB_TAIL

// 10 % of the initial face repaid each 15 June from 2026, the last 20 % at
// maturity on 15 June 2034: 6 % semi-annual, unrounded (type 500).
inline QuotedBond sinking_fund(int32_t settle) {
  QuotedBond b(500, 0.06, ymd(2034, 6, 15), settle);
  b.frequency = {2, 1};
  b.factor = 1.0;
  b.sink_dates = {ymd(2026, 6, 15)};
  b.sink_amounts = {0.10};
  return b;
}

}  // namespace kbond::testing
