// Catalogue and library services: the bond type catalogue as callers see
// it, custom bond types, thread set-up and the library version.
#include <cstdint>

#include "dates/business_days.h"
#include "dates/day_count.h"
#include "engine/catalogue.h"
#include "engine/catalogue_table.h"
#include "engine/custom_types.h"
#include "engine/type_lock.h"
#include "k_bond.h"

namespace kbond::bond {
namespace {

using namespace kbond::engine;

constexpr const char kErrorText[] = "error";

// The version string, stored behind a marker so that it can be found in the
// library file itself.
[[gnu::used]] constexpr char kVersionRecord[] = "$KVLVER$v2002.0p0nt";
constexpr int kVersionMarkerLength = 8;

// Probe date for "has an ex-dividend rule": any rule moves it.
constexpr int32_t kExdivProbeDate = 36500;
constexpr int32_t kPublishedCapacity = 70;
constexpr int32_t kLastPublishedCode = 540;

// The arrays KVLbtable hands out: built once, never changed afterwards.
struct PublishedCatalogue {
  int32_t rows = 0;
  int32_t codes[kPublishedCapacity] = {};
  int32_t eom_codes[kPublishedCapacity] = {};
  const char* names[kPublishedCapacity] = {};
  const char* daycount_names[kPublishedCapacity] = {};
  int32_t frequencies[kPublishedCapacity] = {};
  char exdiv_flags[kPublishedCapacity] = {};
};

// The partner of a base code: the first of the ten codes after it that
// maps to it, or -1.
int32_t partner_code(int32_t base) noexcept {
  for (int32_t code = base + 1; code <= base + 10; ++code)
    if (bond_type_base(code) == base) return code;
  return -1;
}

PublishedCatalogue build_published() noexcept {
  PublishedCatalogue out;
  int32_t count = 0;
  const CatalogueRow* rows = catalogue_rows(&count);
  const dates::BusinessCalendar no_holidays{};
  for (int32_t i = 0; i < count && out.rows < kPublishedCapacity; ++i) {
    const int32_t base = rows[i].code;
    if (base > kLastPublishedCode) break;
    const int32_t eom = bond_type_eom_default(base);
    const int32_t partner = partner_code(base);
    const int32_t r = out.rows++;
    out.codes[r] = eom ? partner : base;
    out.eom_codes[r] = eom ? base : partner;
    out.names[r] = rows[i].name;
    out.daycount_names[r] = dates::day_count_name(bond_type_accrual_basis(base, 0, 0, eom));
    out.frequencies[r] = bond_type_frequency(base);
    out.exdiv_flags[r] =
        bond_type_exdiv_date(kExdivProbeDate, base, no_holidays, nullptr) != kExdivProbeDate ? 1 : 0;
  }
  return out;
}

const PublishedCatalogue& published() noexcept {
  static const PublishedCatalogue table = build_published();
  return table;
}

}  // namespace
}  // namespace kbond::bond

using namespace kbond::engine;

extern "C" {

KVL_EXPORT void KVL_API KVLbtype(int32_t type, int32_t* frequency, const char** daycount_name,
                                 int32_t* eom, const char** name, int32_t* error) {
  TypeReadGuard lock(&type);
  int32_t err = KVL_OK;
  if (lock.failed()) {
    err = KVL_ERR_LOCK;
  } else {
    const char* type_name = nullptr;
    const int32_t base = bond_type_name(type, &type_name);
    if (base < 0) {
      err = KVL_ERR_OUT_OF_SET;
    } else {
      const int32_t eom_default = bond_type_eom_default(type);
      if (frequency) *frequency = bond_type_frequency(base);
      if (daycount_name)
        *daycount_name =
            kbond::dates::day_count_name(bond_type_accrual_basis(base, 0, 0, eom_default));
      if (eom) *eom = eom_default;
      if (name) *name = type_name;
    }
  }
  if (err != KVL_OK) {
    if (frequency) *frequency = -1;
    if (eom) *eom = -1;
    if (daycount_name) *daycount_name = kbond::bond::kErrorText;
    if (name) *name = kbond::bond::kErrorText;
  }
  if (error) *error = err;
}

KVL_EXPORT int32_t KVL_API KVLbtable(const int32_t** codes, const int32_t** eom_codes,
                                     const char* const** names, const char* const** daycount_names,
                                     const int32_t** frequencies, const char** exdiv_flags) {
  const kbond::bond::PublishedCatalogue& table = kbond::bond::published();
  if (codes) *codes = table.codes;
  if (eom_codes) *eom_codes = table.eom_codes;
  if (names) *names = table.names;
  if (daycount_names) *daycount_names = table.daycount_names;
  if (frequencies) *frequencies = table.frequencies;
  if (exdiv_flags) *exdiv_flags = table.exdiv_flags;
  return table.rows;
}

KVL_EXPORT int32_t KVL_API KVLbcustom(int32_t code, const int32_t* accrual_basis,
                                      const int32_t* exdiv_basis, const int32_t* eom,
                                      const int32_t* frequency, const int32_t* simple_final,
                                      const int32_t* yield_method, const int32_t* accrual_days,
                                      const int32_t* canadian_cap, const int32_t* mm_basis,
                                      const int32_t* exdiv_days, const int32_t* yield_frequency) {
  return define_custom_type(
      code, CustomTypeInput{accrual_basis, exdiv_basis, eom, frequency, simple_final, yield_method,
                            accrual_days, canadian_cap, mm_basis, exdiv_days, yield_frequency});
}

KVL_EXPORT void KVL_API KVLbond_initMT(void) { init_critical_sections(); }

KVL_EXPORT const char* KVL_API KVLbondver(void) {
  return kbond::bond::kVersionRecord + kbond::bond::kVersionMarkerLength;
}

}  // extern "C"
