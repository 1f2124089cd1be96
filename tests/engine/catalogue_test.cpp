// The bond-type catalogue: conventions that change on a date (the 1998/1999
// switches), the accrued-day adjustments, ex-dividend dates counted by hand
// on the calendar (weekdays checked against a printed calendar), and the
// agreement of KVLbtype and KVLbtable.
#include <gtest/gtest.h>

#include "civil_serial.h"
#include "engine/catalogue.h"
#include "k_bond.h"

namespace kbond::engine {
namespace {

using dates::BusinessCalendar;
using kbond::testing::civil_serial;

const int32_t k31Oct1998 = civil_serial(1998, 10, 31);
const int32_t k1Nov1998 = civil_serial(1998, 11, 1);
const int32_t k31Dec1998 = civil_serial(1998, 12, 31);
const int32_t k1Jan1999 = civil_serial(1999, 1, 1);

// Day-count codes: 0 act/act, 1 30/360, 2 30E/360, 5 act/365, 7 30/360(Feb),
// 9 30E/360(Feb), 11 30E+/360.
TEST(CatalogueConventions, DayCountsSwitchOnTheirDates) {
  const int32_t june98 = civil_serial(1998, 6, 15), feb99 = civil_serial(1999, 2, 1);
  struct Row {
    int32_t code, settlement, period_start, eom, basis;
  } rows[] = {
      // Gilts moved to act/act on 1 Nov 1998, by settlement; no date: today.
      {40, k31Oct1998, k31Oct1998 - 100, 0, 5}, {40, k1Nov1998, k31Oct1998 - 100, 0, 0},
      {40, 0, 0, 0, 0}, {42, k1Nov1998, 0, 0, 5},
      // EMU markets switch on the period start: a 1998 period stays 30E/360.
      {60, feb99, june98, 0, 2}, {60, feb99, k31Dec1998, 0, 2}, {60, feb99, k1Jan1999, 0, 0},
      {260, feb99, june98, 0, 5}, {260, feb99, k1Jan1999, 0, 0},  // Italy from act/365
      // Belgium switched on the settlement date; pre-EMU types never switch.
      {120, k31Dec1998, june98, 0, 2}, {120, k1Jan1999, june98, 0, 0},
      {62, feb99, feb99, 0, 2}, {264, feb99, feb99, 0, 5},
      // 30/360 takes the February rule with month ends; others ignore it.
      {1, 0, 0, 1, 7}, {16, 0, 0, 0, 1}, {0, 0, 0, 1, 0}, {100, 0, 0, 1, 11},
      {810, 0, 0, 0, -1}, {14, 0, 0, 0, -1}, {1097, 0, 0, 0, -1},  // caller must say / unknown
  };
  for (const Row& r : rows)
    EXPECT_EQ(bond_type_accrual_basis(r.code, r.settlement, r.period_start, r.eom), r.basis)
        << r.code << " " << r.settlement << " " << r.period_start;
  // Negative accrued of Italian BTPs and Portugal's futures type, by period start.
  EXPECT_EQ(bond_type_exdiv_basis(260, k31Dec1998, 5), 9);
  EXPECT_EQ(bond_type_exdiv_basis(260, k1Jan1999, 0), 0);
  EXPECT_EQ(bond_type_exdiv_basis(701, k31Dec1998, 0), 2);
  EXPECT_EQ(bond_type_exdiv_basis(701, k1Jan1999, 0), 0);
  EXPECT_EQ(bond_type_exdiv_basis(1, 0, 7), 7);  // the accrued count as given
  // Money-market basis of the EMU markets: 365 before 1999, 360 after.
  EXPECT_EQ(bond_type_mm_basis(260, k31Dec1998), 365);
  EXPECT_EQ(bond_type_mm_basis(260, k1Jan1999), 360);
  EXPECT_EQ(bond_type_mm_basis(40, k1Jan1999), 365);
}

TEST(CatalogueConventions, YieldMethodOverridesOnlyForNegativeArguments) {
  EXPECT_EQ(bond_type_yield_method(830, -3), 2);
  for (int32_t arg : {0, 1, -7}) EXPECT_EQ(bond_type_yield_method(830, arg), 3) << arg;
  EXPECT_EQ(bond_type_annual_yield(242, -1), 1);  // annual quotes only for compound yields
  EXPECT_EQ(bond_type_annual_yield(242, -2), 0);
  EXPECT_EQ(bond_type_simple_final(0, 40), 0);  // Gilts: simple final period only when asked
  EXPECT_EQ(bond_type_simple_final(1, 40), 1);
}

TEST(CatalogueAccrualDays, CanadianCapItalianDayPortugueseTruncation) {
  struct Row {
    int32_t code, settlement;
    bool regular;
    int32_t frequency;
    double rate, days, adjusted;
  } rows[] = {
      // Canada: at most 363/f days in regular periods (182 is capped already).
      {20, 0, true, 2, 0.05, 183.0, 181.5}, {20, 0, true, 2, 0.05, 182.0, 181.5},
      {20, 0, true, 2, 0.05, 181.0, 181.0}, {20, 0, true, 1, 0.05, 365.0, 363.0},
      {20, 0, false, 2, 0.05, 183.0, 183.0}, {22, 0, true, 2, 0.05, 183.0, 183.0},
      // Italy: one extra day (BTP/CTE only before 1999).
      {264, k1Jan1999, true, 2, 0.05, 100.0, 101.0}, {260, k31Dec1998, true, 2, 0.05, 100.0, 101.0},
      {260, k1Jan1999, true, 2, 0.05, 100.0, 100.0},
      // Portugal before Nov 1998: daily interest on 10^8 at 8.75% is
      // 24305.55..., cut to 24305, so days scale by 24305 x 360 / 8 750 000.
      {290, k31Oct1998, true, 1, 0.0875, 90.0, 90.0 * 8749800.0 / 8750000.0},
      {290, k1Nov1998, true, 1, 0.0875, 90.0, 90.0},
      {290, k31Oct1998, true, 1, 0.036, 90.0, 90.0},  // exactly 10 000 a day
      {290, k31Oct1998, true, 1, 0.0, 90.0, 90.0},
      {0, k31Oct1998, true, 2, 0.05, 200.0, 200.0}, {20, 0, true, 0, 0.05, 200.0, 200.0},
  };
  for (const Row& r : rows) {
    double days = r.days;
    const bool adjusted =
        bond_type_adjust_accrual_days(&days, r.code, r.settlement, r.regular, r.frequency, r.rate);
    EXPECT_EQ(adjusted, days != r.days) << r.code;
    EXPECT_NEAR(days, r.adjusted, 1e-12) << r.code << " " << r.days;
  }
  EXPECT_FALSE(bond_type_adjust_accrual_days(nullptr, 20, 0, true, 2, 0.05));
}

TEST(ExDividendDate, EachMarketsRule) {
  const int32_t jubilee[] = {civil_serial(2002, 6, 3), civil_serial(2002, 6, 4)};
  const int32_t may_day[] = {civil_serial(2003, 5, 1)};
  const BusinessCalendar none{}, uk_weekends_open{jubilee, 2, 1, 1}, sweden{may_day, 1, 0, 0};
  const int32_t fri7jun02 = civil_serial(2002, 6, 7);
  struct Row {
    int32_t code, coupon;
    const BusinessCalendar* calendar;
    int32_t expected;
  } rows[] = {
      // Gilts: back 7 business days over the Jubilee holidays 3-4 Jun (Thu 6
      // .. Mon 27 May), plus one; the caller's weekend flags do not apply.
      {41, fri7jun02, &uk_weekends_open, civil_serial(2002, 5, 28)},
      // India: Saturdays work, back to Sat 6 Apr, minus one.
      {250, civil_serial(2002, 4, 15), &none, civil_serial(2002, 4, 5)},
      // Sweden: 5 business days back from Mon 5 May over 1 May: Fri 25 Apr.
      {180, civil_serial(2003, 5, 5), &sweden, civil_serial(2003, 4, 25)},
      {190, fri7jun02, &none, fri7jun02 - 3},  // Korea
      {350, fri7jun02, &none, fri7jun02 - 9},  // New Zealand
      // One month back: South Africa keeps month ends, the Czech Republic the
      // day; Denmark clamps 31 Mar to 28 Feb.
      {380, civil_serial(2002, 2, 28), &none, civil_serial(2002, 1, 31)},
      {360, civil_serial(2003, 6, 30), &none, civil_serial(2003, 5, 30)},
      {302, civil_serial(2001, 3, 31), &none, civil_serial(2001, 2, 28)},
      // Ireland: Sat 18 Apr 1998 d - 21 + 4; Fri 18 Apr 1997 d - 21 - 2; a
      // Wednesday exactly three weeks.
      {342, civil_serial(1998, 4, 18), &none, civil_serial(1998, 4, 1)},
      {343, civil_serial(1997, 4, 18), &none, civil_serial(1997, 3, 26)},
      {342, civil_serial(1998, 12, 30), &none, civil_serial(1998, 12, 9)},
      // Austria: coupons on the 10th-24th go ex on the first Monday; others
      // from the 14th plus ((weekday of the 14th) + 4) mod 7 days, 0 as 7:
      // Sat 14 Mar +5, Sun 14 Jun +6, Mon 14 Dec +7, back into last year.
      {142, civil_serial(1998, 3, 24), &none, civil_serial(1998, 3, 2)},
      {142, civil_serial(1998, 3, 25), &none, civil_serial(1998, 3, 19)},
      {143, civil_serial(1998, 7, 1), &none, civil_serial(1998, 6, 20)},
      {142, civil_serial(1998, 12, 30), &none, civil_serial(1998, 12, 21)},
      {142, civil_serial(1999, 1, 5), &none, civil_serial(1998, 12, 21)},
      // No period: today's Irish bonds, Treasuries, unknown codes, empty slots.
      {340, civil_serial(1998, 4, 18), &none, civil_serial(1998, 4, 18)},
      {0, fri7jun02, &none, fri7jun02},
      {15, fri7jun02, &none, fri7jun02},
      {1098, fri7jun02, &none, fri7jun02},
  };
  for (const Row& r : rows) {
    EXPECT_EQ(bond_type_exdiv_date(r.coupon, r.code, *r.calendar, nullptr), r.expected) << r.code;
  }

  // A caller's record of zero days means no period, even for a Gilt.
  CustomType record;
  record.exdiv_days = 0;
  EXPECT_EQ(bond_type_exdiv_date(fri7jun02, 40, none, &record), fri7jun02);
}

// Every row of KVLbtable must describe its codes as KVLbtype does, and its
// ex-dividend flag must say whether the market's rule moves a coupon date.
TEST(KVLbtable, AgreesWithKVLbtypeAndTheExDividendRules) {
  const int32_t *codes = nullptr, *eom_codes = nullptr, *frequencies = nullptr;
  const char* const* names = nullptr;
  const char* const* daycounts = nullptr;
  const char* exdiv = nullptr;
  const int32_t rows = KVLbtable(&codes, &eom_codes, &names, &daycounts, &frequencies, &exdiv);
  ASSERT_EQ(rows, 64);
  EXPECT_EQ(KVLbtable(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 64);
  // Code 0 has the rule on by default and no partner: it stands in the second column.
  EXPECT_EQ(codes[0], -1);
  EXPECT_EQ(eom_codes[0], 0);
  int32_t previous = -1;
  const int32_t coupon = civil_serial(2002, 6, 7);
  for (int32_t i = 0; i < rows; ++i) {
    const int32_t base = codes[i] < 0 ? eom_codes[i] : codes[i];
    SCOPED_TRACE(base);
    EXPECT_GT(base, previous);
    EXPECT_LE(base, 540);
    previous = base;
    for (int32_t code : {codes[i], eom_codes[i]}) {
      if (code < 0) continue;
      int32_t frequency = 0, eom = 0, error = -7;
      const char* name = nullptr;
      KVLbtype(code, &frequency, nullptr, &eom, &name, &error);
      EXPECT_EQ(error, 0);
      EXPECT_EQ(frequency, frequencies[i]);
      EXPECT_STREQ(name, names[i]);
      EXPECT_EQ(bond_type_base(code), base);
      EXPECT_EQ(eom, code == eom_codes[i] ? 1 : 0) << code;
    }
    const char* daycount = nullptr;
    KVLbtype(base, nullptr, &daycount, nullptr, nullptr, nullptr);
    if (codes[i] >= 0) {
      EXPECT_STREQ(daycount, daycounts[i]);
    }
    const bool moves = bond_type_exdiv_date(coupon, base, BusinessCalendar{}, nullptr) != coupon;
    EXPECT_EQ(exdiv[i], moves ? 1 : 0);
  }
}

}  // namespace
}  // namespace kbond::engine
