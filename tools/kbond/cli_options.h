// Command-line flags shared by the single-bond commands.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli_bond.h"

namespace kbond::cli {

// Thrown nowhere: parsing reports a sentence and the caller exits with 2.
struct Options {
  std::vector<std::string> positional;
  std::vector<std::pair<std::string, std::string>> flags;  // --name value
  bool json = false;
  bool decimal = false;  // coupons and yields as decimal fractions, not percent
  bool help = false;
  bool table = false;    // batch: aligned table instead of CSV
  bool nicknames = false;  // types: the nickname list instead of the catalogue

  bool has(std::string_view name) const;
  const std::string* get(std::string_view name) const;
};

// Splits argv into flags and positional words. Returns false with a
// sentence in *why for an unknown flag or a flag without its value.
bool parse_options(int argc, char** argv, int first, Options* out, std::string* why);

bool parse_number(std::string_view text, double* value);

// A clean price: a decimal number, or U.S. Treasury 32nds: "98-01" is
// 98 + 1/32, "98-01+" adds half a 32nd, "98-012" adds 2/8 of a 32nd.
bool parse_price(std::string_view text, double* value);

// A sentence when a rate as typed looks like the other unit: below 0.2 in
// percent mode (0.0425 for 4.25 %), above 1 with --decimal; else empty.
std::string rate_unit_warning(std::string_view what, double typed, bool decimal);

// Builds the bond from --coupon, --maturity, --settlement, --type,
// --frequency, --dated, --first-coupon, --redemption. Refuses --price
// together with --yield.
bool bond_from_options(const Options& o, Bond* b, std::string* why);

// Reads a rate flag (coupon or yield) as percent or decimal; a value that
// looks like the other unit is read as given, with a warning on stderr.
bool rate_from_options(const Options& o, std::string_view name, double* rate, std::string* why);

}  // namespace kbond::cli
