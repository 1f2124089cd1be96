// User-customised bond types (KVLbcustom), the catalogue's reading of
// them, the lock over them, and the library version. Each test uses its own
// custom codes: the table is process-wide.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string_view>
#include <thread>

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

TEST(KVLbcustom, ArgumentsOutsideTheirSetsAreRefused) {
  struct Row {
    const int32_t* CustomTypeInput::*field;
    int32_t value;
    bool accepted;
  } rows[] = {
      {&CustomTypeInput::accrual_basis, 13, true}, {&CustomTypeInput::accrual_basis, 7, false},
      {&CustomTypeInput::exdiv_basis, 8, false},   {&CustomTypeInput::frequency, 5, false},
      {&CustomTypeInput::yield_frequency, 6, true}, {&CustomTypeInput::yield_frequency, 24, false},
      {&CustomTypeInput::yield_method, 5, false},  {&CustomTypeInput::mm_basis, 0, false},
      {&CustomTypeInput::eom, -17, true},  // fields without a set take any value
  };
  for (const Row& r : rows) {
    CustomTypeInput in;
    in.*r.field = &r.value;
    EXPECT_EQ(define(1010, in), r.accepted ? 1010 : -1) << r.value;
  }
}

TEST(CustomTypeCatalogue, LookupsReadTheSlot) {
  const int32_t thirty = 1, eom_off = 0, monthly = 12, annual = 1, extra = 1, mm = 365, xdays = -7,
                cap = 1;
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
}

// Readers and a writer never overlap, whichever gets in first. The pause
// only makes it likely that the writer arrives while a reader is inside and
// that the next reader arrives while the writer waits.
TEST(TypeLock, ReadersAndAWriterNeverOverlap) {
  KVLbond_initMT();
  const int32_t custom = 1000;
  std::atomic<int> readers{0};
  std::atomic<bool> writing{false};
  const auto pause = [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
  ASSERT_EQ(reader_lock(&custom), 1);
  ++readers;
  std::thread writer([&] {
    ASSERT_EQ(writer_lock(), 1);
    EXPECT_EQ(readers.load(), 0);
    writing = true;
    pause();
    writing = false;
    writer_unlock();
  });
  pause();
  --readers;
  reader_unlock();
  EXPECT_EQ(reader_lock(&custom), 1);
  EXPECT_FALSE(writing.load());
  reader_unlock();
  writer.join();
}

TEST(LibraryVersion, TextStandsBehindItsMarker) {
  const char* version = KVLbondver();
  ASSERT_NE(version, nullptr);
  EXPECT_STREQ(version, "v2002.0p0nt");
  EXPECT_EQ(std::string_view(version - 8, 8), "$KVLVER$");  // findable in the library file
}

}  // namespace
}  // namespace kbond::engine
