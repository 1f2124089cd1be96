// User-customised bond types (KVLbcustom), the catalogue's reading of
// them, the lock's behaviour before and after KVLbond_initMT, and the
// library version. Each test uses its own custom codes: the table is
// process-wide.
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
TEST(TypeLock, NeverBlocksBeforeInitialisation) {
  if (critical_section(kCustomTypeSection) != nullptr)
    GTEST_SKIP() << "an earlier test already initialised the locks";
  const int32_t code = 1000;
  EXPECT_EQ(reader_lock(&code), 0);
  EXPECT_EQ(writer_lock(), 0);
  EXPECT_EQ(critical_section(kFrnRegistrySection), nullptr);
  EXPECT_EQ(KVLbcustom(1000, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr, nullptr),
            1000);
}

TEST(TypeLock, InitialisesBothSectionsOnce) {
  KVLbond_initMT();
  std::mutex* custom = critical_section(kCustomTypeSection);
  std::mutex* frn = critical_section(kFrnRegistrySection);
  ASSERT_NE(custom, nullptr);
  ASSERT_NE(frn, nullptr);
  KVLbond_initMT();  // a second call changes nothing
  EXPECT_EQ(critical_section(kCustomTypeSection), custom);
  EXPECT_EQ(critical_section(kFrnRegistrySection), frn);
  EXPECT_EQ(critical_section(-1), nullptr);
  EXPECT_EQ(critical_section(64), nullptr);
}

TEST(TypeLock, ReadersOnlyForCustomCodes) {
  KVLbond_initMT();
  const int32_t market = 999, custom = 1000;
  EXPECT_EQ(reader_lock(nullptr), 0);
  EXPECT_EQ(reader_lock(&market), 0);
  ASSERT_EQ(reader_lock(&custom), 1);
  ASSERT_EQ(reader_lock(&custom), 1);  // readers share
  reader_unlock();
  reader_unlock();
  {
    TypeReadGuard guard(&custom);
    EXPECT_FALSE(guard.failed());
  }
  // Everything released: a writer gets in at once.
  ASSERT_EQ(writer_lock(), 1);
  writer_unlock();
}

TEST(KVLbcustom, CodesOutsideTheRangeChangeNothing) {
  const int32_t freq = 4;
  EXPECT_EQ(KVLbcustom(999, nullptr, nullptr, nullptr, &freq, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr),
            -1);
  EXPECT_EQ(KVLbcustom(1100, nullptr, nullptr, nullptr, &freq, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr, nullptr),
            -1);
  EXPECT_EQ(custom_type(999), nullptr);
  EXPECT_EQ(custom_type(1100), nullptr);
  EXPECT_EQ(bond_type_frequency(999), -1);
  int32_t error = 0;
  KVLbtype(1100, nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, KVL_ERR_OUT_OF_SET);
}

