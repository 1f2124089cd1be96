#include "cli_commands.h"

#include <cstdio>
#include <string>

#include "cli_dates.h"
#include "cli_errors.h"
#include "cli_report.h"
#include "k_bond.h"

namespace kbond::cli {
namespace {

std::string type_name(int32_t code) {
  const char* name = nullptr;
  int32_t err = 0;
  KVLbtype(code, nullptr, nullptr, nullptr, &name, &err);
  return err == 0 && name ? name : "unknown";
}

std::string iso(int32_t serial) {
  char buf[32];
  return format_date(serial, buf);
}

// Yields are shown in percent unless --decimal.
void add_yield(Report& r, const Options& o, double y) {
  if (o.decimal)
    r.number("yield", "Yield (decimal)", y, 8);
  else
    r.number("yield", "Yield (%)", y * 100.0, 6);
}

void add_bond(Report& r, const Bond& b) {
  r.integer("type", "Bond type", b.type);
  r.text("type_name", "Type name", type_name(b.type));
  r.text("settlement", "Settlement", iso(b.settlement));
  r.text("maturity", "Maturity", iso(b.maturity));
}

// Reads the bond and the flags a command needs; false: usage error printed.
bool read_bond(const char* command, const Options& o, Bond* b, int* exit_code) {
  std::string why;
  if (!o.positional.empty()) why = "unexpected argument '" + o.positional[0] + "'";
  if (why.empty() && bond_from_options(o, b, &why)) return true;
  *exit_code = report_usage_error(command, why);
  return false;
}

}  // namespace

int report_library_error(const char* command, const char* what, int32_t code, bool json) {
  std::fprintf(stderr, "kbond %s: %s failed: error %d (%s): %s.\n", command, what, code,
               error_constant(code), error_sentence(code));
  if (json)
    std::printf("{\"error\": {\"code\": %d, \"constant\": \"%s\", \"message\": \"%s\"}}\n", code,
                error_constant(code), json_escape(error_sentence(code)).c_str());
  return kExitLibraryError;
}

int report_usage_error(const char* command, const std::string& why) {
  std::fprintf(stderr, "kbond %s: %s.\nRun 'kbond %s --help' for the options.\n", command,
               why.c_str(), command);
  return kExitUsage;
}

int cmd_price(const Options& o) {
  Bond b;
  int rc = 0;
  if (!read_bond("price", o, &b, &rc)) return rc;
  double y = 0;
  std::string why;
  if (!rate_from_options(o, "yield", &y, &why)) return report_usage_error("price", why);
  int32_t err = 0;
  const double price = bond_price(b, y, &err);
  if (err != 0) return report_library_error("price", "the price", err, o.json);
  const double accrued = bond_accrued(b, &err);
  if (err != 0) return report_library_error("price", "the accrued interest", err, o.json);
  Report r;
  add_bond(r, b);
  add_yield(r, o, y);
  r.number("clean_price", "Clean price", price, 6);
  r.number("accrued", "Accrued interest", accrued, 6);
  r.number("dirty_price", "Dirty price", price + accrued, 6);
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_accrued(const Options& o) {
  Bond b;
  int rc = 0;
  if (!read_bond("accrued", o, &b, &rc)) return rc;
  int32_t err = 0;
  const double accrued = bond_accrued(b, &err);
  if (err != 0) return report_library_error("accrued", "the accrued interest", err, o.json);
  Report r;
  add_bond(r, b);
  r.number("accrued", "Accrued interest", accrued, 6);
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_type(const Options& o) {
  if (o.positional.size() != 1)
    return report_usage_error("type", "give one bond type: a code (40), a name (\"Gilt\") or a "
                                      "nickname (gilt)");
  int32_t code = 0;
  std::string why;
  if (!resolve_type(o.positional[0], &code, &why)) return report_usage_error("type", why);
  int32_t frequency = 0, eom = 0, err = 0;
  const char* daycount = nullptr;
  const char* name = nullptr;
  KVLbtype(code, &frequency, &daycount, &eom, &name, &err);
  if (err != 0) return report_library_error("type", "the type lookup", err, o.json);
  Report r;
  r.integer("code", "Code", code);
  r.text("name", "Name", name);
  if (frequency < 0) {
    // Yankee bonds (810) follow their issuer's market: no conventions of their own.
    r.text("frequency", "Coupons per year", "none of its own: give --frequency");
    r.text("day_count", "Accrued day count", "none of its own");
  } else {
    r.integer("frequency", "Coupons per year", frequency);
    r.text("day_count", "Accrued day count", daycount);
  }
  r.integer("end_of_month", "End-of-month rule", eom);
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_types(const Options& o) {
  if (!o.positional.empty()) return report_usage_error("types", "takes no arguments");
  if (o.nicknames) {
    std::vector<std::vector<std::string>> cells;
    for (const auto& n : nicknames()) {
      const char* name = nullptr;
      KVLbtype(n.code, nullptr, nullptr, nullptr, &name, nullptr);
      cells.push_back({n.name, std::to_string(n.code), name});
    }
    Report r;
    r.table("nicknames", {"nickname", "code", "name"}, {false, true, false}, std::move(cells));
    r.print(stdout, o.json);
    return kExitOk;
  }
  const int32_t* codes = nullptr;
  const int32_t* eom_codes = nullptr;
  const char* const* names = nullptr;
  const char* const* daycounts = nullptr;
  const int32_t* frequencies = nullptr;
  const char* exdiv = nullptr;
  const int32_t rows = KVLbtable(&codes, &eom_codes, &names, &daycounts, &frequencies, &exdiv);
  std::vector<std::vector<std::string>> cells;
  for (int32_t i = 0; i < rows; ++i) {
    auto code_text = [](int32_t c) { return c < 0 ? std::string("-") : std::to_string(c); };
    cells.push_back({code_text(codes[i]), code_text(eom_codes[i]),
                     std::to_string(frequencies[i]), daycounts[i], exdiv[i] ? "yes" : "no",
                     names[i]});
  }
  Report r;
  r.table("types", {"code", "eom_code", "frequency", "day_count", "ex_dividend", "name"},
          {true, true, true, false, false, false}, std::move(cells));
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_yield(const Options& o) {
  Bond b;
  int rc = 0;
  if (!read_bond("yield", o, &b, &rc)) return rc;
  double price = 0;
  const std::string* text = o.get("price");
  if (text == nullptr) return report_usage_error("yield", "missing --price (clean, per 100)");
  if (!parse_price(*text, &price))
    return report_usage_error("yield", "--price '" + *text + "' is not a price (a number or 32nds such as 98-01+)");
  int32_t err = 0;
  const double y = bond_yield(b, price, &err);
  if (err != 0) return report_library_error("yield", "the yield", err, o.json);
  const double accrued = bond_accrued(b, &err);
  if (err != 0) return report_library_error("yield", "the accrued interest", err, o.json);
  Report r;
  add_bond(r, b);
  r.number("clean_price", "Clean price", price, 6);
  add_yield(r, o, y);
  r.number("accrued", "Accrued interest", accrued, 6);
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_risk(const Options& o) {
  Bond b;
  int rc = 0;
  if (!read_bond("risk", o, &b, &rc)) return rc;
  const bool by_price = o.has("price");
  if (by_price == o.has("yield"))
    return report_usage_error("risk", "give exactly one of --yield and --price");
  int32_t err = 0;
  double y = 0, price = 0;
  std::string why;
  if (by_price) {
    if (!parse_price(*o.get("price"), &price))
      return report_usage_error("risk", "--price '" + *o.get("price") + "' is not a price (a number or 32nds such as 98-01+)");
    y = bond_yield(b, price, &err);
    if (err != 0) return report_library_error("risk", "the yield", err, o.json);
  } else {
    if (!rate_from_options(o, "yield", &y, &why)) return report_usage_error("risk", why);
    price = bond_price(b, y, &err);
    if (err != 0) return report_library_error("risk", "the price", err, o.json);
  }
  const double accrued = bond_accrued(b, &err);
  if (err != 0) return report_library_error("risk", "the accrued interest", err, o.json);
  const double modified = bond_duration(b, y, false, &err);
  if (err != 0) return report_library_error("risk", "the modified duration", err, o.json);
  const double macaulay = bond_duration(b, y, true, &err);
  if (err != 0) return report_library_error("risk", "the Macaulay duration", err, o.json);
  const double convexity = bond_convexity(b, y, &err);
  if (err != 0) return report_library_error("risk", "the convexity", err, o.json);
  const double pvbp = bond_pvbp(b, y, &err);
  if (err != 0) return report_library_error("risk", "the PVBP", err, o.json);
  const double yv32 = bond_yield_value_32nd(b, y, &err);
  if (err != 0) return report_library_error("risk", "the yield value of a 32nd", err, o.json);
  Report r;
  add_bond(r, b);
  add_yield(r, o, y);
  r.number("clean_price", "Clean price", price, 6);
  r.number("accrued", "Accrued interest", accrued, 6);
  r.number("dirty_price", "Dirty price", price + accrued, 6);
  r.number("modified_duration", "Modified duration (years)", modified, 6);
  r.number("macaulay_duration", "Macaulay duration (years)", macaulay, 6);
  r.number("convexity", "Convexity", convexity, 6);
  r.number("pvbp", "PVBP (per 100, 1 bp)", pvbp, 6);
  r.number("yield_value_32nd", "Yield value of 1/32 (bp)", yv32, 6);
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_schedule(const Options& o) {
  Bond b;
  int rc = 0;
  if (!read_bond("schedule", o, &b, &rc)) return rc;
  const int32_t freq = b.frequency;
  const int32_t* freq_ptr = freq != 0 ? &freq : nullptr;
  const int32_t* dated = b.dated_date != 0 ? &b.dated_date : nullptr;
  const int32_t* first = b.first_coupon != 0 ? &b.first_coupon : nullptr;
  int32_t err = 0;
  const int32_t remaining =
      KVLbncpn(b.maturity, b.settlement, dated, first, &b.type, freq_ptr, nullptr, &err);
  if (err != 0) return report_library_error("schedule", "the coupon count", err, o.json);
  const int32_t k0 = 0;
  const int32_t previous =
      KVLbcpn(b.maturity, b.settlement, &k0, dated, first, &b.type, freq_ptr, nullptr, &err);
  if (err != 0) return report_library_error("schedule", "the previous coupon date", err, o.json);
  const int32_t exdiv =
      KVLbexdiv(b.maturity, b.settlement, &b.type, nullptr, nullptr, 0, nullptr, &err);
  if (err != 0) return report_library_error("schedule", "the ex-dividend date", err, o.json);
  std::vector<std::vector<std::string>> rows;
  for (int32_t k = 1; k <= remaining; ++k) {
    const int32_t d =
        KVLbcpn(b.maturity, b.settlement, &k, dated, first, &b.type, freq_ptr, nullptr, &err);
    if (err != 0) return report_library_error("schedule", "a coupon date", err, o.json);
    rows.push_back({std::to_string(k), iso(d)});
  }
  Report r;
  add_bond(r, b);
  r.text("previous_coupon", "Previous coupon", iso(previous));
  r.text("next_coupon", "Next coupon", rows.empty() ? iso(b.maturity) : rows[0][1]);
  r.text("ex_dividend", "Ex-dividend date", iso(exdiv));
  r.integer("coupons_remaining", "Coupons remaining", remaining);
  r.table("coupons", {"number", "date"}, {true, false}, std::move(rows));
  r.print(stdout, o.json);
  return kExitOk;
}

int cmd_cashflows(const Options& o) {
  Bond b;
  int rc = 0;
  if (!read_bond("cashflows", o, &b, &rc)) return rc;
  const int32_t freq = b.frequency;
  int32_t* dates = nullptr;
  double* coupons = nullptr;
  double* principal = nullptr;
  double* periods = nullptr;
  int32_t err = 0;
  const int32_t n = KVLbcshflw(&dates, &coupons, &principal, &periods, &b.coupon, 1, &b.maturity,
                               1, b.settlement, b.dated_date != 0 ? &b.dated_date : nullptr,
                               b.first_coupon != 0 ? &b.first_coupon : nullptr, &b.type,
                               freq != 0 ? &freq : nullptr, freq != 0 ? 1 : 0, &b.redemption,
                               nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                               nullptr, &err);
  if (err != 0) {
    KVLbcshflw_free(dates, coupons, principal, periods);
    return report_library_error("cashflows", "the cash-flow table", err, o.json);
  }
  std::vector<std::vector<std::string>> rows;
  char buf[64];
  for (int32_t i = 0; i < n; ++i) {
    std::vector<std::string> row{iso(dates[i])};
    for (double v : {coupons[i], principal[i], coupons[i] + principal[i], periods[i]}) {
      std::snprintf(buf, sizeof buf, "%.6f", v);
      row.emplace_back(buf);
    }
    rows.push_back(std::move(row));
  }
  KVLbcshflw_free(dates, coupons, principal, periods);
  Report r;
  add_bond(r, b);
  r.integer("rows", "Cash flows", n);
  r.table("cashflows", {"date", "coupon", "principal", "total", "periods"},
          {false, true, true, true, true}, std::move(rows));
  r.print(stdout, o.json);
  return kExitOk;
}

}  // namespace kbond::cli
