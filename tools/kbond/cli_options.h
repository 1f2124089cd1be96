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

// Builds the bond from --coupon, --maturity, --settlement, --type,
// --frequency, --dated, --first-coupon, --redemption.
bool bond_from_options(const Options& o, Bond* b, std::string* why);

// Reads a rate flag (coupon or yield) as percent or decimal.
bool rate_from_options(const Options& o, std::string_view name, double* rate, std::string* why);

}  // namespace kbond::cli
