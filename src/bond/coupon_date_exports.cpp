// Coupon dates of a straight bond without its coupon rate: a coupon date
// counted from settlement (KVLbcpn), the number of coupons left (KVLbncpn)
// and the ex-dividend date of the next coupon (KVLbexdiv).
#include <algorithm>
#include <cstdint>

#include "dates/date_serial.h"
#include "dates/month_arithmetic.h"
#include "engine/call_frame.h"
#include "engine/catalogue.h"
#include "engine/custom_types.h"
#include "k_bond.h"

using kbond::engine::BondCall;
using kbond::engine::BondSetUpCall;

namespace {

// The schedule is the same for any coupon rate.
constexpr double kScheduleOnlyCoupon = 0.1;

struct ScheduleArgs {
  double coupon = kScheduleOnlyCoupon;
  int32_t maturity = 0;
  int32_t schedule_type = 0;
  kbond::engine::bond_args args;
};

// A bond described by its maturity and schedule arguments only. Types 16,
// 17 and 22 keep the schedule of 2, 12 and 20.
void describe_schedule(ScheduleArgs& s, int32_t maturity, int32_t settlement,
                       const int32_t* dated_date, const int32_t* first_coupon,
                       const int32_t* type, const int32_t* frequency,
                       const int32_t* eom) noexcept {
  s.maturity = maturity;
  if (type) s.schedule_type = kbond::engine::accrual_substitute(*type);
  s.args = kbond::engine::bond_args{
      .coupons = &s.coupon, .n_coupons = 1, .dates = &s.maturity, .n_dates = 1,
      .settlement = settlement, .dated_date = dated_date, .first_coupon = first_coupon,
      .type = type ? &s.schedule_type : nullptr, .frequency = frequency,
      .n_frequency = frequency ? 1 : 0, .eom = eom};
}

bool given(const int32_t* p) noexcept { return p && *p != 0; }

}  // namespace

extern "C" KVL_EXPORT int32_t KVL_API KVLbcpn(int32_t maturity, int32_t settlement,
                                              const int32_t* k, const int32_t* dated_date,
                                              const int32_t* first_coupon, const int32_t* type,
                                              const int32_t* frequency, const int32_t* eom,
                                              int32_t* error) {
  ScheduleArgs s;
  describe_schedule(s, maturity, settlement, dated_date, first_coupon, type, frequency, eom);
  BondSetUpCall call(s.args, error);
  if (!call.ok()) return -1;
  const auto& bond = call.desc();

  // No coupon date comes before the first coupon of a bond whose schedule
  // the caller fixed: a settlement before it counts from the day before.
  int32_t lo = 0;
  int32_t from = settlement;
  if (given(dated_date) || given(first_coupon)) {
    lo = bond.first_coupon;
    if (from < lo) from = lo - 1;
  }
  // Valid dates span some 60,000 months: a k beyond a million periods finds
  // none either way, and holding it there keeps k + 1 in range.
  constexpr int32_t kFarSteps = 1 << 20;
  const int32_t steps = std::clamp(k ? *k : 0, -kFarSteps, kFarSteps);
  const int32_t mpp = bond.months_per_period;
  auto grid = [&](int32_t date, int32_t n) {
    return kbond::dates::schedule_date(date, n, mpp, bond.anchor, bond.eom, nullptr);
  };
  int32_t d = grid(from, steps);
  // A maturity off the grid is itself the last coupon date: the grid date
  // beyond it is paid at maturity.
  if (bond.partial_period != 0) {
    if (from == bond.maturity) {
      const int32_t beyond = grid(from, steps + 1);
      if (beyond != bond.maturity) d = beyond;
    }
    if (d == grid(bond.maturity, 1)) d = bond.maturity;
  }
  if (d < lo || d > bond.maturity || d <= 0) {
    call.error() = KVL_ERR_INVALID;
    return -1;
  }
  return d;
}

extern "C" KVL_EXPORT int32_t KVL_API KVLbncpn(int32_t maturity, int32_t settlement,
                                               const int32_t* dated_date,
                                               const int32_t* first_coupon, const int32_t* type,
                                               const int32_t* frequency, const int32_t* eom,
                                               int32_t* error) {
  ScheduleArgs s;
  describe_schedule(s, maturity, settlement, dated_date, first_coupon, type, frequency, eom);
  BondCall call(s.args, error);
  if (!call.ok()) return -1;
  return call.desc().remaining_periods();
}

extern "C" KVL_EXPORT int32_t KVL_API KVLbexdiv(int32_t reference_coupon, int32_t settlement,
                                                const int32_t* type, const int32_t* exdiv_period,
                                                const int32_t* holidays, int32_t n_holidays,
                                                const uint8_t* weekend_flags, int32_t* error) {
  int32_t local = 0;
  int32_t& err = error ? *error : local;
  err = 0;
  kbond::engine::TypeReadGuard lock(type);
  if (lock.failed()) {
    err = KVL_ERR_LOCK;
    return -1;
  }
  const int32_t code = type ? *type : 0;
  const int32_t base = kbond::engine::bond_type_base(code);
  if (base < 0) {
    err = KVL_ERR_OUT_OF_SET;
    return -1;
  }
  const int32_t f = kbond::engine::bond_type_frequency(base);
  auto valid_date = [](int32_t d) { return d >= 1 && d <= kbond::dates::kMaxSerial; };
  if (f <= 0 || 12 % f != 0 || !valid_date(reference_coupon) || !valid_date(settlement)) {
    err = KVL_ERR_INVALID;
    return -1;
  }
  const uint8_t flags = weekend_flags ? *weekend_flags : 0;
  // A missing list or a count below one is an empty list.
  const bool listed = holidays && n_holidays > 0;
  const kbond::dates::BusinessCalendar calendar{listed ? holidays : nullptr,
                                                listed ? n_holidays : 0, flags & 1,
                                                (flags >> 1) & 1};
  const int32_t next = kbond::dates::schedule_date(settlement, 1, 12 / f, reference_coupon,
                                                   kbond::engine::bond_type_eom_default(code),
                                                   nullptr);
  kbond::engine::CustomType rule{};
  if (exdiv_period) {
    rule.name = "ex-dividend period";
    rule.exdiv_days = *exdiv_period;
  }
  const int32_t date = kbond::engine::bond_type_exdiv_date(next, base, calendar,
                                                           exdiv_period ? &rule : nullptr);
  // A coupon beyond the last date (settlement near it) or a period that
  // reaches before the first date gives no ex-dividend date.
  if (!valid_date(next) || !valid_date(date)) {
    err = KVL_ERR_INVALID;
    return -1;
  }
  return date;
}
