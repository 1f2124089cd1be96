#include "inflation/linker_exports.h"

#include <cmath>

#include "k_bond.h"
#include "engine/safe_math.h"
#include "inflation/cashflow_columns.h"
#include "inflation/linker_flows.h"
#include "inflation/linker_valuation.h"

namespace kbond::inflation {

namespace {

void set_error(int32_t* error, int32_t code) noexcept {
  if (error != nullptr) *error = code;
}

int32_t check_index_arrays(const LinkerArgs& args) noexcept {
  if (args.base_count > 2 || args.settlement_index_count >= 3) return KVL_ERR_TOO_MANY;
  if (args.base_index == nullptr || args.settlement_index == nullptr) return KVL_ERR_MISSING_ARRAY;
  return 0;
}

// Checks and set-up; 0 or the error code.
int32_t prepare(const LinkerFamily& family, const LinkerArgs& args, LinkerDesc* desc) noexcept {
  const int32_t checked = check_index_arrays(args);
  if (checked != 0) return checked;
  return family.setup(args, desc);
}

// Value at `yield`; 0 or the error code.
int32_t value_at(const LinkerFamily& family, const LinkerArgs& args, double yield, LinkerDesc* desc,
                 LinkerValue* value) noexcept {
  const int32_t err = prepare(family, args, desc);
  if (err != 0) return err;
  return linker_value(*desc, yield, value);
}

}  // namespace

double linker_price_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                           int32_t* error) noexcept {
  LinkerDesc desc;
  LinkerValue value;
  const int32_t err = value_at(family, args, yield, &desc, &value);
  set_error(error, err);
  if (err != 0) return -1.0;
  const double dirty = family.truncate_dirty ? std::floor(value.dirty * 1e6) / 1e6 : value.dirty;
  const double price = engine::round_to(linker_quote(desc, dirty), 3);
  // Real prices divide by the index ratio, which may be tiny.
  if (!std::isfinite(price)) {
    set_error(error, KVL_ERR_INVALID);
    return -1.0;
  }
  return price;
}

double linker_yield_export(const LinkerFamily& family, const LinkerArgs& args, double price,
                           int32_t* error) noexcept {
  LinkerDesc desc;
  int32_t err = prepare(family, args, &desc);
  if (err != 0) {
    set_error(error, err);
    return -1.0;
  }
  const double yield = linker_yield(desc, price, &err);
  set_error(error, err);
  return yield;
}

double linker_risk_export(const LinkerFamily& family, const LinkerArgs& args, double yield,
                          bool convexity, int32_t* error) noexcept {
  LinkerDesc desc;
  LinkerValue value;
  const int32_t err = value_at(family, args, yield, &desc, &value);
  if (err != 0 || !(value.dirty > 0.0)) {
    set_error(error, err != 0 ? err : KVL_ERR_INVALID);
    return -1.0;
  }
  set_error(error, 0);
  return (convexity ? value.second : -value.first) / value.dirty;
}

double linker_accrued_export(const LinkerFamily& family, LinkerArgs args, int32_t* error) noexcept {
  static constexpr double kUnitIndex = 100.0;
  if (args.base_index == nullptr) {
    args.base_index = &kUnitIndex;
    args.base_count = 1;
  }
  if (args.settlement_index == nullptr) {
    args.settlement_index = &kUnitIndex;
    args.settlement_index_count = 1;
  }
  LinkerDesc desc;
  const int32_t err = prepare(family, args, &desc);
  set_error(error, err);
  return err != 0 ? -1.0 : desc.accrued;
}

int32_t linker_cashflow_export(const LinkerFamily& family, const LinkerArgs& args, int32_t** dates_out,
                               double** amounts_out, int32_t* error) noexcept {
  clear_cashflow_outputs(dates_out, amounts_out);
  LinkerDesc desc;
  int32_t err = prepare(family, args, &desc);
  if (err != 0) {
    set_error(error, err);
    return 0;
  }
  double redemption = 0.0;
  const int32_t rows = write_flow_columns(
      [&](auto&& on_flow) { return visit_linker_flows(desc, on_flow); }, true, dates_out, amounts_out,
      &redemption, err);
  set_error(error, err);
  return rows;
}

}  // namespace kbond::inflation
