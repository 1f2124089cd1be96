// bond_setup: from the common bond arguments to a validated description.
//
// The steps run in a fixed order, each reading what the earlier ones
// settled: coupon form, type and its conventions, frequency, coupon grid,
// the period around settlement, period counts, redemption and taxes,
// amortisation, the period fractions, the accrued interest and the
// ex-dividend rule. Any invalid argument ends the set-up with 1.
#include <cmath>
#include <climits>
#include <cstdint>
#include <memory>

#include "dates/date_serial.h"
#include "dates/day_count.h"
#include "dates/month_arithmetic.h"
#include "engine/amortisation.h"
#include "engine/bond_desc.h"
#include "engine/catalogue.h"
#include "engine/coupon_schedule.h"
#include "engine/custom_types.h"
#include "engine/period_fractions.h"
#include "engine/safe_math.h"
#include "engine/setup_steps.h"

namespace kbond::engine {
namespace {

// A derived first coupon closer than this to maturity is maturity itself.
constexpr int32_t kFirstCouponMargin = 27;
constexpr int32_t kDefaultHorizonMonths = 12;

template <class T>
bool present_if_counted(const T* array, int32_t count) noexcept {
  return count >= 0 && (count == 0 || array != nullptr);
}

// Counts and arrays of the whole argument block, before any is read. A
// missing holiday list is an empty one whatever its count; the sinking-fund
// arrays of a bullet (factor NULL or 0) are never read.
bool well_formed(const bond_args& a) noexcept {
  const bool amortises = a.factor && *a.factor != 0.0;
  return present_if_counted(a.coupons, a.n_coupons) && present_if_counted(a.dates, a.n_dates) &&
         present_if_counted(a.frequency, a.n_frequency) && a.n_holidays >= 0 &&
         (!amortises || (present_if_counted(a.sink_dates, a.n_sink) &&
                         present_if_counted(a.sink_ends, a.n_sink_ends))) &&
         dates::valid_serial(a.settlement);
}

// An optional date argument: absent (NULL or 0) gives 0.
bool read_optional_date(const int32_t* p, int32_t* out) noexcept {
  *out = p ? *p : 0;
  return *out == 0 || dates::valid_serial(*out);
}

bool read_optional_double(const double* p, double fallback, double* out) noexcept {
  *out = p ? *p : fallback;
  return std::isfinite(*out);
}

// Coupon steps ({r1..rn} with n dates), or with one date the redemption
// forms {rate}, {rate, redemption %} and {rate, a, b} (redeemed at b/a).
bool read_coupons(const bond_args& a, bond_desc& d) noexcept {
  const int32_t c = a.n_coupons;
  const int32_t n = a.n_dates;
  if (c <= 0 || n <= 0) return false;
  // Every coupon step is paid some day, so each must be a plausible rate, not
  // only the one in force (a later step of 1e308 made infinite cash flows).
  for (int32_t i = 0; i < c; ++i) {
    const bool rate = i == 0 || c == n;
    if (rate ? !plausible_magnitude(a.coupons[i]) : !std::isfinite(a.coupons[i])) return false;
  }
  for (int32_t i = 0; i < n; ++i) {
    if (!dates::valid_serial(a.dates[i]) || (i > 0 && a.dates[i] <= a.dates[i - 1])) return false;
  }
  d.n_coupons = 0;
  d.redemption_ratio = 1.0;
  if (c == n) {
    d.n_coupons = c;
  } else if (n != 1) {
    return false;
  } else if (c == 2) {
    if (!(a.coupons[1] > 0.0)) return false;
    d.redemption_ratio = a.coupons[1] / 100.0;
  } else if (c == 3) {
    if (!(a.coupons[1] > 0.0 && a.coupons[2] > 0.0)) return false;
    d.redemption_ratio = a.coupons[2] / a.coupons[1];
  } else {
    return false;
  }
  d.coupons = a.coupons;
  d.dates = a.dates;
  d.n_dates = n;
  d.maturity = a.dates[n - 1];
  return true;
}

// A market that pays on a fixed day of the month runs its grid through that
// day of the maturity month.
int32_t maturity_anchor(const bond_desc& d) noexcept {
  const int32_t coupon_day = fixed_coupon_day(d.type);
  if (coupon_day == 0) return d.maturity;
  int32_t day = 0, month = 0, year = 0;
  if (dates::serial_to_date(d.maturity, &day, &month, &year) != 0 || day == coupon_day)
    return d.maturity;
  return dates::date_to_serial(coupon_day, month, year);
}

// The earliest date the derived schedule must reach back to.
int32_t derivation_start(const bond_args& a, const bond_desc& d) noexcept {
  int32_t start = a.settlement < d.dates[0] ? a.settlement : d.dates[0];
  const bool amortises = a.factor && *a.factor != 0.0;
  if (amortises && a.sink_dates && a.n_sink > 0 && a.sink_dates[0] > 0 && a.sink_dates[0] < start)
    start = a.sink_dates[0];
  return start;
}

// The caller's dated date and first coupon date; 0 when absent.
struct OddDates {
  int32_t dated = 0;
  int32_t first = 0;
};

bool read_odd_dates(const bond_args& a, const bond_desc& d, OddDates* odd) noexcept {
  if (!read_optional_date(a.dated_date, &odd->dated) ||
      !read_optional_date(a.first_coupon, &odd->first))
    return false;
  if (ignores_odd_coupons(d.type)) odd->dated = odd->first = 0;
  return true;
}

// The grid runs through a given first coupon, else through maturity.
// Returns the grid with the end-of-month rule that the anchor settles.
dates::MonthSchedule place_anchor(bond_desc& d, const OddDates& odd) noexcept {
  d.anchor = odd.first != 0 ? odd.first : maturity_anchor(d);
  dates::MonthSchedule grid(d.anchor, d.months_per_period, d.eom);
  // A derived grid on a fixed coupon day keeps the type's rule.
  if (odd.first != 0 || odd.dated != 0 || fixed_coupon_day(d.type) == 0) {
    decide_eom_from_anchor(d, grid.reference());
    grid.set_eom(d.eom);
  }
  return grid;
}

// Where settlement falls on the coupon grid: the grid date on or before it,
// that date's index j (anchor + j periods) and the grid date after it.
struct SettlementOnGrid {
  int32_t previous = 0;
  int32_t index = 0;
  int32_t next = 0;
};

SettlementOnGrid locate_settlement(const bond_desc& d, const dates::MonthSchedule& grid) noexcept {
  SettlementOnGrid at;
  at.previous = grid.around(d.settlement, 0, &at.index);
  at.next = grid.date(at.index + 1);
  return at;
}

// Floor of a / b for b > 0.
int32_t floor_div(int32_t a, int32_t b) noexcept {
  const int32_t q = a / b;
  return (a % b != 0 && a < 0) ? q - 1 : q;
}

// The grid index of a derived first coupon: the anniversary of the anchor
// on or before the derivation start. Periods divide the year, so the
// anniversaries are the grid dates whose index is a multiple of the
// frequency, and when the derivation starts at settlement the settlement's
// index gives it directly.
int32_t derived_first_index(const bond_args& a, const bond_desc& d,
                            const SettlementOnGrid& at) noexcept {
  const int32_t start = derivation_start(a, d);
  int32_t years = 0;
  if (start != d.settlement) {
    dates::schedule_date(start, 0, 12, d.anchor, d.eom, &years);
    return years * d.frequency;
  }
  return floor_div(at.index, d.frequency) * d.frequency;
}

// Dated date and first coupon; derived ones lie on the grid.
bool place_dated_and_first(const bond_args& a, bond_desc& d, const OddDates& odd,
                           const dates::MonthSchedule& grid,
                           const SettlementOnGrid& at) noexcept {
  int32_t dated = odd.dated, first = odd.first;
  if (dated != 0 && first != 0) {
    // both given
  } else if (dated != 0) {
    first = grid.around(dated, 1, nullptr);
    if (first > d.maturity - kFirstCouponMargin) first = d.maturity;
  } else if (first != 0) {
    dated = dates::add_months(first, -d.months_per_period, d.eom);
    if (dated > d.settlement) dated = d.settlement;
  } else {
    // Both derived: a regular period on the grid before the first coupon.
    const int32_t k = derived_first_index(a, d, at);
    first = k == at.index ? at.previous : grid.date(k);
    if (first > d.maturity - kFirstCouponMargin) {
      first = d.maturity;
      dated = dates::add_months(first, -d.months_per_period, d.eom);
    } else {
      dated = grid.date(k - 1);
    }
  }
  d.dated_date = dated;
  d.first_coupon = first;
  return dated > 0 && first > 0 && dated < first && first <= d.maturity &&
         d.settlement <= d.maturity;
}

// The coupon period containing settlement and where settlement lies in it.
// `grid_index` receives the index of the grid date on or before settlement,
// or kNotOnGrid when the period starts at the dated date instead.
constexpr int32_t kNotOnGrid = INT32_MIN;

bool place_settlement(bond_desc& d, const dates::MonthSchedule& grid, const SettlementOnGrid& at,
                      int32_t* grid_index) noexcept {
  int32_t start = at.previous;
  *grid_index = at.index;
  if (start < d.dated_date || start < d.first_coupon) {
    start = d.dated_date;
    *grid_index = kNotOnGrid;
  }
  d.period_start = start;
  if (d.settlement < d.first_coupon) {
    d.next_coupon = d.first_coupon;
    const int32_t regular_start = grid.around(d.first_coupon, -1, nullptr);
    d.position = start > regular_start    ? kShortFirstPeriod
                 : start == regular_start ? kRegularPeriod
                                          : kLongFirstPeriod;
  } else if (at.next > d.maturity || at.next <= 0) {
    d.next_coupon = d.maturity;
    d.position = kNoGridDateLeft;
  } else {
    d.next_coupon = at.next;
    d.position = kRegularPeriod;
  }
  return d.period_start > 0;
}

// Anchor, dated date, first coupon, and the coupon period around settlement.
bool place_coupon_grid(const bond_args& a, bond_desc& d, int32_t* grid_index) noexcept {
  OddDates odd;
  if (!read_odd_dates(a, d, &odd)) return false;
  const dates::MonthSchedule grid = place_anchor(d, odd);
  const SettlementOnGrid at = locate_settlement(d, grid);
  return place_dated_and_first(a, d, odd, grid, at) && place_settlement(d, grid, at, grid_index);
}

// Whole coupon periods to maturity and whether a broken one remains.
void count_periods(bond_desc& d, int32_t grid_index) noexcept {
  if (d.position == kNoGridDateLeft) {
    d.odd_first = 0;
    d.whole_periods = 0;
    d.partial_period = 1;
    return;
  }
  if (d.anchor == d.maturity && grid_index != kNotOnGrid && d.settlement >= d.first_coupon) {
    // A grid through maturity: the period start is -grid_index whole
    // periods before it.
    d.odd_first = 0;
    d.whole_periods = -grid_index;
    d.partial_period = 0;
    return;
  }
  int32_t exact = 0;
  int32_t months = 0;
  if (d.settlement < d.first_coupon) {
    d.odd_first = 1;
    months = dates::months_between(d.first_coupon, d.maturity, d.eom, &exact);
  } else {
    d.odd_first = 0;
    // Counted back from maturity, where a month end matches any later day.
    months = -dates::months_between(d.maturity, d.period_start, d.eom, &exact);
  }
  d.whole_periods = months / d.months_per_period;
  d.partial_period = (months % d.months_per_period != 0 || !exact) ? 1 : 0;
}

bool read_redemption_and_taxes(const bond_args& a, bond_desc& d) noexcept {
  if (!read_optional_double(a.redemption, 100.0 * d.redemption_ratio, &d.redemption) ||
      !read_optional_double(a.issue_price, 100.0, &d.issue_price) ||
      !read_optional_double(a.coupon_tax, 0.0, &d.coupon_tax) ||
      !read_optional_double(a.discount_tax, 0.0, &d.discount_tax))
    return false;
  // A tax rate is a fraction: one anywhere near 1e100 describes no bond, and
  // would turn a taxed gain into an infinite repayment.
  return d.redemption >= 0.0 && d.issue_price >= 0.0 && plausible_magnitude(d.coupon_tax) &&
         plausible_magnitude(d.discount_tax);
}

// The tax horizon splits taxed income from taxed gain: it is placed only
// when a tax is in force (0 otherwise), and a given one is checked always.
bool place_horizon(const bond_args& a, bond_desc& d) noexcept {
  d.horizon_date = 0;
  if (a.horizon && *a.horizon < 0) return false;
  if (d.coupon_tax == 0.0 && d.discount_tax == 0.0) return true;
  if (!a.horizon) {
    d.horizon_date = dates::add_months(d.settlement, kDefaultHorizonMonths, 1);
    return true;
  }
  const int32_t h = *a.horizon;
  if (h < 0) return false;
  if (h > 24) {
    const int64_t date = static_cast<int64_t>(d.settlement) + h;
    d.horizon_date = date > dates::kMaxSerial ? dates::kMaxSerial : static_cast<int32_t>(date);
  } else {
    d.horizon_date = dates::add_months(d.settlement, h, 1);
  }
  return true;
}

// Italian issue-discount tax: the redemption is reduced by the tax on the
// discount.
void deduct_italian_discount_tax(bond_desc& d) noexcept {
  switch (discount_tax_rule(d.type)) {
    case DiscountTax::kNone:
      return;
    case DiscountTax::kWholeLife:
      break;
    case DiscountTax::kLifeBefore1997: {
      const int32_t before_reform =
          grid_on_or_before(d, kSerial1Jan1997, nullptr) - d.dated_date;
      const int32_t life = d.maturity - d.dated_date;
      if (before_reform <= 0) {
        d.discount_tax = 0.0;
        return;
      }
      if (before_reform < life) d.discount_tax *= static_cast<double>(before_reform) / life;
      break;
    }
  }
  if (d.redemption > d.issue_price) d.redemption -= (d.redemption - d.issue_price) * d.discount_tax;
  d.discount_tax = 0.0;
}

void read_method_and_calendar(const bond_args& a, bond_desc& d) noexcept {
  const int32_t method = a.yield_method ? *a.yield_method : 0;
  d.yield_method_arg = (method >= -6 && method <= -1) ? method : (method != 0 ? 1 : 0);
  read_calendar(a.bd_flags, a.holidays, a.n_holidays, d);
  d.exdiv_days_given = a.exdiv_days ? 1 : 0;
  d.exdiv_days = a.exdiv_days ? *a.exdiv_days : 0;
}

// The last coupon period of a bond with a single period left trades on
// simpler conventions in a few markets.
void substitute_single_period(bond_desc& d) noexcept {
  if (d.remaining_periods() != 1) return;
  const SinglePeriodConventions last = single_period_conventions(d.type, d.accrual_basis);
  if (last.base != d.type) {
    d.type = last.base;
    d.conventions = bond_type_ref(last.base);
  }
  d.accrual_basis = last.accrual_basis;
}

void merge_broken_last_period(bond_desc& d) noexcept {
  if (!merges_broken_last_period(d.type) || !d.partial_period || d.whole_periods <= 0) return;
  d.last_discount += 1.0;
  d.last_coupon += 1.0;
  d.whole_periods -= 1;
}

// The step whose rate is in force in the period starting at period_start.
void find_coupon_index(bond_desc& d) noexcept {
  d.coupon_index = 0;
  if (d.n_coupons <= 1) return;
  const int32_t last = d.n_coupons - 1;
  int32_t i = 0;
  while (i < last && d.dates[i] < d.period_start) ++i;
  if (d.dates[i] == d.period_start && i < last) ++i;
  d.coupon_index = i;
}

}  // namespace

bool read_type(const int32_t* type, int32_t settlement, const int32_t* eom_override,
               bond_desc& d) noexcept {
  d.type = 0;
  d.eom = 1;
  const int32_t code = type ? apply_danish_rule(*type, settlement) : 0;
  d.conventions = bond_type_ref(code);
  if (type) {
    d.type = bond_type_base(code, d.conventions);
    if (d.type < 0) return false;
    d.eom = bond_type_eom_default(code, d.conventions) ? 1 : 0;
  }
  if (eom_override) d.eom = *eom_override ? 1 : 0;
  return true;
}

bool read_frequency(int32_t given, bond_desc& d) noexcept {
  d.frequency = given != 0 ? given : bond_type_frequency(d.conventions);
  if (!valid_frequency(d.frequency)) return false;
  d.months_per_period = 12 / d.frequency;
  return true;
}

void read_calendar(const int32_t* bd_flags, const int32_t* holidays, int32_t n_holidays,
                   bond_desc& d) noexcept {
  const int32_t flags = bd_flags ? *bd_flags : 0;
  d.roll_forward = flags & 1;
  d.roll_flag2 = (flags >> 1) & 1;
  d.holidays = n_holidays > 0 ? holidays : nullptr;
  d.n_holidays = d.holidays ? n_holidays : 0;
}

void decide_eom_from_anchor(bond_desc& d, const dates::SplitDate& anchor) noexcept {
  if (anchor.day == 31) {
    d.eom = 1;
  } else if (!anchor.month_end) {
    d.eom = 0;
  }
}

void compute_accrued(bond_desc& d, double rate) noexcept {
  const double net = 1.0 - d.coupon_tax;
  d.full_coupon = net * rate * d.cf / d.frequency;
  double accrued_days = d.ay * d.basis;
  bond_type_adjust_accrual_days(&accrued_days, d.type, d.settlement,
                                d.position == kRegularPeriod, d.frequency, rate);
  d.accrued = net * rate * accrued_days / d.basis;
}

// After the ex-dividend date the seller keeps the next coupon: the buyer is
// owed interest for the days left to it (negative accrued interest).
void apply_ex_dividend(bond_desc& d, const BondTypeRef& type, double rate,
                       bool own_day_count) noexcept {
  int32_t exdiv_date = 0;
  if (d.exdiv_days_given) {
    CustomType override_record{};
    override_record.name = "ex-dividend override";
    override_record.exdiv_days = d.exdiv_days;
    exdiv_date = bond_type_exdiv_date(d.next_coupon, type, d.calendar(), &override_record);
  } else {
    exdiv_date = bond_type_exdiv_date(d.next_coupon, type, d.calendar(), nullptr);
  }
  d.exdiv = d.settlement >= exdiv_date ? 1 : 0;
  if (!d.exdiv) return;
  const int32_t day_count = d.coupon_basis;
  if (own_day_count && dates::has_365_day_year(day_count)) {
    const double days_left = dates::day_count(d.settlement, d.next_coupon, day_count, nullptr);
    d.accrued = -days_left * rate * (1.0 - d.coupon_tax) / 365.0;
  } else {
    d.accrued -= d.full_coupon;
  }
}

int32_t bond_setup(const bond_args& args, bond_desc& desc) noexcept {
  std::construct_at(&desc);  // in place: the record is large
  desc.settlement = args.settlement;
  int32_t grid_index = 0;
  if (!well_formed(args) || !read_coupons(args, desc) ||
      !read_type(args.type, args.settlement, args.eom, desc) ||
      !read_frequency(args.n_frequency > 0 ? args.frequency[0] : 0, desc) ||
      !place_coupon_grid(args, desc, &grid_index))
    return 1;
  count_periods(desc, grid_index);

  desc.accrual_basis =
      bond_type_accrual_basis(desc.conventions, desc.settlement, desc.period_start, desc.eom);
  if (desc.accrual_basis < 0 || !read_redemption_and_taxes(args, desc) ||
      !place_horizon(args, desc))
    return 1;
  deduct_italian_discount_tax(desc);
  read_method_and_calendar(args, desc);

  if (setup_amortisation(args, desc) != 0) return 1;  // leaves nothing allocated
  substitute_single_period(desc);
  if (compute_period_fractions(desc) != 0) {
    bond_release(desc);
    return 1;
  }
  merge_broken_last_period(desc);
  find_coupon_index(desc);
  const double rate = desc.coupons[desc.coupon_index];
  compute_accrued(desc, rate);
  apply_ex_dividend(desc, desc.conventions, rate, true);
  desc.accrued = settled_accrued(desc.accrued, desc.type);
  // Absurd but finite inputs (a coupon of 1e308, a redemption of 1e307 per
  // 100 from the {rate, a, b} form with a denormal a) must not turn into
  // infinite amounts downstream: such a bond is not a valid description. No
  // real bond pays, accrues or redeems anywhere near 1e100 times its face.
  if (!plausible_magnitude(desc.accrued) || !plausible_magnitude(desc.full_coupon) ||
      !(desc.redemption * 0.01 < kAbsurdMagnitude)) {
    bond_release(desc);
    return 1;
  }
  desc.simple_final = bond_type_simple_final(desc.yield_method_arg, desc.conventions);

  desc.price_factor_flag = desc.amort_kind != kNoAmortisation ? 1 : 0;
  desc.price_factor = desc.factor;
  return 0;
}

}  // namespace kbond::engine
