// Each measure of a row is the single export's own call with the row's
// arguments, so a batch can never drift from what one call returns.
#include "batch/row_valuation.h"

#include <limits>

#include "k_bond.h"

namespace kbond::batch {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The single-bond arguments of one row: one coupon step, the maturity as
// the only date, optional overrides that are absent when the row holds 0.
struct RowBond {
  int32_t type;
  double coupon;
  int32_t maturity;
  int32_t settlement;
  int32_t frequency_value;
  int32_t dated_value;
  int32_t first_value;
  const double* redemption;

  const int32_t* frequency() const { return frequency_value != 0 ? &frequency_value : nullptr; }
  int32_t n_frequency() const { return frequency_value != 0 ? 1 : 0; }
  const int32_t* dated() const { return dated_value != 0 ? &dated_value : nullptr; }
  const int32_t* first() const { return first_value != 0 ? &first_value : nullptr; }

  double price(double yield, int32_t* error) const {
    return KVLbpr(&coupon, 1, &maturity, 1, settlement, yield, dated(), first(), &type,
                  frequency(), n_frequency(), redemption, nullptr, nullptr, nullptr, nullptr,
                  nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                  nullptr, nullptr, error);
  }
  double yield(double price, int32_t* error) const {
    return KVLbyld(&coupon, 1, &maturity, 1, settlement, price, dated(), first(), &type,
                   frequency(), n_frequency(), redemption, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                   nullptr, nullptr, error);
  }
  double accrued(int32_t* error) const {
    return KVLbai(&coupon, 1, &maturity, 1, settlement, dated(), first(), &type, frequency(),
                  n_frequency(), nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                  nullptr, error);
  }
  double duration(double yield, int32_t kind, int32_t* error) const {
    return KVLbdur(&coupon, 1, &maturity, 1, settlement, yield, dated(), first(), &type,
                   frequency(), n_frequency(), redemption, &kind, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0,
                   nullptr, nullptr, nullptr, error);
  }
  double convexity(double yield, int32_t* error) const {
    return KVLbconv(&coupon, 1, &maturity, 1, settlement, yield, dated(), first(), &type,
                    frequency(), n_frequency(), redemption, nullptr, nullptr, nullptr, nullptr,
                    nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                    nullptr, nullptr, error);
  }
  double pvbp(double yield, int32_t* error) const {
    return KVLbvalbp(&coupon, 1, &maturity, 1, settlement, yield, dated(), first(), &type,
                     frequency(), n_frequency(), redemption, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0,
                     nullptr, nullptr, nullptr, error);
  }
};

// The output cells of one row, in the order the measures are computed.
class RowCells {
 public:
  RowCells(const BatchRequest& r, int64_t i) noexcept : r_(r), i_(i) {}

  void put(int32_t measure, double value) noexcept {
    if (double* column = column_of(measure)) column[i_] = value;
  }
  // The measures after `measure` in the order of computation get NaN.
  void clear_after(int32_t measure) noexcept {
    bool after = false;
    for (int32_t m : kOrder) {
      if (after) put(m, kNaN);
      if (m == measure) after = true;
    }
  }
  void clear_all() noexcept {
    for (int32_t m : kOrder) put(m, kNaN);
  }

 private:
  static constexpr int32_t kOrder[] = {kPrice, kYield, kAccrued, kModifiedDuration,
                                       kMacaulayDuration, kConvexity, kPvbp};
  double* column_of(int32_t measure) const noexcept {
    if (!r_.wants(measure)) return nullptr;
    switch (measure) {
      case kPrice: return r_.prices;
      case kYield: return r_.yields;
      case kAccrued: return r_.accrued;
      case kModifiedDuration: return r_.modified_durations;
      case kMacaulayDuration: return r_.macaulay_durations;
      case kConvexity: return r_.convexities;
      default: return r_.pvbps;
    }
  }
  const BatchRequest& r_;
  int64_t i_;
};

}  // namespace

int32_t value_row(const BatchRequest& r, int64_t i) noexcept {
  const RowBond bond{r.types[i],
                     r.coupons[i],
                     r.maturities[i],
                     r.settlements[i],
                     r.frequencies ? r.frequencies[i] : 0,
                     r.dated_dates ? r.dated_dates[i] : 0,
                     r.first_coupons ? r.first_coupons[i] : 0,
                     r.redemptions ? &r.redemptions[i] : nullptr};
  RowCells cells(r, i);
  int32_t error = 0;
  int32_t failed = 0;
  const auto finish = [&]() {
    if (r.row_errors) r.row_errors[i] = error;
    if (r.failed_measures) r.failed_measures[i] = failed;
    return error;
  };
  // Runs one measure; false when the row stops here.
  const auto step = [&](int32_t measure, double value) {
    cells.put(measure, value);
    if (error == 0) return true;
    failed = measure;
    cells.clear_after(measure);
    return false;
  };

  const int32_t kind = r.market_kinds ? r.market_kinds[i] : r.market_kind;
  if (r.market == nullptr) {  // accrued interest alone
    step(kAccrued, bond.accrued(&error));
    return finish();
  }
  if (kind != kGivenYield && kind != kGivenPrice) {
    error = KVL_ERR_OUT_OF_SET;
    cells.clear_all();
    return finish();
  }
  const double given = r.market[i];
  double yield = given;
  if (kind == kGivenPrice) {
    cells.put(kPrice, given);
    if (r.measures & kYieldBased) {
      yield = bond.yield(given, &error);
      if (!step(kYield, yield)) return finish();
    }
  } else {
    if (r.wants(kPrice) && !step(kPrice, bond.price(given, &error))) return finish();
    cells.put(kYield, given);
  }
  if (r.wants(kAccrued) && !step(kAccrued, bond.accrued(&error))) return finish();
  if (r.wants(kModifiedDuration) && !step(kModifiedDuration, bond.duration(yield, 0, &error)))
    return finish();
  if (r.wants(kMacaulayDuration) && !step(kMacaulayDuration, bond.duration(yield, 1, &error)))
    return finish();
  if (r.wants(kConvexity) && !step(kConvexity, bond.convexity(yield, &error))) return finish();
  if (r.wants(kPvbp)) step(kPvbp, bond.pvbp(yield, &error));
  return finish();
}

}  // namespace kbond::batch
