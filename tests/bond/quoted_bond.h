// A straight bond described by the common bond arguments, with one method
// per export so that tests read as the market question they ask:
//
//   QuotedBond gilt{.type = 40};
//   gilt.coupon(0.0425).matures(civil_serial(2032, 6, 7)).settles(civil_serial(2024, 3, 12));
//   double y = gilt.yield(98.5);
//
// Every pointer argument is given only when its field is set, so a default
// QuotedBond passes NULL for every optional argument, as callers do.
#pragma once
#include <cstdint>
#include <vector>

#include "engine/civil_serial.h"
#include "k_bond.h"

namespace kbond::testing {

struct QuotedBond {
  int32_t type = 0;
  std::vector<double> rates{0.05};
  std::vector<int32_t> dates{0};  // last = maturity
  int32_t settlement = 0;
  int32_t dated_date = 0;         // 0: not given
  int32_t first_coupon = 0;
  int32_t frequency = 0;          // 0: the type's default
  int32_t sink_frequency = 0;
  bool has_redemption = false;
  double redemption = 100.0;
  bool has_coupon_tax = false;
  double coupon_tax = 0.0;
  bool has_discount_tax = false;
  double discount_tax = 0.0;
  bool has_horizon = false;
  int32_t horizon = 0;
  int32_t yield_method = 0;       // 0: not given
  bool has_bd_flags = false;
  int32_t bd_flags = 0;
  std::vector<int32_t> holidays;
  double factor = 0.0;            // 0: no sinking fund
  std::vector<int32_t> sink_dates;
  std::vector<int32_t> sink_ends;
  std::vector<double> sink_amounts;
  bool has_exdiv_days = false;
  int32_t exdiv_days = 0;

  QuotedBond& coupon(double rate) { rates = {rate}; return *this; }
  QuotedBond& matures(int32_t maturity) { dates = {maturity}; return *this; }
  QuotedBond& settles(int32_t date) { settlement = date; return *this; }
  int32_t maturity() const { return dates.back(); }

  // Pointer arguments, NULL when the field is not set.
  const int32_t* p_type() const { return &type; }
  const int32_t* p_dated() const { return dated_date ? &dated_date : nullptr; }
  const int32_t* p_first() const { return first_coupon ? &first_coupon : nullptr; }
  const int32_t* p_freq() const { return frequency_pair(); }
  int32_t n_freq() const { return sink_frequency ? 2 : (frequency ? 1 : 0); }
  const double* p_redemption() const { return has_redemption ? &redemption : nullptr; }
  const double* p_coupon_tax() const { return has_coupon_tax ? &coupon_tax : nullptr; }
  const double* p_discount_tax() const { return has_discount_tax ? &discount_tax : nullptr; }
  const int32_t* p_horizon() const { return has_horizon ? &horizon : nullptr; }
  const int32_t* p_method() const { return yield_method ? &yield_method : nullptr; }
  const int32_t* p_bd_flags() const { return has_bd_flags ? &bd_flags : nullptr; }
  const int32_t* p_holidays() const { return holidays.empty() ? nullptr : holidays.data(); }
  int32_t n_holidays() const { return static_cast<int32_t>(holidays.size()); }
  const double* p_factor() const { return factor != 0.0 ? &factor : nullptr; }
  const int32_t* p_sink_dates() const { return sink_dates.empty() ? nullptr : sink_dates.data(); }
  int32_t n_sink() const { return static_cast<int32_t>(sink_dates.size()); }
  const int32_t* p_sink_ends() const { return sink_ends.empty() ? nullptr : sink_ends.data(); }
  int32_t n_sink_ends() const { return static_cast<int32_t>(sink_ends.size()); }
  const double* p_sink_amounts() const {
    return sink_amounts.empty() ? nullptr : sink_amounts.data();
  }
  const int32_t* p_exdiv() const { return has_exdiv_days ? &exdiv_days : nullptr; }
  int32_t n_rates() const { return static_cast<int32_t>(rates.size()); }
  int32_t n_dates() const { return static_cast<int32_t>(dates.size()); }

