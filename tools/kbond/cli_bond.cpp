#include "cli_bond.h"

#include <cctype>
#include <charconv>

#include "k_bond.h"

namespace kbond::cli {
namespace {

// Everyday names for the markets' base codes.
struct Nickname {
  const char* name;
  int32_t code;
};
constexpr Nickname kNicknames[] = {
    {"ust", 0},         {"treasury", 0},  {"us", 0},           {"agency", 1},
    {"municipal", 2},   {"muni", 2},      {"corporate", 3},    {"corp", 3},
    {"canada", 20},     {"gilt", 40},     {"uk", 40},          {"bund", 60},
    {"germany", 60},    {"btan", 80},     {"oat", 81},         {"france", 81},
    {"swiss", 100},     {"belgium", 120}, {"austria", 140},    {"dutch", 160},
    {"netherlands", 160}, {"sweden", 180}, {"korea", 190},     {"jgb", 200},
    {"japan", 200},     {"hongkong", 210}, {"australia", 220}, {"acgb", 220},
    {"eurobond", 240},  {"india", 250},   {"btp", 260},        {"italy", 260},
    {"spain", 280},     {"bono", 280},    {"portugal", 290},   {"denmark", 300},
    {"finland", 320},   {"norway", 330},  {"ireland", 340},    {"newzealand", 350},
    {"czech", 360},     {"southafrica", 380}, {"generic", 500}, {"yankee", 810},
};

bool same_ignoring_case(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

const int32_t* ptr_or_null(const int32_t& v) { return v != 0 ? &v : nullptr; }

}  // namespace

bool resolve_type(std::string_view text, int32_t* code, std::string* why) {
  int value = 0;
  auto [p, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (!text.empty() && ec == std::errc() && p == text.data() + text.size()) {
    int32_t err = 0;
    KVLbtype(value, nullptr, nullptr, nullptr, nullptr, &err);
    if (err != 0) {
      *why = "bond type code " + std::string(text) + " is not in the catalogue (see 'kbond types')";
      return false;
    }
    *code = value;
    return true;
  }
  for (const auto& n : kNicknames) {
    if (same_ignoring_case(text, n.name)) {
      *code = n.code;
      return true;
    }
  }
  const int32_t* codes = nullptr;
  const int32_t* eom_codes = nullptr;
  const char* const* names = nullptr;
  const int32_t rows = KVLbtable(&codes, &eom_codes, &names, nullptr, nullptr, nullptr);
  for (int32_t i = 0; i < rows; ++i) {
    if (names[i] != nullptr && same_ignoring_case(text, names[i])) {
      // Shared names ("Generic Bond") resolve to the first, lowest code.
      *code = codes[i] >= 0 ? codes[i] : eom_codes[i];
      return true;
    }
  }
  *why = "unknown bond type \"" + std::string(text) +
         "\": give a code, a name from 'kbond types' or a nickname such as gilt, ust, bund, jgb";
  return false;
}

double bond_price(const Bond& b, double yield, int32_t* error) {
  const int32_t freq = b.frequency;
  return KVLbpr(&b.coupon, 1, &b.maturity, 1, b.settlement, yield, ptr_or_null(b.dated_date),
                ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                freq != 0 ? 1 : 0, &b.redemption, nullptr, nullptr, nullptr, nullptr, nullptr,
                nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                error);
}

double bond_accrued(const Bond& b, int32_t* error) {
  const int32_t freq = b.frequency;
  return KVLbai(&b.coupon, 1, &b.maturity, 1, b.settlement, ptr_or_null(b.dated_date),
                ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                freq != 0 ? 1 : 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                nullptr, error);
}

double bond_yield(const Bond& b, double price, int32_t* error) {
  const int32_t freq = b.frequency;
  return KVLbyld(&b.coupon, 1, &b.maturity, 1, b.settlement, price, ptr_or_null(b.dated_date),
                 ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                 freq != 0 ? 1 : 0, &b.redemption, nullptr, nullptr, nullptr, nullptr, nullptr,
                 nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                 error);
}

double bond_duration(const Bond& b, double yield, bool macaulay, int32_t* error) {
  const int32_t freq = b.frequency;
  const int32_t kind = macaulay ? 1 : 0;
  return KVLbdur(&b.coupon, 1, &b.maturity, 1, b.settlement, yield, ptr_or_null(b.dated_date),
                 ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                 freq != 0 ? 1 : 0, &b.redemption, &kind, nullptr, nullptr, nullptr, nullptr,
                 nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr,
                 nullptr, error);
}

double bond_convexity(const Bond& b, double yield, int32_t* error) {
  const int32_t freq = b.frequency;
  return KVLbconv(&b.coupon, 1, &b.maturity, 1, b.settlement, yield, ptr_or_null(b.dated_date),
                  ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                  freq != 0 ? 1 : 0, &b.redemption, nullptr, nullptr, nullptr, nullptr, nullptr,
                  nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr,
                  error);
}

double bond_pvbp(const Bond& b, double yield, int32_t* error) {
  const int32_t freq = b.frequency;
  return KVLbvalbp(&b.coupon, 1, &b.maturity, 1, b.settlement, yield, ptr_or_null(b.dated_date),
                   ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                   freq != 0 ? 1 : 0, &b.redemption, nullptr, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                   nullptr, nullptr, error);
}

double bond_yield_value_32nd(const Bond& b, double yield, int32_t* error) {
  const int32_t freq = b.frequency;
  return KVLbval32(&b.coupon, 1, &b.maturity, 1, b.settlement, yield, ptr_or_null(b.dated_date),
                   ptr_or_null(b.first_coupon), &b.type, freq != 0 ? &freq : nullptr,
                   freq != 0 ? 1 : 0, &b.redemption, nullptr, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr,
                   nullptr, nullptr, error);
}
}  // namespace kbond::cli
