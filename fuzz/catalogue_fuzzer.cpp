// Catalogue and library services: KVLbtype, KVLbtable, KVLbcustom, KVLbondver.
#include <cstring>

#include "fuzz_input.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kTypeCodes[] = {0,    1,    2,   40,  41,   80,   81,   82,   290, 380,
                                  540,  541,  830, 831, 999,  1000, 1001, 1050, 1099, 1100,
                                  -1,   14,   INT32_MIN, INT32_MAX};

void check_type(int32_t code) {
  int32_t frequency = 99, eom = 99, error = 12345;
  const char* daycount = nullptr;
  const char* name = nullptr;
  KVLbtype(code, &frequency, &daycount, &eom, &name, &error);
  constexpr int32_t kErrors[] = {0, 460, -60};
  check(one_of(error, kErrors), "btype: error code outside its set", 0, error);
  check(daycount != nullptr && name != nullptr, "btype: names missing", 0, error);
  if (error != 0) {
    check(frequency == -1 && eom == -1, "btype: failure values", frequency, error);
    check(std::strcmp(daycount, "error") == 0 && std::strcmp(name, "error") == 0,
          "btype: failure names", 0, error);
  } else {
    // A custom type keeps whatever end-of-month value it was given.
    if (code < 1000) check(eom == 0 || eom == 1, "btype: eom flag", eom, error);
    check(frequency == -1 || frequency == 0 || (frequency >= 1 && frequency <= 12),
          "btype: frequency", frequency, error);
    check(std::strlen(name) > 0 && std::strlen(daycount) > 0, "btype: empty name", 0, error);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  switch (in.byte() % 4) {
    case 0: {  // one type's conventions, some outputs NULL
      const int32_t code = in.code(40, kTypeCodes);
      int32_t frequency = 0, eom = 0, error = 0;
      const char* daycount = nullptr;
      const char* name = nullptr;
      const uint8_t mask = in.byte();
      KVLbtype(code, mask & 1 ? &frequency : nullptr, mask & 2 ? &daycount : nullptr,
               mask & 4 ? &eom : nullptr, mask & 8 ? &name : nullptr, mask & 16 ? &error : nullptr);
      check_type(code);
      break;
    }
    case 1: {  // the whole table, some outputs NULL
      const int32_t* codes = nullptr;
      const int32_t* eom_codes = nullptr;
      const char* const* names = nullptr;
      const char* const* daycounts = nullptr;
      const int32_t* frequencies = nullptr;
      const char* exdiv = nullptr;
      const uint8_t mask = in.byte();
      const int32_t rows =
          KVLbtable(mask & 1 ? &codes : nullptr, mask & 2 ? &eom_codes : nullptr,
                    mask & 4 ? &names : nullptr, mask & 8 ? &daycounts : nullptr,
                    mask & 16 ? &frequencies : nullptr, mask & 32 ? &exdiv : nullptr);
      check(rows == 64, "btable: row count", rows, 0);
      for (int32_t i = 0; i < rows; ++i) {
        if (codes && codes[i] >= 0) check_type(codes[i]);
        if (eom_codes && eom_codes[i] >= 0) check_type(eom_codes[i]);
        if (names) check(names[i] && std::strlen(names[i]) > 0, "btable: name", i, 0);
        if (daycounts) check(daycounts[i] != nullptr, "btable: day count", i, 0);
        if (exdiv) check(exdiv[i] == 0 || exdiv[i] == 1, "btable: ex-dividend flag", i, 0);
      }
      break;
    }
    case 2: {  // define a custom type, then read it back
      const int32_t code = in.code(1000, kTypeCodes);
      int32_t v[11] = {};
      const int32_t* p[11] = {};
      for (int i = 0; i < 11; ++i) p[i] = in.optional(v[i], [&] { return in.code(1); });
      const int32_t result =
          KVLbcustom(code, p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], p[9], p[10]);
      const bool in_range = code >= 1000 && code <= 1099;
      if (!in_range) check(result == -1, "bcustom: code outside 1000..1099 accepted", result, 0);
      else check(result == code || result == -1, "bcustom: result", result, 0);
      // Whether refused field by field or not, a custom code in range is
      // defined afterwards.
      if (in_range) {
        int32_t error = 12345;
        KVLbtype(code, nullptr, nullptr, nullptr, nullptr, &error);
        check(error == 0, "bcustom: type not defined afterwards", result, error);
      }
      check_type(code);
      break;
    }
    default: {
      const char* version = KVLbondver();
      check(version && std::strcmp(version, "v2002.0p0nt") == 0, "bondver", 0, 0);
      KVLbond_initMT();
      break;
    }
  }
  return 0;
}
