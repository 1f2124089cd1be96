// Market conventions that depend on a date, on the caller's yield-method
// argument or on the coupon: accrued and ex-dividend day counts across the
// 1998/1999 switches, yield methods, annual quotation, final-period simple
// interest, money-market basis, accrued-day adjustments and code swaps.
#include <gtest/gtest.h>

#include "civil_serial.h"
#include "engine/catalogue.h"

namespace kbond::engine {
namespace {

using kbond::testing::civil_serial;

const int32_t k31Oct1998 = civil_serial(1998, 10, 31);
const int32_t k1Nov1998 = civil_serial(1998, 11, 1);
const int32_t k31Dec1998 = civil_serial(1998, 12, 31);
const int32_t k1Jan1999 = civil_serial(1999, 1, 1);

// Day-count codes: 0 act/act, 1 30/360, 2 30E/360, 5 act/365, 7 30/360(Feb),
// 9 30E/360(Feb), 11 30E+/360, 13 act/365 without 29 February.

TEST(CatalogueSwitchDays, ConstantsAreTheCalendarDates) {
  EXPECT_EQ(kSerial1Nov1998, k1Nov1998);
  EXPECT_EQ(kSerial1Jan1999, k1Jan1999);
  EXPECT_EQ(kSerial10May1999, civil_serial(1999, 5, 10));
  EXPECT_EQ(kSerial8Feb2001, civil_serial(2001, 2, 8));
}

TEST(AccrualBasis, GiltsMovedToActualActualOn1November1998) {
  // Settlement decides, whatever the period start.
  EXPECT_EQ(bond_type_accrual_basis(40, k31Oct1998, k31Oct1998 - 100, 0), 5);
  EXPECT_EQ(bond_type_accrual_basis(40, k1Nov1998, k31Oct1998 - 100, 0), 0);
  EXPECT_EQ(bond_type_accrual_basis(40, 0, 0, 0), 0);  // no date: today
  EXPECT_EQ(bond_type_accrual_basis(42, k1Nov1998, 0, 0), 5);
}

TEST(AccrualBasis, EmuMarketsSwitchOnThePeriodStart) {
  const int32_t june98 = civil_serial(1998, 6, 15);
  const int32_t feb99 = civil_serial(1999, 2, 1);
  // A period that began in 1998 still accrues 30E/360 after New Year.
  for (int32_t code : {60, 140, 160, 240, 242, 290, 320}) {
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, june98, 0), 2) << code;
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, k31Dec1998, 0), 2) << code;
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, k1Jan1999, 0), 0) << code;
    EXPECT_EQ(bond_type_accrual_basis(code, 0, 0, 0), 0) << code;
  }
  // Italy and Spain moved from act/365.
  for (int32_t code : {260, 261, 280, 281}) {
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, june98, 0), 5) << code;
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, k1Jan1999, 0), 0) << code;
  }
  // Belgium switched on the settlement date.
  EXPECT_EQ(bond_type_accrual_basis(120, k31Dec1998, june98, 0), 2);
  EXPECT_EQ(bond_type_accrual_basis(120, k1Jan1999, june98, 0), 0);
  // Pre-EMU types never switch.
  for (int32_t code : {62, 122, 142, 162, 244, 246, 292, 322, 342})
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, feb99, 0), 2) << code;
  for (int32_t code : {264, 266, 268, 270, 284, 286})
    EXPECT_EQ(bond_type_accrual_basis(code, feb99, feb99, 0), 5) << code;
}

TEST(AccrualBasis, ThirtyThreeSixtyTakesTheFebruaryRuleWithMonthEnds) {
  for (int32_t code : {1, 2, 3, 16, 250, 530}) {
    EXPECT_EQ(bond_type_accrual_basis(code, 0, 0, 0), 1) << code;
    EXPECT_EQ(bond_type_accrual_basis(code, 0, 0, 1), 7) << code;
  }
  // Other day counts ignore the flag.
  EXPECT_EQ(bond_type_accrual_basis(0, 0, 0, 1), 0);
  EXPECT_EQ(bond_type_accrual_basis(62, 0, 0, 1), 2);
  EXPECT_EQ(bond_type_accrual_basis(100, 0, 0, 1), 11);
  EXPECT_EQ(bond_type_accrual_basis(200, 0, 0, 0), 13);
  EXPECT_EQ(bond_type_accrual_basis(520, 0, 0, 0), 4);
}

