// One straight bond as the command line describes it, and the library
// calls on it. Only the public C interface is used.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kbond::cli {

struct Bond {
  double coupon = 0.0;        // decimal fraction per year
  int32_t maturity = 0;       // date serial
  int32_t settlement = 0;     // date serial
  int32_t dated_date = 0;     // 0: derived by the library
  int32_t first_coupon = 0;   // 0: derived by the library
  int32_t type = 0;           // bond type code
  int32_t frequency = 0;      // 0: the type's default
  double redemption = 100.0;  // per 100 of face
};

// An everyday name of a bond type's base code ("gilt" is 40).
struct Nickname {
  const char* name;
  int32_t code;
};

// Every nickname, in the order of the shared nickname file.
std::span<const Nickname> nicknames();

// A bond type from a code ("40"), a catalogue name ("Gilt", any case) or a
// market nickname ("gilt", "ust", "bund", "jgb", ...). On failure returns
// false and puts a sentence in *why.
bool resolve_type(std::string_view text, int32_t* code, std::string* why);

// The library calls. Each returns the library's value and sets *error.
double bond_price(const Bond& b, double yield, int32_t* error);
double bond_accrued(const Bond& b, int32_t* error);
double bond_yield(const Bond& b, double price, int32_t* error);
double bond_duration(const Bond& b, double yield, bool macaulay, int32_t* error);
double bond_convexity(const Bond& b, double yield, int32_t* error);
double bond_pvbp(const Bond& b, double yield, int32_t* error);
double bond_yield_value_32nd(const Bond& b, double yield, int32_t* error);

}  // namespace kbond::cli