  double price(double y, int32_t* error = nullptr) const {
    return KVLbpr(rates.data(), n_rates(), dates.data(), n_dates(), settlement, y, p_dated(),
                  p_first(), p_type(), p_freq(), n_freq(), p_redemption(), p_coupon_tax(),
                  p_discount_tax(), p_horizon(), nullptr, p_method(), p_bd_flags(),
                  p_holidays(), n_holidays(), p_factor(), p_sink_dates(), n_sink(),
                  p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr, p_exdiv(), error);
  }
  double accrued(int32_t* error = nullptr) const {
    return KVLbai1(rates.data(), n_rates(), dates.data(), n_dates(), settlement, p_dated(),
                   p_first(), p_type(), p_freq(), n_freq(), p_coupon_tax(), p_factor(),
                   p_sink_dates(), n_sink(), p_sink_ends(), n_sink_ends(), p_sink_amounts(),
                   nullptr, p_exdiv(), p_bd_flags(), p_holidays(), n_holidays(), error);
  }
  double yield(double clean, int32_t* error = nullptr) const {
    return KVLbyld(rates.data(), n_rates(), dates.data(), n_dates(), settlement, clean, p_dated(),
                   p_first(), p_type(), p_freq(), n_freq(), p_redemption(), p_coupon_tax(),
                   p_discount_tax(), p_horizon(), nullptr, p_method(), p_bd_flags(),
                   p_holidays(), n_holidays(), p_factor(), p_sink_dates(), n_sink(),
                   p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr, p_exdiv(), error);
  }
  double duration(double y, const int32_t* kind = nullptr, int32_t* error = nullptr) const {
    return KVLbdur(rates.data(), n_rates(), dates.data(), n_dates(), settlement, y, p_dated(),
                   p_first(), p_type(), p_freq(), n_freq(), p_redemption(), kind,
                   p_coupon_tax(), p_discount_tax(), p_horizon(), nullptr, p_method(),
                   p_bd_flags(), p_holidays(), n_holidays(), p_factor(), p_sink_dates(), n_sink(),
                   p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr, p_exdiv(), error);
  }
  double macaulay(double y, int32_t* error = nullptr) const {
    const int32_t kind = 1;
    return duration(y, &kind, error);
  }
  double convexity(double y, int32_t* error = nullptr) const {
    return KVLbconv(rates.data(), n_rates(), dates.data(), n_dates(), settlement, y, p_dated(),
                    p_first(), p_type(), p_freq(), n_freq(), p_redemption(), p_coupon_tax(),
                    p_discount_tax(), p_horizon(), nullptr, p_method(), p_bd_flags(),
                    p_holidays(), n_holidays(), p_factor(), p_sink_dates(), n_sink(),
                    p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr, p_exdiv(), error);
  }
  double value_of_bp(double y, const double* scale = nullptr, int32_t* error = nullptr) const {
    return KVLbvalbp(rates.data(), n_rates(), dates.data(), n_dates(), settlement, y, p_dated(),
                     p_first(), p_type(), p_freq(), n_freq(), p_redemption(), p_coupon_tax(),
                     p_discount_tax(), p_horizon(), nullptr, scale, p_method(), p_bd_flags(),
                     p_holidays(), n_holidays(), p_factor(), p_sink_dates(), n_sink(),
                     p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr, p_exdiv(), error);
  }
  double value_of_tick(double y, const double* ticks = nullptr, int32_t* error = nullptr) const {
    return KVLbval32(rates.data(), n_rates(), dates.data(), n_dates(), settlement, y, p_dated(),
                     p_first(), p_type(), p_freq(), n_freq(), p_redemption(), p_coupon_tax(),
                     p_discount_tax(), p_horizon(), nullptr, ticks, p_method(), p_bd_flags(),
                     p_holidays(), n_holidays(), p_factor(), p_sink_dates(), n_sink(),
                     p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr, p_exdiv(), error);
  }
  double coupon_amount(int32_t* error = nullptr) const {
    return KVLbcamt(rates.data(), n_rates(), dates.data(), n_dates(), settlement, p_dated(),
                    p_first(), p_type(), p_freq(), n_freq(), p_coupon_tax(), p_factor(),
                    p_sink_dates(), n_sink(), p_sink_ends(), n_sink_ends(), p_sink_amounts(),
                    nullptr, error);
  }
  // The cash-flow table; `price` NULL for 100.
  int32_t cash_flows(int32_t** d, double** c, double** p, double** t,
                     const double* clean = nullptr, int32_t* error = nullptr) const {
    return KVLbcshflw(d, c, p, t, rates.data(), n_rates(), dates.data(), n_dates(), settlement,
                      p_dated(), p_first(), p_type(), p_freq(), n_freq(), p_redemption(),
                      p_coupon_tax(), p_discount_tax(), p_horizon(), nullptr, clean, p_method(),
                      p_bd_flags(), p_holidays(), n_holidays(), p_factor(), p_sink_dates(),
                      n_sink(), p_sink_ends(), n_sink_ends(), p_sink_amounts(), nullptr,
                      p_exdiv(), error);
  }

  // Storage for the frequency pair the pointer argument points to.
  mutable int32_t freq_pair_[2] = {0, 0};
  const int32_t* frequency_pair() const {
    if (!frequency && !sink_frequency) return nullptr;
    freq_pair_[0] = frequency;
    freq_pair_[1] = sink_frequency;
    return freq_pair_;
  }
};

}  // namespace kbond::testing