TEST(AccrualBasis, UndefinedAndUnknownTypes) {
  EXPECT_EQ(bond_type_accrual_basis(810, 0, 0, 0), -1);  // Yankee: caller must say
  EXPECT_EQ(bond_type_accrual_basis(14, 0, 0, 0), -1);
  EXPECT_EQ(bond_type_accrual_basis(1097, 0, 0, 0), -1);  // empty custom slot
}

TEST(ExDividendBasis, MarketsThatCountNegativeAccruedDifferently) {
  for (int32_t code : {20, 200, 202, 380}) EXPECT_EQ(bond_type_exdiv_basis(code, 0, 0), 5) << code;
  for (int32_t code : {264, 266, 268, 270}) EXPECT_EQ(bond_type_exdiv_basis(code, 0, 5), 9) << code;
  for (int32_t code : {280, 281, 284, 286}) EXPECT_EQ(bond_type_exdiv_basis(code, 0, 5), 0) << code;
  EXPECT_EQ(bond_type_exdiv_basis(700, 0, 5), 2);
  // Italian BTP/CTE and the Portuguese futures type: by the period start.
  for (int32_t code : {260, 261}) {
    EXPECT_EQ(bond_type_exdiv_basis(code, k31Dec1998, 5), 9) << code;
    EXPECT_EQ(bond_type_exdiv_basis(code, k1Jan1999, 0), 0) << code;
  }
  EXPECT_EQ(bond_type_exdiv_basis(701, k31Dec1998, 0), 2);
  EXPECT_EQ(bond_type_exdiv_basis(701, k1Jan1999, 0), 0);
  EXPECT_EQ(bond_type_exdiv_basis(701, 0, 0), 0);
  // Everyone else uses the accrued day count as given.
  EXPECT_EQ(bond_type_exdiv_basis(40, k31Oct1998, 5), 5);
  EXPECT_EQ(bond_type_exdiv_basis(40, k1Nov1998, 0), 0);
  EXPECT_EQ(bond_type_exdiv_basis(1, 0, 7), 7);
  EXPECT_EQ(bond_type_exdiv_basis(15, 0, 3), 3);  // unknown code
}

TEST(YieldMethod, NegativeArgumentsOverrideTheType) {
  struct Case {
    int32_t arg, method;
  } overrides[] = {{-1, 0}, {-2, 1}, {-3, 2}, {-4, 3}, {-5, 4}, {-6, 0}};
  for (const Case& c : overrides) {
    EXPECT_EQ(bond_type_yield_method(0, c.arg), c.method) << c.arg;
    EXPECT_EQ(bond_type_yield_method(200, c.arg), c.method) << c.arg;
    EXPECT_EQ(bond_type_yield_method(830, c.arg), c.method) << c.arg;
  }
  // Otherwise the type decides; other argument values do not override.
  for (int32_t arg : {0, 1, -7, 5}) {
    EXPECT_EQ(bond_type_yield_method(200, arg), 1) << arg;
    EXPECT_EQ(bond_type_yield_method(201, arg), 1) << arg;
    EXPECT_EQ(bond_type_yield_method(820, arg), 2) << arg;
    EXPECT_EQ(bond_type_yield_method(830, arg), 3) << arg;
    EXPECT_EQ(bond_type_yield_method(40, arg), 0) << arg;
    EXPECT_EQ(bond_type_yield_method(15, arg), 0) << arg;
  }
}

TEST(AnnualYield, QuotedAnnuallyOnlyForCompoundYields) {
  for (int32_t code : {242, 246, 260, 264, 268, 502}) {
    EXPECT_EQ(bond_type_annual_yield(code, 0), 1) << code;
    EXPECT_EQ(bond_type_annual_yield(code, -1), 1) << code;  // -1 selects compound
    EXPECT_EQ(bond_type_annual_yield(code, -2), 0) << code;  // Japanese simple yield
    EXPECT_EQ(bond_type_annual_yield(code, -5), 0) << code;
  }
  for (int32_t code : {0, 40, 240, 244, 261, 266, 270, 500, 200, 15})
    EXPECT_EQ(bond_type_annual_yield(code, 0), 0) << code;
}

