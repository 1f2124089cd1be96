// User-customised bond types (KVLbcustom), the catalogue's reading of
// them, the lock before and after KVLbond_initMT, and the library version.
// Each test uses its own custom codes: the table is process-wide.
#include <gtest/gtest.h>

#include <string_view>

#include "civil_serial.h"
#include "engine/catalogue.h"
#include "engine/custom_types.h"
#include "engine/type_lock.h"
#include "k_bond.h"

namespace kbond::engine {
namespace {

using kbond::testing::civil_serial;

int32_t define(int32_t code, const CustomTypeInput& in) {
  return KVLbcustom(code, in.accrual_basis, in.exdiv_basis, in.eom, in.frequency, in.simple_final,
                    in.yield_method, in.accrual_days, in.canadian_cap, in.mm_basis, in.exdiv_days,
                    in.yield_frequency);
}

// Runs first in this file: the lock is inert until KVLbond_initMT.
TEST(TypeLock, InertBeforeInitialisationThenReadersShareCustomCodes) {
  const int32_t market = 999, custom = 1000;
  if (critical_section(kCustomTypeSection) == nullptr) {
    EXPECT_EQ(reader_lock(&custom), 0);
    EXPECT_EQ(writer_lock(), 0);
    EXPECT_EQ(define(1000, CustomTypeInput{}), 1000);
  }
  KVLbond_initMT();
  std::mutex* section = critical_section(kCustomTypeSection);
  ASSERT_NE(section, nullptr);
  ASSERT_NE(critical_section(kFrnRegistrySection), nullptr);
  KVLbond_initMT();  // a second call changes nothing
  EXPECT_EQ(critical_section(kCustomTypeSection), section);
  EXPECT_EQ(reader_lock(nullptr), 0);
  EXPECT_EQ(reader_lock(&market), 0);  // market codes need no lock
  ASSERT_EQ(reader_lock(&custom), 1);
  ASSERT_EQ(reader_lock(&custom), 1);  // readers share
  reader_unlock();
  reader_unlock();
  ASSERT_EQ(writer_lock(), 1);  // everything released: a writer gets in at once
  writer_unlock();
}

TEST(KVLbcustom, DefaultsAndCodesOutsideTheRange) {
  const int32_t quarterly = 4;
  CustomTypeInput in;
  in.frequency = &quarterly;
  EXPECT_EQ(define(999, in), -1);
  EXPECT_EQ(define(1100, in), -1);
  ASSERT_EQ(define(1001, CustomTypeInput{}), 1001);
  int32_t frequency = 0, eom = 0, error = -7;
  const char* daycount = nullptr;
  const char* name = nullptr;
  KVLbtype(1001, &frequency, &daycount, &eom, &name, &error);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(frequency, 2);
  EXPECT_EQ(eom, 1);
  EXPECT_STREQ(daycount, "act/act");
  EXPECT_STREQ(name, "User-customized bond");
}

TEST(KVLbcustom, ArgumentsOutsideTheirSetsAreRefused) {
  struct Row {
    const int32_t* CustomTypeInput::*field;
    int32_t value;
    bool accepted;
  } rows[] = {
      {&CustomTypeInput::accrual_basis, 13, true}, {&CustomTypeInput::accrual_basis, 7, false},
      {&CustomTypeInput::accrual_basis, -1, false}, {&CustomTypeInput::exdiv_basis, 8, false},
      {&CustomTypeInput::exdiv_basis, 14, false},  {&CustomTypeInput::frequency, 12, true},
      {&CustomTypeInput::frequency, 0, false},     {&CustomTypeInput::frequency, 5, false},
      {&CustomTypeInput::yield_frequency, 6, true}, {&CustomTypeInput::yield_frequency, 24, false},
      {&CustomTypeInput::yield_method, 5, false},  {&CustomTypeInput::yield_method, -1, false},
      {&CustomTypeInput::mm_basis, 0, false},      {&CustomTypeInput::mm_basis, -360, false},
      {&CustomTypeInput::eom, -17, true},  // fields without a set take any value
      {&CustomTypeInput::exdiv_days, -17, true},
  };
  for (const Row& r : rows) {
    CustomTypeInput in;
    in.*r.field = &r.value;
    EXPECT_EQ(define(1010, in), r.accepted ? 1010 : -1) << r.value;
  }
}

TEST(KVLbcustom, RefusedArgumentKeepsItsFieldButTheRestIsWritten) {
  const int32_t quarterly = 4, five = 5, act365 = 5, act360 = 4, thirty = 3, refused = 7;
  CustomTypeInput first;
  first.frequency = &quarterly;
  first.accrual_basis = &act365;
  ASSERT_EQ(define(1005, first), 1005);
  EXPECT_EQ(custom_type(1005)->exdiv_basis, 5);  // follows a given accrual code
  CustomTypeInput second;
  second.frequency = &five;
  second.accrual_basis = &thirty;
  EXPECT_EQ(define(1005, second), -1);
  EXPECT_EQ(custom_type(1005)->frequency, 4);
  EXPECT_EQ(custom_type(1005)->accrual_basis, 3);
  // On a never-used slot the refused field stays zero, and the slot now
  // counts as defined.
  ASSERT_EQ(custom_type(1006), nullptr);
  EXPECT_EQ(define(1006, second), -1);
  ASSERT_NE(custom_type(1006), nullptr);
  EXPECT_EQ(custom_type(1006)->frequency, 0);
  // A refused accrual code is not copied: the ex-dividend count follows the
  // accrual code the slot keeps.
  first.exdiv_basis = &act360;
  ASSERT_EQ(define(1011, first), 1011);
  CustomTypeInput bad;
  bad.accrual_basis = &refused;
  EXPECT_EQ(define(1011, bad), -1);
  EXPECT_EQ(custom_type(1011)->accrual_basis, 5);
  EXPECT_EQ(custom_type(1011)->exdiv_basis, 5);
}

TEST(CustomTypeCatalogue, LookupsReadTheSlot) {
  const int32_t thirty = 1, eom_off = 0, monthly = 12, annual = 1, extra = 1, mm = 365, xdays = -7,
                cap = 1, braess = 2, three = 3;
  CustomTypeInput in;
  in.accrual_basis = &thirty;
  in.eom = &eom_off;
  in.frequency = &monthly;
  in.yield_frequency = &annual;
  in.accrual_days = &extra;
  in.mm_basis = &mm;
  in.exdiv_days = &xdays;
  in.canadian_cap = &cap;
  ASSERT_EQ(define(1012, in), 1012);
  EXPECT_EQ(bond_type_eom_default(1012), 0);
  EXPECT_EQ(bond_type_accrual_basis(1012, 0, 0, 1), 7);  // 30/360 with month ends: Feb rule
  EXPECT_EQ(bond_type_annual_yield(1012, 0), 1);
  EXPECT_EQ(bond_type_mm_basis(1012, civil_serial(1998, 1, 1)), 365);
  const int32_t coupon = civil_serial(2002, 6, 7);  // Friday
  EXPECT_EQ(bond_type_exdiv_date(coupon, 1012, dates::BusinessCalendar{}, nullptr), coupon - 7);
  // One extra day, then the 363-day cap: monthly 363/12 = 30.25, not in
  // an odd first period.
  for (const auto& [days, regular, adjusted] :
       {std::tuple{20.0, true, 21.0}, {30.0, true, 30.25}, {30.0, false, 31.0}}) {
    double d = days;
    EXPECT_TRUE(bond_type_adjust_accrual_days(&d, 1012, 0, regular, 12, 0.05));
    EXPECT_DOUBLE_EQ(d, adjusted);
  }
  CustomTypeInput method;
  method.yield_method = &braess;
  method.exdiv_days = &three;
  ASSERT_EQ(define(1013, method), 1013);
  EXPECT_EQ(bond_type_yield_method(1013, 0), 2);
  EXPECT_EQ(bond_type_yield_method(1013, -1), 0);
  // Three business days back from Fri 7 Jun 2002: Thu 6, Wed 5, Tue 4.
  EXPECT_EQ(bond_type_exdiv_date(coupon, 1013, dates::BusinessCalendar{}, nullptr),
            civil_serial(2002, 6, 4));
}

TEST(LibraryVersion, TextStandsBehindItsMarker) {
  const char* version = KVLbondver();
  ASSERT_NE(version, nullptr);
  EXPECT_STREQ(version, "v2002.0p0nt");
  EXPECT_EQ(std::string_view(version - 8, 8), "$KVLVER$");  // findable in the library file
}

}  // namespace
}  // namespace kbond::engine
