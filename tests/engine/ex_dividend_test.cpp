// Ex-dividend dates of every market with an ex-dividend period. Each
// expected date is counted by hand on the calendar in the comment (weekdays
// checked against a printed calendar / Python's datetime).
#include <gtest/gtest.h>

#include "civil_serial.h"
#include "engine/catalogue.h"

namespace kbond::engine {
namespace {

using kbond::testing::civil_serial;
using dates::BusinessCalendar;

const BusinessCalendar kNoHolidays{};

int32_t exdiv(int32_t code, int32_t coupon, const BusinessCalendar& cal = kNoHolidays) {
  return bond_type_exdiv_date(coupon, code, cal, nullptr);
}

TEST(ExDividendDate, GiltsGoExSevenBusinessDaysBackPlusOneDay) {
  // Coupon Fri 7 Jun 2002. Back 7 business days: Thu 6, Wed 5, Tue 4, Mon 3,
  // Fri 31 May, Thu 30, Wed 29 May; plus one day: Thu 30 May 2002.
  const int32_t coupon = civil_serial(2002, 6, 7);
  EXPECT_EQ(exdiv(40, coupon), civil_serial(2002, 5, 30));
  EXPECT_EQ(exdiv(42, coupon), civil_serial(2002, 5, 30));
  EXPECT_EQ(exdiv(41, coupon), civil_serial(2002, 5, 30));

  // With the Golden Jubilee bank holidays Mon 3 and Tue 4 June 2002: back
  // Thu 6, Wed 5, Fri 31, Thu 30, Wed 29, Tue 28, Mon 27; plus one: Tue 28.
  const int32_t jubilee[] = {civil_serial(2002, 6, 3), civil_serial(2002, 6, 4)};
  const BusinessCalendar uk{jubilee, 2, 0, 0};
  EXPECT_EQ(exdiv(40, coupon, uk), civil_serial(2002, 5, 28));

  // The caller's weekend flags do not apply to the Gilt rule.
  const BusinessCalendar weekends_open{jubilee, 2, 1, 1};
  EXPECT_EQ(exdiv(40, coupon, weekends_open), civil_serial(2002, 5, 28));
}

TEST(ExDividendDate, IndiaCountsSaturdaysAndGoesOneDayEarlier) {
  // Coupon Mon 15 Apr 2002. Back 7 business days with Saturday working:
  // Sat 13, Fri 12, Thu 11, Wed 10, Tue 9, Mon 8, Sat 6; minus one: Fri 5.
  EXPECT_EQ(exdiv(250, civil_serial(2002, 4, 15)), civil_serial(2002, 4, 5));
  EXPECT_EQ(exdiv(251, civil_serial(2002, 4, 15)), civil_serial(2002, 4, 5));
}

TEST(ExDividendDate, SwedenFiveBusinessDaysBack) {
  // Coupon Mon 5 May 2003: Fri 2, Thu 1, Wed 30 Apr, Tue 29, Mon 28 Apr.
  const int32_t coupon = civil_serial(2003, 5, 5);
  EXPECT_EQ(exdiv(180, coupon), civil_serial(2003, 4, 28));
  // With 1 May a holiday: Fri 2, Wed 30, Tue 29, Mon 28, Fri 25 Apr.
  const int32_t may_day[] = {civil_serial(2003, 5, 1)};
  EXPECT_EQ(exdiv(180, coupon, BusinessCalendar{may_day, 1, 0, 0}), civil_serial(2003, 4, 25));
}

TEST(ExDividendDate, CalendarDayMarkets) {
  const int32_t coupon = civil_serial(2002, 6, 7);
  EXPECT_EQ(exdiv(170, coupon), coupon - 1);   // Slovakia
  EXPECT_EQ(exdiv(190, coupon), coupon - 3);   // Korea
  EXPECT_EQ(exdiv(220, coupon), coupon - 7);   // Australia
  EXPECT_EQ(exdiv(221, coupon), coupon - 7);
  EXPECT_EQ(exdiv(350, coupon), coupon - 9);   // New Zealand
  EXPECT_EQ(exdiv(330, coupon), coupon - 14);  // Norway
}

TEST(ExDividendDate, OneMonthBackWithAndWithoutEndOfMonthRule) {
  // Thu 28 Feb 2002 is a month end: South Africa keeps to month ends
  // (31 Jan), Denmark and the Czech Republic keep the day (28 Jan).
  const int32_t feb = civil_serial(2002, 2, 28);
  EXPECT_EQ(exdiv(380, feb), civil_serial(2002, 1, 31));
  EXPECT_EQ(exdiv(302, feb), civil_serial(2002, 1, 28));
  EXPECT_EQ(exdiv(360, feb), civil_serial(2002, 1, 28));
  // 30 June 2003 -> 31 May with the rule, 30 May without.
  const int32_t june = civil_serial(2003, 6, 30);
  EXPECT_EQ(exdiv(380, june), civil_serial(2003, 5, 31));
  EXPECT_EQ(exdiv(360, june), civil_serial(2003, 5, 30));
  // 31 March -> 28 February either way (the day is clamped).
  EXPECT_EQ(exdiv(302, civil_serial(2001, 3, 31)), civil_serial(2001, 2, 28));
}

TEST(ExDividendDate, IrishRuleTakesTheWednesdayThreeWeeksBefore) {
  // Sat 18 Apr 1998 (weekday 1): d - 21 + 4 = Wed 1 Apr 1998.
  EXPECT_EQ(exdiv(342, civil_serial(1998, 4, 18)), civil_serial(1998, 4, 1));
  // Fri 18 Apr 1997 (weekday 7): d - 21 - 2 = Wed 26 Mar 1997.
  EXPECT_EQ(exdiv(342, civil_serial(1997, 4, 18)), civil_serial(1997, 3, 26));
  // Wed 30 Dec 1998: exactly three weeks back, Wed 9 Dec 1998.
  EXPECT_EQ(exdiv(343, civil_serial(1998, 12, 30)), civil_serial(1998, 12, 9));
  // Today's Irish bonds have no ex-dividend period.
  EXPECT_EQ(exdiv(340, civil_serial(1998, 4, 18)), civil_serial(1998, 4, 18));
}

TEST(ExDividendDate, AustrianRule) {
  // Coupons on the 10th to the 24th: the first Monday of the month
  // (1 Mar 1998 is a Sunday, so Mon 2 Mar 1998).
  EXPECT_EQ(exdiv(142, civil_serial(1998, 3, 10)), civil_serial(1998, 3, 2));
  EXPECT_EQ(exdiv(142, civil_serial(1998, 3, 15)), civil_serial(1998, 3, 2));
  EXPECT_EQ(exdiv(143, civil_serial(1998, 3, 24)), civil_serial(1998, 3, 2));
  // Otherwise from the 14th plus ((weekday of the 14th) + 4) mod 7 days,
  // 0 counting as 7:
  // 25 Mar 1998: 14 Mar is a Saturday (1) -> 5 days -> 19 Mar.
  EXPECT_EQ(exdiv(142, civil_serial(1998, 3, 25)), civil_serial(1998, 3, 19));
  // 28 Feb 1998: 14 Feb is a Saturday -> 19 Feb.
  EXPECT_EQ(exdiv(142, civil_serial(1998, 2, 28)), civil_serial(1998, 2, 19));
  // 1 Jul 1998 (before the 10th): 14 Jun, a Sunday (2) -> 6 days -> 20 Jun.
  EXPECT_EQ(exdiv(142, civil_serial(1998, 7, 1)), civil_serial(1998, 6, 20));
  // 30 Dec 1998: 14 Dec is a Monday (3) -> 0, counted as 7 -> 21 Dec.
  EXPECT_EQ(exdiv(142, civil_serial(1998, 12, 30)), civil_serial(1998, 12, 21));
  // 5 Jan 1999 reaches back into December of the year before -> 21 Dec 1998.
  EXPECT_EQ(exdiv(142, civil_serial(1999, 1, 5)), civil_serial(1998, 12, 21));
  // Today's Austrian bonds have no ex-dividend period.
  EXPECT_EQ(exdiv(140, civil_serial(1998, 3, 15)), civil_serial(1998, 3, 15));
}

TEST(ExDividendDate, MarketsWithoutPeriodReturnTheCouponDate) {
  const int32_t coupon = civil_serial(2002, 6, 7);
  for (int32_t code : {0, 1, 20, 60, 81, 200, 240, 260, 300, 301, 400, 810, 830})
    EXPECT_EQ(exdiv(code, coupon), coupon) << code;
  // Unknown codes and empty custom slots too.
  EXPECT_EQ(exdiv(15, coupon), coupon);
  EXPECT_EQ(exdiv(1098, coupon), coupon);
}

TEST(ExDividendDate, CallersRecordOverridesTheMarketRule) {
  const int32_t coupon = civil_serial(2002, 6, 7);  // Friday
  CustomType record;
  record.exdiv_days = -10;  // ten calendar days
  EXPECT_EQ(bond_type_exdiv_date(coupon, 40, kNoHolidays, &record), coupon - 10);
  EXPECT_EQ(bond_type_exdiv_date(coupon, 0, kNoHolidays, &record), coupon - 10);
  record.exdiv_days = 0;  // no period at all, even for a Gilt
  EXPECT_EQ(bond_type_exdiv_date(coupon, 40, kNoHolidays, &record), coupon);
  record.exdiv_days = 3;  // three business days: Thu 6, Wed 5, Tue 4 June
  EXPECT_EQ(bond_type_exdiv_date(coupon, 0, kNoHolidays, &record), civil_serial(2002, 6, 4));
  // ...on the caller's own calendar, weekend flags included: with Saturday
  // a business day and Thu 6 June a holiday: Wed 5, Tue 4, Mon 3.
  const int32_t holiday[] = {civil_serial(2002, 6, 6)};
  EXPECT_EQ(bond_type_exdiv_date(coupon, 0, BusinessCalendar{holiday, 1, 1, 0}, &record),
            civil_serial(2002, 6, 3));
  // From a Monday with Saturday working: Sat 8 Jun counts, Fri 7, Thu 6.
  EXPECT_EQ(bond_type_exdiv_date(civil_serial(2002, 6, 10), 0, BusinessCalendar{nullptr, 0, 1, 0},
                                 &record),
            civil_serial(2002, 6, 6));
}

}  // namespace
}  // namespace kbond::engine
