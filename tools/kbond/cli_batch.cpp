// kbond batch: one bond per CSV row in, one analytics row per bond out.
//
// The file is read in chunks of rows, so memory stays bounded whatever its
// length. Each chunk is parsed into columns on --jobs threads, valued by one
// KVLbbatch call on the same number of threads, formatted on them again,
// and written in input order.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "cli_commands.h"
#include "cli_csv.h"
#include "cli_dates.h"
#include "cli_errors.h"
#include "cli_progress.h"
#include "cli_report.h"
#include "k_bond.h"

namespace kbond::cli {
namespace {

constexpr size_t kChunkRows = 65536;
constexpr size_t kBlockRows = 2048;  // parsed or formatted by one thread at a time
constexpr int32_t kMeasures = KVL_BATCH_PRICE | KVL_BATCH_YIELD | KVL_BATCH_ACCRUED |
                              KVL_BATCH_MODIFIED_DURATION | KVL_BATCH_CONVEXITY | KVL_BATCH_PVBP;
// A row that could not be read is handed to the batch with a market kind it
// refuses at once, so the columns stay aligned with the lines.
constexpr int32_t kUnreadRow = -1;

enum Column { kId, kType, kCoupon, kMaturity, kSettlement, kPrice, kYield, kFrequency, kDated,
              kFirstCoupon, kRedemption, kColumnCount };
constexpr const char* kColumnNames[kColumnCount] = {
    "id", "type", "coupon", "maturity", "settlement", "price", "yield", "frequency", "dated",
    "first_coupon", "redemption"};

enum class Format { kCsv, kTable, kJson };

struct Layout {
  int col[kColumnCount];
  int fields = 0;  // in the header
  char separator = ',';
  bool decimal = false;
  Format format = Format::kCsv;
};

// A book uses few bond types: remember the texts already resolved.
class TypeCache {
 public:
  bool find(std::string_view text, int32_t* code) const {
    for (const auto& [t, c] : entries_)
      if (t == text) {
        *code = c;
        return true;
      }
    return false;
  }
  void add(std::string_view text, int32_t code) {
    if (entries_.size() < kEntries) entries_.emplace_back(std::string(text), code);
  }

 private:
  static constexpr size_t kEntries = 64;
  std::vector<std::pair<std::string, int32_t>> entries_;
};

// Rates that look like the other unit. In percent mode a file of decimal
// fractions has every rate below 0.2, while a percent file may hold the odd
// 0.125 % coupon, so the warning needs all of the first chunk's rates to be
// that low; with --decimal any rate above 1 is wrong.
struct UnitCheck {
  long rates = 0, low = 0;
  std::string first_low, first_high;  // the sentence for the first such rate

  void note(const char* column, double typed, bool decimal, long line) {
    if (typed == 0) return;
    ++rates;
    const std::string w = rate_unit_warning(column, typed, decimal);
    if (w.empty()) return;
    std::string& first = decimal ? first_high : first_low;
    if (!decimal) ++low;
    if (first.empty()) first = "line " + std::to_string(line) + ": " + w;
  }
};

// One chunk of lines, its columns for KVLbbatch and its formatted output.
struct Chunk {
  std::vector<std::string> lines;
  std::vector<long> line_numbers;
  std::vector<std::string_view> ids;
  std::vector<std::string> input_errors;  // empty when the row was read
  std::vector<int32_t> types, maturities, settlements, kinds, frequencies, dated, first;
  std::vector<double> coupons, market, redemptions;
  std::vector<double> price, yield, accrued, duration, convexity, pvbp;
  std::vector<int32_t> errors, failed;
  std::vector<std::string> out, err;  // per block
  std::vector<UnitCheck> units;       // per block
  std::vector<TypeCache> caches;      // per thread, kept from chunk to chunk
  size_t size() const { return lines.size(); }

