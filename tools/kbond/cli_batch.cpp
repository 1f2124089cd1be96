// kbond batch: one bond per CSV row in, one analytics row per bond out.
// The file is streamed: one line buffer, fields as views into it, output
// through a large stdio buffer.
#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "cli_commands.h"
#include "cli_dates.h"
#include "cli_errors.h"
#include "k_bond.h"

namespace kbond::cli {
namespace {

constexpr size_t kMaxFields = 32;
constexpr long kProgressEvery = 100000;

enum Column { kId, kType, kCoupon, kMaturity, kSettlement, kPrice, kYield, kFrequency, kDated,
              kFirstCoupon, kRedemption, kColumnCount };
constexpr const char* kColumnNames[kColumnCount] = {
    "id", "type", "coupon", "maturity", "settlement", "price", "yield", "frequency", "dated",
    "first_coupon", "redemption"};

// Splits a CSV line into views. Fields may be enclosed in double quotes
// (for names that contain commas); doubled quotes inside are refused.
// Returns the field count, or -1 for a malformed line.
int split_csv(std::string_view line, std::array<std::string_view, kMaxFields>& out) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  size_t n = 0, i = 0;
  while (true) {
    if (n == kMaxFields) return -1;
    if (i < line.size() && line[i] == '"') {
      const size_t close = line.find('"', i + 1);
      if (close == std::string_view::npos) return -1;
      out[n++] = line.substr(i + 1, close - i - 1);
      i = close + 1;
      if (i < line.size() && line[i] != ',') return -1;
    } else {
      const size_t comma = line.find(',', i);
      const size_t end = comma == std::string_view::npos ? line.size() : comma;
      std::string_view f = line.substr(i, end - i);
      while (!f.empty() && f.front() == ' ') f.remove_prefix(1);
      while (!f.empty() && f.back() == ' ') f.remove_suffix(1);
      out[n++] = f;
      i = end;
    }
    if (i >= line.size()) break;
    ++i;  // the comma
  }
  return static_cast<int>(n);
}

struct RowResult {
  double price = 0, yield = 0, accrued = 0, duration = 0, convexity = 0, pvbp = 0;
  bool has_values = false;
  int32_t code = 0;          // library error code (0: none)
  const char* stage = "";    // which measure failed
  std::string input_error;   // malformed row (reused buffer)
};

// The type column is mostly the same from row to row: remember the last.
struct TypeCache {
  std::string text;
  int32_t code = 0;
  bool valid = false;
};

bool row_bond(const std::array<std::string_view, kMaxFields>& f, const int* col, int nfields,
              bool decimal, TypeCache& cache, Bond* b, double* price, double* yield,
              bool* by_price, std::string* why) {
  auto field = [&](Column c) -> std::string_view {
    return col[c] >= 0 && col[c] < nfields ? f[col[c]] : std::string_view();
  };
  auto number = [&](Column c, double* v) {
    if (parse_number(field(c), v)) return true;
    *why = std::string(kColumnNames[c]) + " '" + std::string(field(c)) + "' is not a number";
    return false;
  };
  auto date = [&](Column c, bool required, int32_t* v) {
    const std::string_view t = field(c);
    if (t.empty() && !required) return true;
    if (parse_date(t, v)) return true;
    *why = std::string(kColumnNames[c]) + " '" + std::string(t) + "' is not a date";
    return false;
  };
  if (!number(kCoupon, &b->coupon)) return false;
  if (!decimal) b->coupon /= 100.0;
  if (!date(kMaturity, true, &b->maturity) || !date(kSettlement, true, &b->settlement) ||
      !date(kDated, false, &b->dated_date) || !date(kFirstCoupon, false, &b->first_coupon))
    return false;
  const std::string_view type = field(kType);
  if (type.empty()) {
    b->type = 0;
  } else if (cache.valid && type == cache.text) {
    b->type = cache.code;
  } else {
    if (!resolve_type(type, &b->type, why)) return false;
    cache.text.assign(type);
    cache.code = b->type;
    cache.valid = true;
  }
  if (!field(kFrequency).empty()) {
    double v = 0;
    if (!number(kFrequency, &v)) return false;
    b->frequency = static_cast<int32_t>(v);
    if (v != b->frequency) {
      *why = "frequency '" + std::string(field(kFrequency)) + "' is not a whole number";
      return false;
    }
  }
  if (!field(kRedemption).empty() && !number(kRedemption, &b->redemption)) return false;
  const bool has_price = !field(kPrice).empty();
  const bool has_yield = !field(kYield).empty();
  if (has_price == has_yield) {
    *why = has_price ? "give a price or a yield, not both" : "give a price or a yield";
    return false;
  }
  *by_price = has_price;
  if (has_price) return number(kPrice, price);
  if (!number(kYield, yield)) return false;
  if (!decimal) *yield /= 100.0;
  return true;
}

void evaluate(const Bond& b, bool by_price, double price, double yield, RowResult* r) {
  int32_t err = 0;
  auto failed = [&](const char* stage) {
    if (err == 0) return false;
    r->code = err;
    r->stage = stage;
    return true;
  };
  if (by_price) {
    yield = bond_yield(b, price, &err);
    if (failed("yield")) return;
  } else {
    price = bond_price(b, yield, &err);
    if (failed("price")) return;
  }
  r->accrued = bond_accrued(b, &err);
  if (failed("accrued interest")) return;
  r->duration = bond_duration(b, yield, false, &err);
  if (failed("modified duration")) return;
  r->convexity = bond_convexity(b, yield, &err);
  if (failed("convexity")) return;
  r->pvbp = bond_pvbp(b, yield, &err);
  if (failed("PVBP")) return;
  r->price = price;
  r->yield = yield;
  r->has_values = true;
}

// Writes a CSV field, quoted when it holds a comma or a quote.
void put_csv_field(std::FILE* out, std::string_view s) {
  if (s.find_first_of(",\"\n") == std::string_view::npos) {
    std::fwrite(s.data(), 1, s.size(), out);
    return;
  }
  std::fputc('"', out);
  for (char c : s) {
    if (c == '"') std::fputc('"', out);
    std::fputc(c, out);
  }
  std::fputc('"', out);
}

void error_text(const RowResult& r, char* buf, size_t size) {
  if (!r.input_error.empty())
    std::snprintf(buf, size, "%s", r.input_error.c_str());
  else if (r.code != 0)
    std::snprintf(buf, size, "%s: error %d (%s): %s", r.stage, r.code, error_constant(r.code),
                  error_sentence(r.code));
  else
    buf[0] = '\0';
}

void write_csv_row(std::FILE* out, std::string_view id, int32_t type, const RowResult& r,
                   bool decimal) {
  put_csv_field(out, id);
  std::fprintf(out, ",%d,", type);
  if (r.has_values)
    std::fprintf(out, "%.6f,%.*f,%.6f,%.6f,%.6f,%.6f,", r.price, decimal ? 8 : 6,
                 decimal ? r.yield : r.yield * 100.0, r.accrued, r.duration, r.convexity, r.pvbp);
  else
    std::fputs(",,,,,,", out);
  char msg[512];
  error_text(r, msg, sizeof msg);
  if (!r.input_error.empty())
    std::fputs("input,", out);
  else if (r.code != 0)
    std::fprintf(out, "%d,", r.code);
  else
    std::fputc(',', out);
  put_csv_field(out, msg);
  std::fputc('\n', out);
}

void write_table_row(std::FILE* out, std::string_view id, int32_t type, const RowResult& r,
                     bool decimal) {
  std::fprintf(out, "%-18.*s %5d ", static_cast<int>(id.size() > 18 ? 18 : id.size()), id.data(),
               type);
  if (r.has_values)
    std::fprintf(out, "%12.6f %10.*f %10.6f %9.4f %10.4f %9.6f", r.price, decimal ? 6 : 4,
                 decimal ? r.yield : r.yield * 100.0, r.accrued, r.duration, r.convexity, r.pvbp);
  else
    std::fprintf(out, "%12s %10s %10s %9s %10s %9s", "-", "-", "-", "-", "-", "-");
  char msg[512];
  error_text(r, msg, sizeof msg);
  if (msg[0] != '\0') std::fprintf(out, "  %s", msg);
  std::fputc('\n', out);
}

}  // namespace

