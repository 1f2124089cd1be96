#include "cli_options.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "cli_dates.h"

namespace kbond::cli {
namespace {

// Flags that take a value; a spelling on the right is accepted for the left.
constexpr std::string_view kValueFlags[] = {"coupon",     "maturity",     "settlement", "type",
                                            "frequency",  "dated",        "first-coupon",
                                            "redemption", "price",        "yield", "output",
                                            "jobs",       "separator"};
struct Alias {
  std::string_view alias, name;
};
constexpr Alias kAliases[] = {{"settle", "settlement"}, {"mat", "maturity"}, {"freq", "frequency"},
                              {"cpn", "coupon"}, {"o", "output"}, {"first", "first-coupon"},
                              {"j", "jobs"}, {"sep", "separator"}};

}  // namespace

bool Options::has(std::string_view name) const { return get(name) != nullptr; }

const std::string* Options::get(std::string_view name) const {
  for (const auto& f : flags)
    if (f.first == name) return &f.second;
  return nullptr;
}

bool parse_options(int argc, char** argv, int first, Options* out, std::string* why) {
  for (int i = first; i < argc; ++i) {
    std::string_view arg = argv[i];
    if (arg == "--json") { out->json = true; continue; }
    if (arg == "--decimal") { out->decimal = true; continue; }
    if (arg == "--table") { out->table = true; continue; }
    if (arg == "--nicknames") { out->nicknames = true; continue; }
    if (arg == "--help" || arg == "-h") { out->help = true; continue; }
    if (arg.size() < 2 || arg[0] != '-' || (arg.size() > 1 && std::isdigit(static_cast<unsigned char>(arg[1])))) {
      out->positional.emplace_back(arg);
      continue;
    }
    std::string_view name = arg.substr(arg[1] == '-' ? 2 : 1);
    std::string_view value;
    bool inline_value = false;
    if (const auto eq = name.find('='); eq != std::string_view::npos) {
      value = name.substr(eq + 1);
      name = name.substr(0, eq);
      inline_value = true;
    }
    for (const auto& a : kAliases)
      if (name == a.alias) name = a.name;
    bool known = false;
    for (const auto& f : kValueFlags) known = known || name == f;
    if (!known) {
      *why = "unknown option '" + std::string(arg) + "' (see --help)";
      return false;
    }
    if (!inline_value) {
      if (i + 1 >= argc) {
        *why = "option --" + std::string(name) + " needs a value";
        return false;
      }
      value = argv[++i];
    }
    out->flags.emplace_back(std::string(name), std::string(value));
  }
  return true;
}

bool parse_number(std::string_view text, double* value) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  auto [p, ec] = std::from_chars(text.data(), text.data() + text.size(), *value);
  return ec == std::errc() && p == text.data() + text.size() && std::isfinite(*value);
}

bool parse_price(std::string_view text, double* value) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  const size_t dash = text.find('-');
  if (dash == std::string_view::npos || dash == 0) return parse_number(text, value);
  // Whole points, a dash, two digits of 32nds (00..31), then '+' for half
  // a 32nd or one digit of eighths of a 32nd.
  const std::string_view points = text.substr(0, dash), ticks = text.substr(dash + 1);
  double whole = 0;
  if (!parse_number(points, &whole) || whole < 0 || ticks.size() < 2 || ticks.size() > 3)
    return false;
  if (!std::isdigit(static_cast<unsigned char>(ticks[0])) ||
      !std::isdigit(static_cast<unsigned char>(ticks[1])))
    return false;
  const int thirty_seconds = (ticks[0] - '0') * 10 + (ticks[1] - '0');
  if (thirty_seconds > 31) return false;
  double eighths = 0;
  if (ticks.size() == 3) {
    if (ticks[2] == '+') eighths = 4;
    else if (ticks[2] >= '0' && ticks[2] <= '7') eighths = ticks[2] - '0';
    else return false;
  }
  *value = whole + (thirty_seconds + eighths / 8.0) / 32.0;
  return true;
}

std::string rate_unit_warning(std::string_view what, double typed, bool decimal) {
  char text[256];
  if (!decimal && typed > 0 && typed < 0.2)
    std::snprintf(text, sizeof text,
                  "%.*s %g looks like a decimal fraction, but rates are read in percent "
                  "(%g means %g %%); give --decimal if it is a fraction",
                  static_cast<int>(what.size()), what.data(), typed, typed, typed);
  else if (decimal && typed > 1)
    std::snprintf(text, sizeof text,
                  "%.*s %g looks like a percentage, but --decimal reads rates as fractions "
                  "(%g means %g %%); leave out --decimal if it is in percent",
                  static_cast<int>(what.size()), what.data(), typed, typed, typed * 100.0);
  else
    return {};
  return text;
}

bool rate_from_options(const Options& o, std::string_view name, double* rate, std::string* why) {
  const std::string* text = o.get(name);
  if (text == nullptr) {
    *why = "missing --" + std::string(name) + (o.decimal ? " (decimal fraction, e.g. 0.0425)"
                                                         : " (in percent, e.g. 4.25)");
    return false;
  }
  if (!parse_number(*text, rate)) {
    *why = "--" + std::string(name) + " '" + *text + "' is not a number";
    return false;
  }
  const std::string warning = rate_unit_warning("--" + std::string(name), *rate, o.decimal);
  if (!warning.empty()) std::fprintf(stderr, "kbond: warning: %s.\n", warning.c_str());
  if (!o.decimal) *rate /= 100.0;
  return true;
}

static bool date_flag(const Options& o, std::string_view name, bool required, int32_t* serial,
                      std::string* why) {
  const std::string* text = o.get(name);
  if (text == nullptr) {
    if (required) *why = "missing --" + std::string(name) + " (a date such as 2031-05-15)";
    return !required;
  }
  if (!parse_date(*text, serial)) {
    *why = "--" + std::string(name) + " '" + *text +
           "' is not a date: use YYYY-MM-DD or a serial (1 = 1900-01-01)";
    return false;
  }
  return true;
}

bool bond_from_options(const Options& o, Bond* b, std::string* why) {
  if (o.has("price") && o.has("yield")) {
    *why = "give exactly one of --yield and --price, not both";
    return false;
  }
  if (!rate_from_options(o, "coupon", &b->coupon, why)) return false;
  if (!date_flag(o, "maturity", true, &b->maturity, why)) return false;
  if (!date_flag(o, "settlement", true, &b->settlement, why)) return false;
  if (!date_flag(o, "dated", false, &b->dated_date, why)) return false;
  if (!date_flag(o, "first-coupon", false, &b->first_coupon, why)) return false;
  if (const std::string* t = o.get("type")) {
    if (!resolve_type(*t, &b->type, why)) return false;
  }
  if (const std::string* f = o.get("frequency")) {
    double v = 0;
    // The library decides which frequencies it accepts (1, 2, 3, 4, 6, 12).
    if (!parse_number(*f, &v) || v != std::floor(v) || v < 0 || v > 1000) {
      *why = "--frequency '" + *f + "' must be a whole number of coupons a year";
      return false;
    }
    b->frequency = static_cast<int32_t>(v);
  }
  if (const std::string* r = o.get("redemption")) {
    if (!parse_number(*r, &b->redemption)) {
      *why = "--redemption '" + *r + "' is not a number";
      return false;
    }
  }
  return true;
}

}  // namespace kbond::cli
