// Bond type codes: names, base codes, end-of-month variants, default
// frequencies, and KVLbtype's view of them. Expected names are the
// library's published type names, character for character.
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string>

#include "engine/catalogue.h"
#include "k_bond.h"

namespace kbond::engine {
namespace {

struct TypePair {
  int32_t base;
  int32_t variant;  // -1: no separate variant code
  const char* name;
  int32_t frequency;
};

// Every base code with its end-of-month variant and default frequency.
const TypePair kPairs[] = {
    {0, -1, "U.S. Treasury Bond", 2},
    {1, 11, "U.S. Government Agency Bond", 2},
    {2, 12, "Municipal Bond", 2},
    {3, 13, "Corporate Bond", 2},
    {16, 17, "Municipal Bond (ignore odd coupons for price/yield)", 2},
    {20, 21, "Canadian Gvmt. Bond, (US Gov equiv yld)", 2},
    {22, -1, "Can. Gvmt. Bond, Bank of Canada conventions", 2},
    {40, 41, "Gilt", 2},
    {42, 43, "Gilt; pre November 1998 conventions", 2},
    {60, 61, "German Government Bond", 1},
    {62, 63, "German Government Bond; pre EMU conventions", 1},
    {80, 82, "French Government Bond (BTAN)", 1},
    {81, 83, "French Government Bond (OAT)", 1},
    {100, 101, "Swiss Government Bond", 1},
    {120, 121, "Belgian Government Bond", 1},
    {122, 123, "Belgian Government Bond; pre EMU conventions", 1},
    {140, 141, "Austrian Government Bond", 1},
    {142, 143, "Austrian Government Bond; pre EMU conventions", 1},
    {160, 161, "Dutch Government Bond", 1},
    {162, 163, "Dutch Government Bond; pre EMU conventions", 1},
    {170, 171, "Slovak Government Bond", 1},
    {180, 181, "Swedish Government Bond", 1},
    {190, 191, "Korean Treasury Bond", 1},
    {200, 201, "Japanese Government Bond", 2},
    {202, 203, "U.S. Equivalent Japanese Bond", 2},
    {210, 211, "Hong Kong Exchange Funds Note", 2},
    {220, 221, "Australian Government Bond", 2},
    {240, 241, "Eurobond", 1},
    {242, 243, "Eurobond (yields quoted annually)", 2},
    {244, 245, "Eurobond; pre EMU conventions", 1},
    {246, 247, "Eurobond; pre EMU conventions (yields quoted annually)", 2},
    {250, 251, "Indian Government Bond", 2},
    {260, 262, "Italian Government BTP Bond", 2},
    {261, 263, "Italian Government CTE Bond", 1},
    {264, 265, "Italian Government BTP Bond (pre 1997 conventions)", 2},
    {266, 267, "Italian Government CTE Bond (pre 1997 conventions)", 1},
    {268, 269, "Italian Government BTP Bond; 1997-98 conventions", 2},
    {270, 271, "Italian Government CTE Bond; 1997-98 conventions", 1},
    {280, 282, "Spanish Government Bond (default annual cpn.)", 1},
    {281, 283, "Spanish Gvmt. Bond (default semiannual cpn.)", 2},
    {284, 285, "Spanish Gvmt. Bond; pre EMU conventions (ann. cpn.)", 1},
    {286, 287, "Spanish Gvmt. Bond; pre EMU conventions (semiann. cpn.)", 2},
    {290, 291, "Portuguese Government Bond", 1},
    {292, 293, "Portuguese Government Bond; pre EMU conventions", 1},
    {300, 301, "Danish Government Bond", 1},
    {302, 303, "Danish Government Bond; pre EMU conventions", 1},
    {310, 311, "Icelandic Government Bond", 1},
    {320, 321, "Finnish Government Bond", 1},
    {322, 323, "Finnish Government Bond; pre EMU conventions", 1},
    {330, 331, "Norwegian Government Bond", 1},
    {340, 341, "Irish Government Bond", 1},
    {342, 343, "Irish Government Bond; pre EMU conventions", 1},
    {350, 351, "New Zealand Government Bond", 2},
    {360, 361, "Czech Government Bond", 1},
    {370, 371, "Colombian Government Bond", 1},
    {380, 381, "South African Government Bond", 2},
    {390, 391, "Lithuanian Government Bond", 2},
    {400, -1, "U.S. Inflation-adjusted Bond", 2},
    {500, 501, "Generic Bond", 2},
    {502, 503, "Generic Bond; yields quoted annually", 2},
    {510, 511, "Generic Bond", 2},
    {520, 521, "Generic Bond", 2},
    {530, 531, "Generic Bond", 2},
    {540, 541, "Generic Bond", 2},
    {700, -1, "Portuguese Govmt Bond w/ futures contract conventions", 1},
    {701, -1, "Portuguese Govmt Bond w/ futures contract conventions", 1},
    {810, 811, "Yankee Bond", -1},
    {820, 821, "Braess pricing", 1},
    {830, 831, "Moos-Muller pricing", 1},
};

TEST(CatalogueLookup, EveryBaseAndVariantHasItsNameAndBase) {
  for (const TypePair& p : kPairs) {
    for (int32_t code : {p.base, p.variant}) {
      if (code < 0) continue;
      const char* name = nullptr;
      EXPECT_EQ(bond_type_name(code, &name), p.base) << "code " << code;
      ASSERT_NE(name, nullptr);
      EXPECT_STREQ(name, p.name) << "code " << code;
      EXPECT_EQ(bond_type_base(code), p.base) << "code " << code;
    }
    EXPECT_EQ(bond_type_frequency(p.base), p.frequency) << "code " << p.base;
  }
}

TEST(CatalogueLookup, EveryOtherCodeBelowCustomRangeIsUnknown) {
  std::set<int32_t> known;
  for (const TypePair& p : kPairs) {
    known.insert(p.base);
    if (p.variant >= 0) known.insert(p.variant);
  }
  for (int32_t code = -5; code < 1000; ++code) {
    if (known.count(code)) continue;
    const char* name = nullptr;
    ASSERT_EQ(bond_type_name(code, &name), -1) << "code " << code;
    EXPECT_STREQ(name, "unknown bond");
    EXPECT_EQ(bond_type_base(code), -1);
    EXPECT_EQ(bond_type_eom_default(code), 0);
    EXPECT_EQ(bond_type_frequency(code), -1);
  }
}

TEST(CatalogueLookup, GapsBetweenKnownNeighboursAreUnknown) {
  for (int32_t code : {10, 14, 15, 18, 19, 23}) EXPECT_EQ(bond_type_base(code), -1) << code;
  // ...while their neighbours are known.
  for (int32_t code : {11, 13, 16, 17, 20, 21, 22}) EXPECT_GE(bond_type_base(code), 0) << code;
}

TEST(CatalogueLookup, VariantsTurnTheEndOfMonthRuleOn) {
  // 82 is the variant of 80 and 83 of 81 (not 81 of 80); the same crossing
  // pattern holds for the Italian and Spanish pairs.
  EXPECT_EQ(bond_type_base(81), 81);
  EXPECT_EQ(bond_type_base(82), 80);
  EXPECT_EQ(bond_type_base(83), 81);
  EXPECT_EQ(bond_type_base(262), 260);
  EXPECT_EQ(bond_type_base(263), 261);
  EXPECT_EQ(bond_type_base(282), 280);
  EXPECT_EQ(bond_type_base(283), 281);
  for (const TypePair& p : kPairs) {
    if (p.variant < 0) continue;
    EXPECT_EQ(bond_type_eom_default(p.base), 0) << p.base;
    EXPECT_EQ(bond_type_eom_default(p.variant), 1) << p.variant;
  }
  // Treasuries and inflation-adjusted bonds keep the rule on by default.
  EXPECT_EQ(bond_type_eom_default(0), 1);
  EXPECT_EQ(bond_type_eom_default(400), 1);
  EXPECT_EQ(bond_type_eom_default(22), 0);
  EXPECT_EQ(bond_type_eom_default(700), 0);
}

TEST(CatalogueLookup, NullNamePointerIsAllowed) {
  EXPECT_EQ(bond_type_name(41, nullptr), 40);
  EXPECT_EQ(bond_type_name(14, nullptr), -1);
}

TEST(KVLbtype, ReportsGiltVariant) {
  int32_t frequency = 0, eom = 0, error = -7;
  const char* daycount = nullptr;
  const char* name = nullptr;
  KVLbtype(41, &frequency, &daycount, &eom, &name, &error);
  EXPECT_EQ(error, 0);
  EXPECT_EQ(frequency, 2);
  EXPECT_EQ(eom, 1);
  EXPECT_STREQ(name, "Gilt");
  EXPECT_STREQ(daycount, "act/act");  // today's Gilt convention
}

TEST(KVLbtype, DayCountNameFollowsTheTypesOwnEndOfMonthRule) {
  struct Case {
    int32_t code;
    const char* daycount;
  } cases[] = {
      {1, "30/360"},      {11, "30/360(Feb)"}, {0, "act/act"},   {42, "act/365"},
      {62, "30E/360"},    {100, "30E+/360"},   {200, "act/365"}, {520, "act/360"},
      {810, "unknown"},   {531, "30/360(Feb)"}, {264, "act/365"},
  };
  for (const Case& c : cases) {
    const char* daycount = nullptr;
    int32_t error = -7;
    KVLbtype(c.code, nullptr, &daycount, nullptr, nullptr, &error);
    EXPECT_EQ(error, 0) << c.code;
    EXPECT_STREQ(daycount, c.daycount) << c.code;
  }
}

TEST(KVLbtype, UnknownCodeFillsErrorOutputs) {
  int32_t frequency = 0, eom = 0, error = 0;
  const char* daycount = nullptr;
  const char* name = nullptr;
  KVLbtype(14, &frequency, &daycount, &eom, &name, &error);
  EXPECT_EQ(error, KVL_ERR_OUT_OF_SET);
  EXPECT_EQ(frequency, -1);
  EXPECT_EQ(eom, -1);
  EXPECT_STREQ(daycount, "error");
  EXPECT_STREQ(name, "error");

  // An empty custom slot is unknown as well; all outputs may be NULL.
  KVLbtype(1099, nullptr, nullptr, nullptr, nullptr, &error);
  EXPECT_EQ(error, KVL_ERR_OUT_OF_SET);
  KVLbtype(-1, nullptr, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace
}  // namespace kbond::engine