TEST(SimpleFinalPeriod, ByTypeAndByRequest) {
  // Gilts and Danish bonds: only when the caller asks (argument exactly 1).
  for (int32_t code : {40, 42, 300, 302}) {
    EXPECT_EQ(bond_type_simple_final(1, code), 1) << code;
    EXPECT_EQ(bond_type_simple_final(0, code), 0) << code;
    EXPECT_EQ(bond_type_simple_final(-2, code), 0) << code;
  }
  for (int32_t code : {0, 20, 60, 180, 250, 260, 820}) EXPECT_EQ(bond_type_simple_final(0, code), 1);
  for (int32_t code : {80, 81, 100, 140, 200, 290, 340, 700, 701})
    EXPECT_EQ(bond_type_simple_final(1, code), 0) << code;
  EXPECT_EQ(bond_type_simple_final(0, 810), -1);
  EXPECT_EQ(bond_type_simple_final(0, 15), 1);
}

TEST(MoneyMarketBasis, ThreeSixtyFiveMarketsAndTheEmuSwitch) {
  for (int32_t code : {20, 22, 40, 42, 190, 200, 210, 220, 250, 350, 370, 380, 390})
    EXPECT_EQ(bond_type_mm_basis(code, k1Jan1999), 365) << code;
  for (int32_t code : {120, 122, 260, 261, 264, 266, 268, 270, 290, 292, 320, 322, 340, 342}) {
    EXPECT_EQ(bond_type_mm_basis(code, k31Dec1998), 365) << code;
    EXPECT_EQ(bond_type_mm_basis(code, k1Jan1999), 360) << code;
    EXPECT_EQ(bond_type_mm_basis(code, 0), 360) << code;
  }
  for (int32_t code : {0, 60, 80, 202, 240, 300, 15}) EXPECT_EQ(bond_type_mm_basis(code, k31Dec1998), 360);
}

TEST(AccrualDays, CanadianCapInRegularPeriods) {
  // Semiannual: at most 363/2 = 181.5 days; 182 days is already capped.
  double days = 183.0;
  EXPECT_TRUE(bond_type_adjust_accrual_days(&days, 20, 0, true, 2, 0.05));
  EXPECT_DOUBLE_EQ(days, 181.5);
  days = 182.0;
  EXPECT_TRUE(bond_type_adjust_accrual_days(&days, 20, 0, true, 2, 0.05));
  EXPECT_DOUBLE_EQ(days, 181.5);
  days = 181.0;
  EXPECT_FALSE(bond_type_adjust_accrual_days(&days, 20, 0, true, 2, 0.05));
  EXPECT_DOUBLE_EQ(days, 181.0);
  // Annual: 363.
  days = 365.0;
  EXPECT_TRUE(bond_type_adjust_accrual_days(&days, 20, 0, true, 1, 0.05));
  EXPECT_DOUBLE_EQ(days, 363.0);
  // Odd first periods are not capped, nor are other Canadian types.
  days = 183.0;
  EXPECT_FALSE(bond_type_adjust_accrual_days(&days, 20, 0, false, 2, 0.05));
  EXPECT_FALSE(bond_type_adjust_accrual_days(&days, 22, 0, true, 2, 0.05));
  EXPECT_DOUBLE_EQ(days, 183.0);
}

TEST(AccrualDays, ItalianExtraDay) {
  for (int32_t code : {264, 266, 268, 270}) {
    double days = 100.0;
    EXPECT_TRUE(bond_type_adjust_accrual_days(&days, code, k1Jan1999, true, 2, 0.05)) << code;
    EXPECT_DOUBLE_EQ(days, 101.0);
  }
  for (int32_t code : {260, 261}) {
    double days = 100.0;
    EXPECT_TRUE(bond_type_adjust_accrual_days(&days, code, k31Dec1998, true, 2, 0.05));
    EXPECT_DOUBLE_EQ(days, 101.0);
    days = 100.0;
    EXPECT_FALSE(bond_type_adjust_accrual_days(&days, code, k1Jan1999, true, 2, 0.05));
    EXPECT_DOUBLE_EQ(days, 100.0);
  }
}

