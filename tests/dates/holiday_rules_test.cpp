// Holiday rules: each rule kind on years where its weekend handling matters,
// the Easter computus and the equinox formula.
#include <gtest/gtest.h>

#include "dates/civil_reference.h"
#include "dates/date_serial.h"
#include "dates/holiday_calendars.h"
#include "dates/holiday_rules.h"

namespace kbond::dates {
namespace {

int32_t S(int32_t d, int32_t m, int32_t y) { return date_to_serial(d, m, y); }

// Good Friday from the Meeus/Jones/Butcher Gregorian Easter algorithm, an
// independent computus.
int32_t meeus_good_friday(int32_t y) {
  const int32_t a = y % 19, b = y / 100, c = y % 100, d = b / 4, e = b % 4;
  const int32_t f = (b + 8) / 25, g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30;
  const int32_t i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7;
  const int32_t m = (a + 11 * h + 22 * l) / 451;
  const int32_t month = (h + l - 7 * m + 114) / 31, day = (h + l - 7 * m + 114) % 31 + 1;
  return reference::serial_of(day, month, y) - 2;
}

TEST(GoodFriday, KnownYearsAndAnIndependentComputus) {
  EXPECT_EQ(good_friday(2001), S(13, 4, 2001));
  EXPECT_EQ(good_friday(2002), S(29, 3, 2002));
  EXPECT_EQ(good_friday(2024), S(29, 3, 2024));
  EXPECT_EQ(good_friday(2011), S(22, 4, 2011));  // latest of the decade: Easter 24 April
  for (int32_t y = 1900; y <= 2500; ++y) ASSERT_EQ(good_friday(y), meeus_good_friday(y)) << y;
}

TEST(HolidayRule, FixedDayWeekendHandling) {
  // 4 July 2004 was a Sunday, 4 July 2009 a Saturday.
  EXPECT_EQ(holiday_in_year(weekdays_only_rule(4, 7), 2001), S(4, 7, 2001));
  EXPECT_EQ(holiday_in_year(weekdays_only_rule(4, 7), 2004), 0);
  EXPECT_EQ(holiday_in_year(sunday_to_monday_rule(4, 7), 2004), S(5, 7, 2004));
  EXPECT_EQ(holiday_in_year(sunday_to_monday_rule(4, 7), 2009), 0);
  EXPECT_EQ(holiday_in_year(nearest_weekday_rule(4, 7), 2009), S(3, 7, 2009));  // NYSE shut 3 July 2009
  EXPECT_EQ(holiday_in_year(nearest_weekday_rule(4, 7), 2004), S(5, 7, 2004));
  // 1 January 2005 was a Saturday: English bank holiday on Monday 3 January.
  EXPECT_EQ(holiday_in_year(weekend_to_monday_rule(1, 1), 2005), S(3, 1, 2005));
  EXPECT_EQ(holiday_in_year(weekend_to_monday_rule(1, 1), 2006), S(2, 1, 2006));
}

TEST(HolidayRule, ChristmasAndNewYearPairs) {
  // Christmas 2004 on a Saturday, 2005 on a Sunday: observed Tuesday 28 and 27 December.
  EXPECT_EQ(holiday_in_year(weekend_to_tuesday_rule(25, 12), 2004), S(28, 12, 2004));
  EXPECT_EQ(holiday_in_year(weekend_to_tuesday_rule(25, 12), 2005), S(27, 12, 2005));
  EXPECT_EQ(holiday_in_year(weekend_to_tuesday_rule(25, 12), 2001), S(25, 12, 2001));
  // New Zealand's 2 January: Sunday 2 January 2005 -> Tuesday 4th;
  // Saturday 2 January 2010 -> Monday 4th.
  EXPECT_EQ(holiday_in_year(weekend_plus_two_rule(2, 1), 2005), S(4, 1, 2005));
  EXPECT_EQ(holiday_in_year(weekend_plus_two_rule(2, 1), 2010), S(4, 1, 2010));
  EXPECT_EQ(holiday_in_year(weekend_plus_two_rule(2, 1), 2001), S(2, 1, 2001));
}

TEST(HolidayRule, SpecialWeekdayConditions) {
  EXPECT_EQ(holiday_in_year(tuesday_to_friday_rule(4, 5), 2001), S(4, 5, 2001));  // Friday
  EXPECT_EQ(holiday_in_year(tuesday_to_friday_rule(4, 5), 1998), 0);             // Monday
  EXPECT_EQ(holiday_in_year(tuesday_to_friday_rule(4, 5), 2003), 0);             // Sunday
  EXPECT_EQ(holiday_in_year(only_on_friday_rule(19, 3), 2004), S(19, 3, 2004));
  EXPECT_EQ(holiday_in_year(only_on_friday_rule(19, 3), 2001), 0);
  EXPECT_EQ(holiday_in_year(every_fifth_year_rule(5, 5), 2000), S(5, 5, 2000));
  EXPECT_EQ(holiday_in_year(every_fifth_year_rule(5, 5), 2001), 0);
  EXPECT_EQ(holiday_in_year(every_fifth_year_rule(5, 5), 2005), S(5, 5, 2005));
  EXPECT_EQ(holiday_in_year(every_fifth_year_rule(5, 5), 2015), S(5, 5, 2015));  // Tuesday
  EXPECT_EQ(holiday_in_year(every_fifth_year_rule(5, 5), 2030), 0);              // Sunday
}

TEST(HolidayRule, WeekdayOfMonthAndEaster) {
  EXPECT_EQ(holiday_in_year(nth_weekday_rule(4, kThursday, 11), 2001), S(22, 11, 2001));
  EXPECT_EQ(holiday_in_year(last_weekday_rule(kMonday, 5), 2001), S(28, 5, 2001));
  // Victoria Day: the Monday before 25 May, here last Monday of May less a week.
  EXPECT_EQ(holiday_in_year(last_weekday_rule(kMonday, 5, -7), 2001), S(21, 5, 2001));
  EXPECT_EQ(holiday_in_year(easter_rule(3), 2001), S(16, 4, 2001));    // Easter Monday
  EXPECT_EQ(holiday_in_year(easter_rule(41), 2001), S(24, 5, 2001));   // Ascension
  EXPECT_EQ(holiday_in_year(easter_rule(52), 2001), S(4, 6, 2001));    // Whit Monday
  EXPECT_EQ(holiday_in_year(easter_rule(62), 2001), S(14, 6, 2001));   // Corpus Christi
  EXPECT_EQ(holiday_in_year(easter_rule(-45), 2001), S(27, 2, 2001));  // Shrove Tuesday
  EXPECT_EQ(holiday_in_year(easter_rule(28), 2001), S(11, 5, 2001));   // Great Prayer Day
  // Midsummer eve: 19 June 2001 was a Tuesday, 19 June 2009 a Friday.
  EXPECT_EQ(holiday_in_year(first_friday_on_or_after_rule(19, 6), 2001), S(22, 6, 2001));
  EXPECT_EQ(holiday_in_year(first_friday_on_or_after_rule(19, 6), 2009), S(19, 6, 2009));
}

TEST(HolidayRule, OnceRules) {
  EXPECT_EQ(holiday_in_year(once_rule(31, 12, 1999), 1999), S(31, 12, 1999));
  EXPECT_EQ(holiday_in_year(once_rule(31, 12, 1999), 2000), 0);
  EXPECT_EQ(holiday_in_year(once_rule(31, 12, 1999), 1998), 0);
}

// Japan's equinox days as published by the National Astronomical Observatory.
TEST(HolidayRule, EquinoxDays) {
  EXPECT_EQ(holiday_in_year(spring_equinox_rule(), 2000), S(20, 3, 2000));
  EXPECT_EQ(holiday_in_year(spring_equinox_rule(), 2001), S(20, 3, 2001));
  EXPECT_EQ(holiday_in_year(spring_equinox_rule(), 2012), S(20, 3, 2012));
  EXPECT_EQ(holiday_in_year(spring_equinox_rule(), 2024), S(20, 3, 2024));
  EXPECT_EQ(holiday_in_year(autumn_equinox_rule(), 2002), S(23, 9, 2002));
  EXPECT_EQ(holiday_in_year(autumn_equinox_rule(), 2024), S(23, 9, 2024));  // Sunday 22nd -> Monday
  EXPECT_EQ(holiday_in_year(autumn_equinox_rule(), 2001), S(24, 9, 2001));  // Sunday 23rd -> Monday
  EXPECT_EQ(holiday_in_year(autumn_equinox_rule(), 2000), 0);               // Saturday 23rd
}

// The mean-year formula drifts from the astronomical equinox now and then.
// In 2012 Japan's autumn equinox day was Saturday 22 September (no weekday
// holiday); the formula puts it on Sunday the 23rd and observes Monday the
// 24th. The library's calendars follow the formula.
TEST(HolidayRule, EquinoxFormulaDiffersFromThe2012Observance) {
  EXPECT_EQ(holiday_in_year(autumn_equinox_rule(), 2012), S(24, 9, 2012));
}

TEST(HolidayRule, SwitchedToMondaysIn2000) {
  const HolidayRule coming_of_age = nth_monday_from_2000_rule(2, 1, 15);
  const HolidayRule sports_day = nth_monday_from_2000_rule(2, 10, 10);
  EXPECT_EQ(holiday_in_year(coming_of_age, 1999), S(15, 1, 1999));  // Friday
  EXPECT_EQ(holiday_in_year(coming_of_age, 2000), S(10, 1, 2000));
  EXPECT_EQ(holiday_in_year(coming_of_age, 2001), S(8, 1, 2001));
  EXPECT_EQ(holiday_in_year(coming_of_age, 1994), 0);                 // Saturday
  EXPECT_EQ(holiday_in_year(sports_day, 1999), S(11, 10, 1999));     // Sunday -> Monday
  EXPECT_EQ(holiday_in_year(sports_day, 2001), S(8, 10, 2001));
}

TEST(HolidayRule, YearsOutsideTheSerialRange) {
  EXPECT_EQ(holiday_in_year(weekdays_only_rule(1, 1), 150), 0);
  EXPECT_EQ(holiday_in_year(easter_rule(0), 7000), 0);
  EXPECT_EQ(holiday_in_year(weekdays_only_rule(1, 1), INT32_MIN), 0);
}

}  // namespace
}  // namespace kbond::dates