TEST(KVLbcustom, AllDefaults) {
  ASSERT_EQ(define(1001, CustomTypeInput{}), 1001);
  const CustomType* slot = custom_type(1001);
  ASSERT_NE(slot, nullptr);
  EXPECT_STREQ(slot->name, "User-customized bond");
  EXPECT_EQ(slot->accrual_basis, 0);
  EXPECT_EQ(slot->exdiv_basis, 0);
  EXPECT_EQ(slot->eom, 1);
  EXPECT_EQ(slot->frequency, 2);
  EXPECT_EQ(slot->yield_frequency, 0);
  EXPECT_EQ(slot->simple_final, 1);
  EXPECT_EQ(slot->yield_method, 0);
  EXPECT_EQ(slot->accrual_days, 0);
  EXPECT_EQ(slot->canadian_cap, 0);
  EXPECT_EQ(slot->mm_basis, 360);
  EXPECT_EQ(slot->exdiv_days, 0);

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

TEST(KVLbcustom, RefusedArgumentKeepsItsFieldButTheSlotIsWritten) {
  const int32_t quarterly = 4, five = 5, act365 = 5, thirty = 3, days = 2;
  CustomTypeInput first;
  first.frequency = &quarterly;
  first.accrual_basis = &act365;
  ASSERT_EQ(define(1005, first), 1005);

  // Frequency 5 is refused; everything else is still written.
  CustomTypeInput second;
  second.frequency = &five;
  second.accrual_basis = &thirty;
  second.accrual_days = &days;
  EXPECT_EQ(define(1005, second), -1);
  const CustomType* slot = custom_type(1005);
  ASSERT_NE(slot, nullptr);
  EXPECT_STREQ(slot->name, "User-customized bond");
  EXPECT_EQ(slot->frequency, 4);
  EXPECT_EQ(slot->accrual_basis, 3);
  EXPECT_EQ(slot->accrual_days, 2);

  // On a never-used slot the refused field stays zero, and the slot now
  // counts as defined.
  ASSERT_EQ(custom_type(1006), nullptr);
  EXPECT_EQ(define(1006, second), -1);
  ASSERT_NE(custom_type(1006), nullptr);
  EXPECT_EQ(custom_type(1006)->frequency, 0);
  EXPECT_EQ(bond_type_base(1006), 1006);
}

TEST(KVLbcustom, ArgumentSets) {
  const int32_t valid_daycounts[] = {0, 1, 2, 3, 4, 5, 6, 9, 10, 11, 12, 13};
  for (int32_t v : valid_daycounts) {
    CustomTypeInput in;
    in.accrual_basis = &v;
    in.exdiv_basis = &v;
    EXPECT_EQ(define(1010, in), 1010) << v;
  }
  for (int32_t v : {-1, 7, 8, 14}) {
    CustomTypeInput in;
    in.accrual_basis = &v;
    EXPECT_EQ(define(1010, in), -1) << v;
    CustomTypeInput ex;
    ex.exdiv_basis = &v;
    EXPECT_EQ(define(1010, ex), -1) << v;
  }
  for (int32_t v : {1, 2, 3, 4, 6, 12}) {
    CustomTypeInput in;
    in.frequency = &v;
    in.yield_frequency = &v;
    EXPECT_EQ(define(1010, in), 1010) << v;
  }
  for (int32_t v : {0, 5, 24, -2}) {
    CustomTypeInput in;
    in.frequency = &v;
    EXPECT_EQ(define(1010, in), -1) << v;
  }
  for (int32_t v : {5, -1, 24}) {
    CustomTypeInput in;
    in.yield_frequency = &v;
    EXPECT_EQ(define(1010, in), -1) << v;
  }
  for (int32_t v : {-1, 5}) {
    CustomTypeInput in;
    in.yield_method = &v;
    EXPECT_EQ(define(1010, in), -1) << v;
  }
  for (int32_t v : {0, -360}) {
    CustomTypeInput in;
    in.mm_basis = &v;
    EXPECT_EQ(define(1010, in), -1) << v;
  }
  // Fields without a set take any value.
  const int32_t odd = -17;
  CustomTypeInput any;
  any.eom = &odd;
  any.simple_final = &odd;
  any.accrual_days = &odd;
  any.canadian_cap = &odd;
  any.exdiv_days = &odd;
  EXPECT_EQ(define(1010, any), 1010);
}

TEST(KVLbcustom, ExDividendDayCountFollowsAGivenAccrualCode) {
  const int32_t act365 = 5, act360 = 4, refused = 7;
  CustomTypeInput in;
  in.accrual_basis = &act365;
  ASSERT_EQ(define(1011, in), 1011);
  EXPECT_EQ(custom_type(1011)->exdiv_basis, 5);
  in.exdiv_basis = &act360;
  ASSERT_EQ(define(1011, in), 1011);
  EXPECT_EQ(custom_type(1011)->exdiv_basis, 4);
  ASSERT_EQ(define(1011, CustomTypeInput{}), 1011);
  EXPECT_EQ(custom_type(1011)->exdiv_basis, 0);
  // A refused accrual code is not copied: both keep the slot's value.
  CustomTypeInput bad;
  bad.accrual_basis = &refused;
  ASSERT_EQ(define(1011, in), 1011);  // accrual 5, ex-dividend 4
  EXPECT_EQ(define(1011, bad), -1);
  EXPECT_EQ(custom_type(1011)->accrual_basis, 5);
  EXPECT_EQ(custom_type(1011)->exdiv_basis, 5);
}

TEST(CustomTypeCatalogue, LookupsReadTheSlot) {
  const int32_t thirty = 1, eom_off = 0, monthly = 12, annual = 1, no_simple = 0, braess = 2;
  const int32_t extra = 1, mm = 365, xdays = -7, cap = 1;
  CustomTypeInput in;
  in.accrual_basis = &thirty;
  in.eom = &eom_off;
  in.frequency = &monthly;
  in.yield_frequency = &annual;
  in.simple_final = &no_simple;
  in.accrual_days = &extra;
  in.mm_basis = &mm;
  in.exdiv_days = &xdays;
  in.canadian_cap = &cap;
  ASSERT_EQ(define(1012, in), 1012);

  EXPECT_EQ(bond_type_eom_default(1012), 0);
  EXPECT_EQ(bond_type_frequency(1012), 12);
  // 30/360 becomes 30/360(Feb) when the bond keeps to month ends.
  EXPECT_EQ(bond_type_accrual_basis(1012, 0, 0, 0), 1);
  EXPECT_EQ(bond_type_accrual_basis(1012, 0, 0, 1), 7);
  EXPECT_EQ(bond_type_exdiv_basis(1012, 0, 7), 7);
  EXPECT_EQ(bond_type_exdiv_basis(1012, 0, 1), 1);
  EXPECT_EQ(bond_type_annual_yield(1012, 0), 1);
  EXPECT_EQ(bond_type_annual_yield(1012, -2), 0);
  EXPECT_EQ(bond_type_simple_final(1, 1012), 0);
  EXPECT_EQ(bond_type_yield_method(1012, 0), 0);
  EXPECT_EQ(bond_type_mm_basis(1012, civil_serial(1998, 1, 1)), 365);

  const int32_t coupon = civil_serial(2002, 6, 7);
  EXPECT_EQ(bond_type_exdiv_date(coupon, 1012, dates::BusinessCalendar{}, nullptr), coupon - 7);

  // One extra day, then the 364/363 cap: monthly 363/12 = 30.25.
  double days = 20.0;
  EXPECT_TRUE(bond_type_adjust_accrual_days(&days, 1012, 0, true, 12, 0.05));
  EXPECT_DOUBLE_EQ(days, 21.0);
  days = 30.0;
  EXPECT_TRUE(bond_type_adjust_accrual_days(&days, 1012, 0, true, 12, 0.05));
  EXPECT_DOUBLE_EQ(days, 30.25);
  days = 30.0;
  EXPECT_TRUE(bond_type_adjust_accrual_days(&days, 1012, 0, false, 12, 0.05));
  EXPECT_DOUBLE_EQ(days, 31.0);

  CustomTypeInput method;
  method.yield_method = &braess;
  ASSERT_EQ(define(1013, method), 1013);
  EXPECT_EQ(bond_type_yield_method(1013, 0), 2);
  EXPECT_EQ(bond_type_yield_method(1013, -1), 0);
  EXPECT_EQ(bond_type_annual_yield(1013, 0), 0);
}

TEST(CustomTypeCatalogue, BusinessDayExDividendPeriod) {
  const int32_t three = 3;
  CustomTypeInput in;
  in.exdiv_days = &three;
  ASSERT_EQ(define(1014, in), 1014);
  // Fri 7 Jun 2002, three business days back: Thu 6, Wed 5, Tue 4.
  EXPECT_EQ(bond_type_exdiv_date(civil_serial(2002, 6, 7), 1014, dates::BusinessCalendar{}, nullptr),
            civil_serial(2002, 6, 4));
}

TEST(LibraryVersion, TextAndMarker) {
  const char* version = KVLbondver();
  ASSERT_NE(version, nullptr);
  EXPECT_STREQ(version, "v2002.0p0nt");
  // The version stands right behind its marker so that it can be found in
  // the library file.
  EXPECT_EQ(std::string_view(version - 8, 8), "$KVLVER$");
  EXPECT_EQ(KVLbondver(), version);
}

}  // namespace
}  // namespace kbond::engine
