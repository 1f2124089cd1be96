// Registering FRN types: defaults, inheritance from a base, validation order
// and codes, handles, and the release of every temporary registration.
#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "frn/frn_registry.h"
#include "frn/frn_type.h"
#include "frn_test_support.h"
#include "k_bond.h"

namespace kbond::frn {
namespace {

int32_t register_type(int32_t base, const int32_t* frequency, const int32_t* day_count,
                      const int32_t* rule, const int32_t* eom, const int32_t* holidays,
                      const int32_t* option, const double* year_length, const int32_t* extra,
                      int32_t* err) {
  return KVLfrntype(base, frequency, day_count, rule, eom, holidays, option, year_length, extra, 0, 0,
                    0, 0, 0, 0, err);
}

TEST(FrnType, DefaultsAreSemiAnnualActual360Unadjusted) {
  int32_t err = -1;
  const int32_t handle = register_type(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, &err);
  ASSERT_EQ(err, 0);
  ASSERT_NE(handle, 0);
  FrnType record;
  ASSERT_TRUE(registry_lookup(handle, &record));
  EXPECT_EQ(record.frequency, 2);
  EXPECT_EQ(record.day_count, 0);
  EXPECT_EQ(record.business_day_rule, 3);
  EXPECT_EQ(record.end_of_month, 0);
  EXPECT_EQ(record.option_flag, 0);
  EXPECT_EQ(record.year_length, 0.0);
  EXPECT_EQ(record.extra_accrual_days, 0);
  KVLfreefrntype(handle);
  EXPECT_FALSE(registry_lookup(handle, &record));
}

TEST(FrnType, DerivedTypeKeepsBaseFieldsItDoesNotOverride) {
  int32_t err = -1;
  const int32_t quarterly = 4, act365 = 1, modified = 2, both_weekend = 2, pay = 1, extra = 1;
  const double year = 364.0;
  const int32_t base = register_type(0, &quarterly, &act365, &modified, nullptr, &both_weekend, &pay,
                                     &year, &extra, &err);
  ASSERT_EQ(err, 0);
  const int32_t monthly = 12;
  const int32_t derived = register_type(base, &monthly, nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, &err);
  ASSERT_EQ(err, 0);
  EXPECT_NE(derived, base);
  FrnType record;
  ASSERT_TRUE(registry_lookup(derived, &record));
  EXPECT_EQ(record.frequency, 12);
  EXPECT_EQ(record.day_count, 1);
  EXPECT_EQ(record.business_day_rule, 2);
  EXPECT_EQ(record.holiday_option_a, 0);
  EXPECT_EQ(record.holiday_option_b, 2);  // the Sunday bit keeps its value 2
  EXPECT_EQ(record.option_flag, 1);
  EXPECT_EQ(record.year_length, 364.0);
  EXPECT_EQ(record.extra_accrual_days, 1);
  KVLfreefrntype(derived);
  KVLfreefrntype(base);
}

TEST(FrnType, EachInvalidFieldHasItsCode) {
  const int32_t bad_int = 7, good = 1;
  const double negative = -1.0, nan = std::nan("");
  struct Case {
    const int32_t* frequency;
    const int32_t* day_count;
    const int32_t* rule;
    const int32_t* eom;
    const int32_t* holidays;
    const int32_t* option;
    const double* year_length;
    int32_t code;
  };
  const int32_t five = 5, six = 6, four = 4, three = 3, two = 2;
  const Case cases[] = {
      {&five, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 301},
      {nullptr, &six, nullptr, nullptr, nullptr, nullptr, nullptr, 300},
      {nullptr, nullptr, &four, nullptr, nullptr, nullptr, nullptr, 302},
      {nullptr, nullptr, nullptr, &two, nullptr, nullptr, nullptr, 303},
      {nullptr, nullptr, nullptr, nullptr, &three, nullptr, nullptr, 304},
      {nullptr, nullptr, nullptr, nullptr, nullptr, &two, nullptr, 305},
      {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &negative, 306},
      {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &nan, 306},
      // The first invalid field in argument order decides the code.
      {&bad_int, &bad_int, &bad_int, &bad_int, &bad_int, &bad_int, &negative, 301},
      {&good, &bad_int, &bad_int, nullptr, nullptr, nullptr, nullptr, 300},
      {&good, &good, &bad_int, &bad_int, nullptr, nullptr, nullptr, 302},
  };
  const int32_t before = registry_size();
  for (const Case& c : cases) {
    int32_t err = 0;
    EXPECT_EQ(register_type(0, c.frequency, c.day_count, c.rule, c.eom, c.holidays, c.option,
                            c.year_length, nullptr, &err),
              0);
    EXPECT_EQ(err, c.code);
  }
  EXPECT_EQ(registry_size(), before) << "a refused type must not stay registered";
}

TEST(FrnType, UnknownBaseIsRefusedAndUnknownFreeIgnored) {
  int32_t err = 0;
  EXPECT_EQ(register_type(123456789, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                          nullptr, &err),
            0);
  EXPECT_EQ(err, 901);
  const int32_t before = registry_size();
  KVLfreefrntype(123456789);
  KVLfreefrntype(0);
  EXPECT_EQ(registry_size(), before);
  // A NULL error pointer is allowed.
  EXPECT_EQ(register_type(123456789, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                          nullptr, nullptr),
            0);
}

TEST(FrnType, HandlesSkipZeroAndLiveEntriesWhenTheyWrap) {
  int32_t err = 0;
  // One below the wrap point: the next handle is 2^31 - 1, then 1 again.
  registry_restart_handles(0x7FFFFFFEu);
  const int32_t last = register_type(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                     nullptr, nullptr, &err);
  EXPECT_EQ(last, 0x7FFFFFFF);
  const int32_t wrapped = register_type(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, &err);
  EXPECT_EQ(wrapped, 1);
  // Counter back at 1: handle 1 is live, so the next one must skip it.
  registry_restart_handles(0x7FFFFFFFu * 2);
  const int32_t after = register_type(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      nullptr, nullptr, &err);
  EXPECT_EQ(after, 2);
  for (int32_t h : {last, wrapped, after}) KVLfreefrntype(h);
}

TEST(FrnType, HandlesAreUniqueAmongLiveEntries) {
  std::set<int32_t> handles;
  int32_t err = 0;
  for (int i = 0; i < 200; ++i) {
    const int32_t h = register_type(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                    nullptr, &err);
    ASSERT_NE(h, 0);
    EXPECT_TRUE(handles.insert(h).second);
  }
  for (int32_t h : handles) KVLfreefrntype(h);
}

TEST(FrnType, TypedCallsReleaseTheirTemporaryTypeOnEveryPath) {
  using testing::Note;
  const int32_t before = registry_size();
  Note note;
  int32_t err = 0;
  note.price(0.05, &err);
  EXPECT_EQ(err, 0);
  const int32_t bad_frequency = 5;
  note.frequency = &bad_frequency;
  note.price(0.05, &err);
  EXPECT_EQ(err, 301);
  note.frequency = nullptr;
  note.rates.clear();
  note.rate_dates.clear();
  note.price(0.05, &err);
  EXPECT_EQ(err, 60);
  note.type = 987654321;
  note.price(0.05, &err);
  EXPECT_EQ(err, 901);
  EXPECT_EQ(registry_size(), before);
}

TEST(FrnType, TypedFunctionsUseTheRegisteredConventions) {
  using testing::Note;
  using testing::ymd;
  int32_t err = 0;
  const int32_t extra = 1;
  const int32_t handle = register_type(0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, &extra, &err);
  Note note;  // 5% fixed since 15 December 2025, settlement 1 March 2026
  const double plain = note.accrued(&err);
  note.type = handle;
  const double typed = note.accrued(&err);
  // One extra day of accrual at 5% act/360: 5 x 1/360 per 100.
  EXPECT_NEAR(typed - plain, 5.0 / 360.0, 1e-12);
  KVLfreefrntype(handle);
  note.accrued(&err);
  EXPECT_EQ(err, 901) << "a freed handle is no longer known";
}

}  // namespace
}  // namespace kbond::frn