int cmd_batch(const Options& o) {
  if (o.positional.size() != 1)
    return report_usage_error("batch", "give one CSV file (or - for standard input)");
  const std::string& path = o.positional[0];
  std::ifstream file;
  std::istream* in = &std::cin;
  if (path != "-") {
    file.open(path);
    if (!file) return report_usage_error("batch", "cannot open '" + path + "'");
    in = &file;
  }
  std::FILE* out = stdout;
  if (const std::string* target = o.get("output")) {
    out = std::fopen(target->c_str(), "w");
    if (out == nullptr) return report_usage_error("batch", "cannot write '" + *target + "'");
  }
  static char out_buffer[1 << 16];
  std::setvbuf(out, out_buffer, _IOFBF, sizeof out_buffer);

  std::string line;
  std::array<std::string_view, kMaxFields> fields;
  long line_no = 0;
  int col[kColumnCount];
  for (int& c : col) c = -1;

  // Header: column names in any order; unknown columns are ignored.
  bool have_header = false;
  while (!have_header && std::getline(*in, line)) {
    ++line_no;
    have_header = line.find_first_not_of(" \t\r") != std::string::npos;
  }
  const int nheader = have_header ? split_csv(line, fields) : -1;
  if (nheader <= 0) {
    if (out != stdout) std::fclose(out);
    return report_usage_error("batch", "'" + path + "' has no header line");
  }
  for (int i = 0; i < nheader; ++i)
    for (int c = 0; c < kColumnCount; ++c)
      if (fields[i] == kColumnNames[c]) col[c] = i;
  for (Column c : {kCoupon, kMaturity, kSettlement}) {
    if (col[c] < 0) {
      if (out != stdout) std::fclose(out);
      return report_usage_error("batch", "the header of '" + path + "' has no '" +
                                             kColumnNames[c] +
                                             "' column (required: coupon, maturity, settlement "
                                             "and price or yield)");
    }
  }
  if (col[kPrice] < 0 && col[kYield] < 0) {
    if (out != stdout) std::fclose(out);
    return report_usage_error("batch", "the header of '" + path +
                                           "' needs a 'price' or a 'yield' column");
  }

  if (o.table)
    std::fprintf(out, "%-18s %5s %12s %10s %10s %9s %10s %9s  %s\n", "id", "type", "price",
                 o.decimal ? "yield" : "yield %", "accrued", "mod dur", "convexity", "pvbp",
                 "error");
  else
    std::fprintf(out, "id,type,price,%s,accrued,modified_duration,convexity,pvbp,error_code,"
                      "error\n",
                 o.decimal ? "yield" : "yield_pct");

  long rows = 0, failures = 0;
  TypeCache cache;
  RowResult r;
  std::string why;
  while (std::getline(*in, line)) {
    ++line_no;
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    ++rows;
    r.has_values = false;
    r.code = 0;
    r.input_error.clear();
    Bond b;
    double price = 0, yield = 0;
    bool by_price = false;
    const int n = split_csv(line, fields);
    std::string_view id = n > 0 && col[kId] >= 0 && col[kId] < n ? fields[col[kId]] : "";
    why.clear();
    if (n < 0) {
      why = "unbalanced quotes or too many fields";
      id = "";
    } else if (n != nheader) {
      why = "has " + std::to_string(n) + " fields, the header has " + std::to_string(nheader);
    } else if (row_bond(fields, col, n, o.decimal, cache, &b, &price, &yield, &by_price, &why)) {
      evaluate(b, by_price, price, yield, &r);
    }
    if (!why.empty()) {
      r.input_error = "line " + std::to_string(line_no) + ": " + why;
      std::fprintf(stderr, "kbond batch: %s\n", r.input_error.c_str());
    }
    if (!r.has_values) ++failures;
    if (o.table)
      write_table_row(out, id, b.type, r, o.decimal);
    else
      write_csv_row(out, id, b.type, r, o.decimal);
    if (r.code != 0)
      std::fprintf(stderr, "kbond batch: line %ld: %s: error %d (%s): %s\n", line_no, r.stage,
                   r.code, error_constant(r.code), error_sentence(r.code));
    // Announced when the row after each hundred-thousandth arrives, so only
    // files longer than that show progress.
    if (rows > kProgressEvery && (rows - 1) % kProgressEvery == 0)
      std::fprintf(stderr, "kbond batch: %ld rows done\n", rows - 1);
  }
  if (rows > kProgressEvery)
    std::fprintf(stderr, "kbond batch: finished, %ld rows, %ld with errors\n", rows, failures);
  std::fflush(out);
  if (out != stdout) std::fclose(out);
  return failures == 0 ? kExitOk : kExitLibraryError;
}

}  // namespace kbond::cli