  void prepare() {
    const size_t n = size();
    for (auto* v : {&types, &maturities, &settlements, &kinds, &frequencies, &dated, &first,
                    &errors, &failed})
      v->assign(n, 0);
    for (auto* v : {&coupons, &market, &redemptions, &price, &yield, &accrued, &duration,
                    &convexity, &pvbp})
      v->assign(n, 0.0);
    ids.assign(n, {});
    input_errors.resize(n);
  }
};

// Runs fn(worker, block, begin, end) for every block of kBlockRows rows of
// [0, n) on up to `threads` threads (worker 0 is this one) that take the
// next block from a common counter, so that a thread the system pauses
// leaves its blocks to the others.
template <class Fn>
void run_blocks(size_t n, int threads, Fn fn) {
  const size_t blocks = (n + kBlockRows - 1) / kBlockRows;
  std::atomic<size_t> next{0};
  const auto work = [&](size_t worker) {
    for (size_t b = next.fetch_add(1); b < blocks; b = next.fetch_add(1))
      fn(worker, b, b * kBlockRows, std::min(n, (b + 1) * kBlockRows));
  };
  std::vector<std::thread> helpers;
  for (size_t t = 1; t < std::min<size_t>(threads, blocks); ++t) helpers.emplace_back(work, t);
  work(0);
  for (auto& t : helpers) t.join();
}

// A number field; with ';' between fields a decimal comma is accepted.
bool field_number(std::string_view text, char separator, double* v) {
  if (separator == ';' && text.find(',') != std::string_view::npos && text.size() < 64) {
    char copy[64];
    std::memcpy(copy, text.data(), text.size());
    std::replace(copy, copy + text.size(), ',', '.');
    return parse_number(std::string_view(copy, text.size()), v);
  }
  return parse_number(text, v);
}

// Reads row i of the chunk into its columns; false with a sentence in *why.
bool read_row(const CsvFields& f, int nfields, const Layout& lay, TypeCache& cache, Chunk& c,
              size_t i, std::string* why, UnitCheck& units) {
  auto field = [&](Column k) -> std::string_view {
    return lay.col[k] >= 0 && lay.col[k] < nfields ? f[lay.col[k]] : std::string_view();
  };
  auto number = [&](Column k, double* v) {
    if (field_number(field(k), lay.separator, v)) return true;
    *why = std::string(kColumnNames[k]) + " '" + std::string(field(k)) + "' is not a number";
    return false;
  };
  auto date = [&](Column k, bool required, int32_t* v) {
    const std::string_view t = field(k);
    if (t.empty() && !required) return true;
    if (parse_date(t, v)) return true;
    *why = std::string(kColumnNames[k]) + " '" + std::string(t) + "' is not a date";
    return false;
  };
  auto rate = [&](Column k, double* v) {
    if (!number(k, v)) return false;
    units.note(kColumnNames[k], *v, lay.decimal, c.line_numbers[i]);
    if (!lay.decimal) *v /= 100.0;
    return true;
  };
  if (!rate(kCoupon, &c.coupons[i])) return false;
  if (!date(kMaturity, true, &c.maturities[i]) || !date(kSettlement, true, &c.settlements[i]) ||
      !date(kDated, false, &c.dated[i]) || !date(kFirstCoupon, false, &c.first[i]))
    return false;
  const std::string_view type = field(kType);
  if (type.empty()) {
    c.types[i] = 0;
  } else if (!cache.find(type, &c.types[i])) {
    if (!resolve_type(type, &c.types[i], why)) return false;
    cache.add(type, c.types[i]);
  }
  if (!field(kFrequency).empty()) {
    double v = 0;
    if (!number(kFrequency, &v)) return false;
    c.frequencies[i] = static_cast<int32_t>(v);
    if (v != c.frequencies[i]) {
      *why = "frequency '" + std::string(field(kFrequency)) + "' is not a whole number";
      return false;
    }
  }
  c.redemptions[i] = 100.0;
  if (!field(kRedemption).empty() && !number(kRedemption, &c.redemptions[i])) return false;
  const bool has_price = !field(kPrice).empty();
  const bool has_yield = !field(kYield).empty();
  if (has_price == has_yield) {
    *why = has_price ? "give a price or a yield, not both" : "give a price or a yield";
    return false;
  }
  c.kinds[i] = has_price ? KVL_BATCH_GIVEN_PRICE : KVL_BATCH_GIVEN_YIELD;
  if (has_price) {
    std::string_view text = field(kPrice);
    std::string copy;
    if (lay.separator == ';') {
      copy.assign(text);
      std::replace(copy.begin(), copy.end(), ',', '.');
      text = copy;
    }
    if (parse_price(text, &c.market[i])) return true;
    *why = "price '" + std::string(field(kPrice)) + "' is not a price";
    return false;
  }
  return rate(kYield, &c.market[i]);
}

void parse_rows(Chunk& c, const Layout& lay, TypeCache& cache, size_t block, size_t begin,
                size_t end) {
  CsvFields fields;
  std::string why;
  for (size_t i = begin; i < end; ++i) {
    const int n = split_csv(c.lines[i], lay.separator, fields);
    c.ids[i] = n > 0 && lay.col[kId] >= 0 && lay.col[kId] < n ? fields[lay.col[kId]] : "";
    why.clear();
    if (n < 0) {
      why = "unbalanced quotes or too many fields";
      c.ids[i] = "";
    } else if (n != lay.fields) {
      why = "has " + std::to_string(n) + " fields, the header has " + std::to_string(lay.fields);
    } else {
      read_row(fields, n, lay, cache, c, i, &why, c.units[block]);
    }
    if (!why.empty()) {
      c.input_errors[i] = "line " + std::to_string(c.line_numbers[i]) + ": " + why;
      c.kinds[i] = kUnreadRow;
    } else {
      c.input_errors[i].clear();
    }
  }
}

const char* stage_name(int32_t measure) {
  switch (measure) {
    case KVL_BATCH_PRICE: return "price";
    case KVL_BATCH_YIELD: return "yield";
    case KVL_BATCH_ACCRUED: return "accrued interest";
    case KVL_BATCH_MODIFIED_DURATION: return "modified duration";
    case KVL_BATCH_CONVEXITY: return "convexity";
    default: return "PVBP";
  }
}

template <class... Args>
void appendf(std::string& out, const char* format, Args... args) {
  char buf[512];
  const int n = std::snprintf(buf, sizeof buf, format, args...);
  out.append(buf, static_cast<size_t>(std::clamp(n, 0, static_cast<int>(sizeof buf) - 1)));
}

// The error sentence of row i, empty when it succeeded.
std::string row_error_text(const Chunk& c, size_t i) {
  if (!c.input_errors[i].empty()) return c.input_errors[i];
  if (c.errors[i] == 0) return {};
  std::string s;
  appendf(s, "%s: error %d (%s): %s", stage_name(c.failed[i]), c.errors[i],
          error_constant(c.errors[i]), error_sentence(c.errors[i]));
  return s;
}

void format_rows(Chunk& c, const Layout& lay, size_t block, size_t begin, size_t end) {
  std::string& out = c.out[block];
  std::string& err = c.err[block];
  out.clear();
  err.clear();
  const bool dec = lay.decimal;
  for (size_t i = begin; i < end; ++i) {
    const bool ok = c.input_errors[i].empty() && c.errors[i] == 0;
    const double y = dec ? c.yield[i] : c.yield[i] * 100.0;
    const std::string message = row_error_text(c, i);
    const std::string_view id = c.ids[i];
    if (lay.format == Format::kCsv) {
      append_csv_field(out, id);
      appendf(out, ",%d,", c.types[i]);
      if (ok)
        appendf(out, "%.6f,%.*f,%.6f,%.6f,%.6f,%.6f,", c.price[i], dec ? 8 : 6, y, c.accrued[i],
                c.duration[i], c.convexity[i], c.pvbp[i]);
      else
        out.append(",,,,,,");
      if (!c.input_errors[i].empty()) out.append("input,");
      else if (c.errors[i] != 0) appendf(out, "%d,", c.errors[i]);
      else out.push_back(',');
      append_csv_field(out, message);
      out.push_back('\n');
    } else if (lay.format == Format::kTable) {
      appendf(out, "%-18.*s %5d ", static_cast<int>(std::min<size_t>(id.size(), 18)), id.data(),
              c.types[i]);
      if (ok)
        appendf(out, "%12.6f %10.*f %10.6f %9.4f %10.4f %9.6f", c.price[i], dec ? 6 : 4, y,
                c.accrued[i], c.duration[i], c.convexity[i], c.pvbp[i]);
      else
        appendf(out, "%12s %10s %10s %9s %10s %9s", "-", "-", "-", "-", "-", "-");
      if (!message.empty()) out.append("  ").append(message);
      out.push_back('\n');
    } else {
      out.append("{\"id\": \"").append(json_escape(std::string(id)));
      appendf(out, "\", \"type\": %d, ", c.types[i]);
      if (ok)
        appendf(out,
                "\"price\": %.6f, \"%s\": %.*f, \"accrued\": %.6f, \"modified_duration\": %.6f, "
                "\"convexity\": %.6f, \"pvbp\": %.6f, \"error_code\": null, \"error\": null}\n",
                c.price[i], dec ? "yield" : "yield_pct", dec ? 8 : 6, y, c.accrued[i],
                c.duration[i], c.convexity[i], c.pvbp[i]);
      else {
        appendf(out,
                "\"price\": null, \"%s\": null, \"accrued\": null, \"modified_duration\": null, "
                "\"convexity\": null, \"pvbp\": null, ",
                dec ? "yield" : "yield_pct");
        if (!c.input_errors[i].empty()) out.append("\"error_code\": \"input\", ");
        else appendf(out, "\"error_code\": %d, ", c.errors[i]);
        out.append("\"error\": \"").append(json_escape(message)).append("\"}\n");
      }
    }
    if (!c.input_errors[i].empty())
      err.append("kbond batch: ").append(c.input_errors[i]).append("\n");
    else if (c.errors[i] != 0)
      appendf(err, "kbond batch: line %ld: %s\n", c.line_numbers[i], message.c_str());
  }
}

// Values the chunk; returns the rows that failed.
// Prints the unit warning once per file: in percent mode only from the
// first chunk, when all its rates were low.
void warn_units(const std::vector<UnitCheck>& parts, bool decimal, bool first_chunk,
                bool* warned) {
  long rates = 0, low = 0;
  const std::string* first = nullptr;
  for (const UnitCheck& u : parts) {
    rates += u.rates;
    low += u.low;
    const std::string& f = decimal ? u.first_high : u.first_low;
    if (!first && !f.empty()) first = &f;
  }
  if (*warned || !first || (!decimal && (!first_chunk || low != rates))) return;
  std::fprintf(stderr, "kbond batch: warning: %s.\n", first->c_str());
  *warned = true;
}

long value_chunk(Chunk& c, const Layout& lay, int jobs, bool first_chunk, bool* warned) {
  const size_t n = c.size();
  c.prepare();
  const size_t blocks = (n + kBlockRows - 1) / kBlockRows;
  c.out.resize(blocks);
  c.err.resize(blocks);
  c.units.assign(blocks, {});
  c.caches.resize(static_cast<size_t>(jobs));
  run_blocks(n, jobs, [&](size_t worker, size_t b, size_t begin, size_t end) {
    parse_rows(c, lay, c.caches[worker], b, begin, end);
  });
  warn_units(c.units, lay.decimal, first_chunk, warned);
  int32_t error = 0;
  KVLbbatch(static_cast<int32_t>(n), c.types.data(), c.coupons.data(), c.maturities.data(),
            c.settlements.data(), c.market.data(), 0, c.kinds.data(), c.frequencies.data(),
            c.dated.data(), c.first.data(), c.redemptions.data(), kMeasures, jobs, c.price.data(),
            c.yield.data(), c.accrued.data(), c.duration.data(), nullptr, c.convexity.data(),
            c.pvbp.data(), c.errors.data(), c.failed.data(), &error);
  long failures = 0;
  for (size_t i = 0; i < n; ++i) failures += !c.input_errors[i].empty() || c.errors[i] != 0;
  run_blocks(n, jobs, [&](size_t, size_t b, size_t begin, size_t end) {
    format_rows(c, lay, b, begin, end);
  });
  return failures;
}

int usage(std::FILE* out, const std::string& why) {
  if (out != stdout) std::fclose(out);
  return report_usage_error("batch", why);
}

}  // namespace

int cmd_batch(const Options& o) {
  if (o.positional.size() != 1)
    return report_usage_error("batch", "give one CSV file (or - for standard input)");
  Layout lay;
  lay.decimal = o.decimal;
  lay.format = o.json ? Format::kJson : (o.table ? Format::kTable : Format::kCsv);
  if (o.json && o.table) return report_usage_error("batch", "give --json or --table, not both");
  int jobs = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
  if (const std::string* j = o.get("jobs")) {
    double v = 0;
    if (!parse_number(*j, &v) || v != static_cast<int>(v) || v < 0 || v > 256)
      return report_usage_error("batch", "--jobs '" + *j +
                                             "' must be a whole number of threads, 1 to 256 "
                                             "(0: every core)");
    if (v > 0) jobs = static_cast<int>(v);
  }
  char forced_separator = 0;
  if (const std::string* s = o.get("separator")) {
    forced_separator = separator_from_text(*s);
    if (forced_separator == 0)
      return report_usage_error("batch", "--separator '" + *s +
                                             "' must be one character (',' or ';') or 'tab'");
  }
  const std::string& path = o.positional[0];
  std::ifstream file;
  std::istream* in = &std::cin;
  int64_t total_bytes = 0;
  if (path != "-") {
    file.open(path, std::ios::binary);
    if (!file) return report_usage_error("batch", "cannot open '" + path + "'");
    in = &file;
    std::error_code ec;
    total_bytes = static_cast<int64_t>(std::filesystem::file_size(path, ec));
    if (ec) total_bytes = 0;
  }
  std::FILE* out = stdout;
  if (const std::string* target = o.get("output")) {
    out = std::fopen(target->c_str(), "w");
    if (out == nullptr) return report_usage_error("batch", "cannot write '" + *target + "'");
  }
  static char out_buffer[1 << 16];
  std::setvbuf(out, out_buffer, _IOFBF, sizeof out_buffer);

  std::string line;
  long line_no = 0;
  int64_t bytes = 0;
  for (int& c : lay.col) c = -1;

  // Header: column names in any order; unknown columns are ignored.
  bool have_header = false;
  while (!have_header && std::getline(*in, line)) {
    ++line_no;
    bytes += static_cast<int64_t>(line.size()) + 1;
    have_header = without_bom(line).find_first_not_of(" \t\r") != std::string::npos;
  }
  const std::string_view header = without_bom(line);
  lay.separator = forced_separator ? forced_separator : detect_separator(header);
  CsvFields fields;
  lay.fields = have_header ? split_csv(header, lay.separator, fields) : -1;
  if (lay.fields <= 0) return usage(out, "'" + path + "' has no header line");
  for (int i = 0; i < lay.fields; ++i)
    for (int c = 0; c < kColumnCount; ++c)
      if (fields[i] == kColumnNames[c]) lay.col[c] = i;
  for (Column c : {kCoupon, kMaturity, kSettlement}) {
    if (lay.col[c] < 0)
      return usage(out, "the header of '" + path + "' has no '" + kColumnNames[c] +
                            "' column (required: coupon, maturity, settlement and price or "
                            "yield; columns are separated by '" +
                            std::string(1, lay.separator) + "')");
  }
  if (lay.col[kPrice] < 0 && lay.col[kYield] < 0)
    return usage(out, "the header of '" + path + "' needs a 'price' or a 'yield' column");

  if (lay.format == Format::kTable)
    std::fprintf(out, "%-18s %5s %12s %10s %10s %9s %10s %9s  %s\n", "id", "type", "price",
                 o.decimal ? "yield" : "yield %", "accrued", "mod dur", "convexity", "pvbp",
                 "error");
  else if (lay.format == Format::kCsv)
    std::fprintf(out, "id,type,price,%s,accrued,modified_duration,convexity,pvbp,error_code,"
                      "error\n",
                 o.decimal ? "yield" : "yield_pct");

  // Resolve one type first: the catalogue's tables are built once, before
  // the parsing threads read them.
  int32_t warm = 0;
  std::string ignored;
  resolve_type("generic", &warm, &ignored);

  long rows = 0, failures = 0;
  bool warned = false;
  Progress progress(total_bytes);
  Chunk chunk;
  bool more = true;
  while (more) {
    chunk.lines.clear();
    chunk.line_numbers.clear();
    while (chunk.lines.size() < kChunkRows) {
      if (!std::getline(*in, line)) {
        more = false;
        break;
      }
      ++line_no;
      bytes += static_cast<int64_t>(line.size()) + 1;
      if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
      chunk.lines.push_back(line);
      chunk.line_numbers.push_back(line_no);
    }
    if (chunk.lines.empty()) break;
    failures += value_chunk(chunk, lay, jobs, rows == 0, &warned);
    for (const std::string& part : chunk.out) std::fwrite(part.data(), 1, part.size(), out);
    for (const std::string& part : chunk.err) std::fputs(part.c_str(), stderr);
    rows += static_cast<long>(chunk.size());
    progress.update(rows, bytes);
  }
  progress.finish();
  std::fflush(out);
  if (out != stdout) std::fclose(out);
  return failures == 0 ? kExitOk : kExitLibraryError;
}

}  // namespace kbond::cli