TEST(AccrualDays, PortugueseTruncationBeforeNovember1998) {
  // 8.75 %: daily interest on 10^8 is 8 750 000 / 360 = 24305.555..., cut
  // to 24305, so the days scale by 24305 * 360 / 8 750 000 = 0.9999771428...
  for (int32_t code : {290, 292, 700}) {
    double days = 90.0;
    EXPECT_TRUE(bond_type_adjust_accrual_days(&days, code, k31Oct1998, true, 1, 0.0875)) << code;
    EXPECT_NEAR(days, 90.0 * 8749800.0 / 8750000.0, 1e-12);
    days = 90.0;
    EXPECT_FALSE(bond_type_adjust_accrual_days(&days, code, k1Nov1998, true, 1, 0.0875));
    EXPECT_DOUBLE_EQ(days, 90.0);
  }
  // 3.6 %: exactly 10 000 a day, nothing to cut; a zero coupon neither.
  double days = 90.0;
  EXPECT_FALSE(bond_type_adjust_accrual_days(&days, 290, k31Oct1998, true, 1, 0.036));
  EXPECT_FALSE(bond_type_adjust_accrual_days(&days, 290, k31Oct1998, true, 1, 0.0));
  EXPECT_DOUBLE_EQ(days, 90.0);
}

TEST(AccrualDays, OtherTypesAndBadInput) {
  double days = 200.0;
  for (int32_t code : {0, 40, 60, 701, 15, 1096})
    EXPECT_FALSE(bond_type_adjust_accrual_days(&days, code, k31Oct1998, true, 2, 0.05)) << code;
  EXPECT_DOUBLE_EQ(days, 200.0);
  EXPECT_FALSE(bond_type_adjust_accrual_days(nullptr, 20, 0, true, 2, 0.05));
  EXPECT_FALSE(bond_type_adjust_accrual_days(&days, 20, 0, true, 0, 0.05));
}

TEST(CodeSubstitution, DanishPreEmuCodesRetireOn8February2001) {
  const int32_t day_before = civil_serial(2001, 2, 7);
  const int32_t switch_day = civil_serial(2001, 2, 8);
  EXPECT_EQ(apply_danish_rule(302, day_before), 302);
  EXPECT_EQ(apply_danish_rule(303, day_before), 303);
  EXPECT_EQ(apply_danish_rule(302, switch_day), 300);
  EXPECT_EQ(apply_danish_rule(303, switch_day), 301);
  EXPECT_EQ(apply_danish_rule(302, 0), 300);
  for (int32_t code : {300, 301, 304, 40, 1000}) EXPECT_EQ(apply_danish_rule(code, switch_day), code);
}

TEST(CodeSubstitution, AccrualOnlyAndSinglePeriodSwaps) {
  EXPECT_EQ(accrual_substitute(16), 2);
  EXPECT_EQ(accrual_substitute(17), 12);
  EXPECT_EQ(accrual_substitute(22), 20);
  EXPECT_EQ(accrual_substitute(20), 20);
  EXPECT_EQ(accrual_substitute(2), 2);

  int32_t base = 22, basis = 0;
  apply_single_period_rule(&base, &basis);
  EXPECT_EQ(base, 20);
  EXPECT_EQ(basis, 5);
  for (int32_t code : {220, 380}) {
    base = code;
    basis = 0;
    apply_single_period_rule(&base, &basis);
    EXPECT_EQ(base, code);
    EXPECT_EQ(basis, 5);
  }
  base = 40;
  basis = 0;
  apply_single_period_rule(&base, &basis);
  EXPECT_EQ(base, 40);
  EXPECT_EQ(basis, 0);
}

}  // namespace
}  // namespace kbond::engine
