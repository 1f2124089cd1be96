// KVLbtable: the catalogue of base codes 0..540 as parallel arrays.
#include <gtest/gtest.h>

#include <set>

#include "k_bond.h"

namespace {

struct Table {
  const int32_t* codes = nullptr;
  const int32_t* eom_codes = nullptr;
  const char* const* names = nullptr;
  const char* const* daycounts = nullptr;
  const int32_t* frequencies = nullptr;
  const char* exdiv = nullptr;
  int32_t rows = 0;
};

Table fetch() {
  Table t;
  t.rows = KVLbtable(&t.codes, &t.eom_codes, &t.names, &t.daycounts, &t.frequencies, &t.exdiv);
  return t;
}

int32_t row_of(const Table& t, int32_t code) {
  for (int32_t i = 0; i < t.rows; ++i)
    if (t.codes[i] == code || t.eom_codes[i] == code) return i;
  return -1;
}

TEST(KVLbtable, HasSixtyFourRowsOfBaseCodesInOrder) {
  const Table t = fetch();
  ASSERT_EQ(t.rows, 64);
  int32_t previous = -1;
  for (int32_t i = 0; i < t.rows; ++i) {
    // The base code is the smaller of the pair except for code 0, whose
    // end-of-month rule is on by default and which has no partner.
    const int32_t base = t.codes[i] < 0 ? t.eom_codes[i] : t.codes[i];
    EXPECT_GT(base, previous) << "row " << i;
    EXPECT_LE(base, 540);
    previous = base;
    EXPECT_NE(t.names[i], nullptr);
    EXPECT_NE(t.daycounts[i], nullptr);
  }
}

TEST(KVLbtable, PairsStandInTheirColumns) {
  const Table t = fetch();
  // Code 0 has the rule on by default: it stands in the second array.
  EXPECT_EQ(t.codes[0], -1);
  EXPECT_EQ(t.eom_codes[0], 0);
  EXPECT_EQ(t.codes[1], 1);
  EXPECT_EQ(t.eom_codes[1], 11);

  const int32_t btan = row_of(t, 80);
  ASSERT_GE(btan, 0);
  EXPECT_EQ(t.eom_codes[btan], 82);
  const int32_t oat = row_of(t, 81);
  ASSERT_GE(oat, 0);
  EXPECT_EQ(t.eom_codes[oat], 83);

  const int32_t boc = row_of(t, 22);
  ASSERT_GE(boc, 0);
  EXPECT_EQ(t.eom_codes[boc], -1);
  const int32_t tips = row_of(t, 400);
  ASSERT_GE(tips, 0);
  EXPECT_EQ(t.codes[tips], -1);
  EXPECT_EQ(t.eom_codes[tips], 400);

  // Types beyond 540 and custom codes are not listed.
  EXPECT_EQ(row_of(t, 700), -1);
  EXPECT_EQ(row_of(t, 810), -1);
}

TEST(KVLbtable, RowContents) {
  const Table t = fetch();
  const int32_t gilt = row_of(t, 40);
  ASSERT_GE(gilt, 0);
  EXPECT_STREQ(t.names[gilt], "Gilt");
  EXPECT_STREQ(t.daycounts[gilt], "act/act");
  EXPECT_EQ(t.frequencies[gilt], 2);

  const int32_t swiss = row_of(t, 100);
  ASSERT_GE(swiss, 0);
  EXPECT_STREQ(t.daycounts[swiss], "30E+/360");
  EXPECT_EQ(t.frequencies[swiss], 1);
}

TEST(KVLbtable, ExDividendFlagsMarkTheMarketsWithAnExDividendPeriod) {
  const Table t = fetch();
  const std::set<int32_t> with_period = {40, 42, 142, 170, 180, 190, 220, 250,
                                         302, 330, 342, 350, 360, 380};
  for (int32_t i = 0; i < t.rows; ++i) {
    const int32_t base = t.codes[i] < 0 ? t.eom_codes[i] : t.codes[i];
    EXPECT_EQ(t.exdiv[i], with_period.count(base) ? 1 : 0) << "base " << base;
  }
}

TEST(KVLbtable, ReturnsTheSameArraysEveryTimeAndAcceptsNull) {
  const Table first = fetch();
  const Table second = fetch();
  EXPECT_EQ(first.codes, second.codes);
  EXPECT_EQ(first.names, second.names);
  EXPECT_EQ(first.exdiv, second.exdiv);
  EXPECT_EQ(KVLbtable(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 64);
}

}  // namespace
