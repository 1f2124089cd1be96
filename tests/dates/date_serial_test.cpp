// Date serials: pinned values, full-range round trips and weekdays against an
// independent civil-date algorithm, and bad input.
#include <gtest/gtest.h>

#include <tuple>

#include "dates/civil_reference.h"
#include "dates/date_serial.h"

namespace kbond::dates {
namespace {

// Serials below are (date - 31 December 1899) in days, as given by Python's
// datetime.date(...).toordinal() - 693595; the rest are checked against the
// independent civil-date reference.
TEST(DateToSerial, PinnedSerialsShortYearsAndBadInput) {
  EXPECT_EQ(date_to_serial(1, 3, 1900), 60);       // 1900 is not a leap year
  EXPECT_EQ(date_to_serial(4, 9, 6896), kMaxSerial);
  EXPECT_EQ(date_to_serial(1, 1, 0), 1);        // year 0 is 1900
  EXPECT_EQ(date_to_serial(1, 1, 150), 54788);  // 150 is 2050
  // The day is not checked against the month, inside the cache and out.
  EXPECT_EQ(date_to_serial(31, 2, 2001), 36952);  // 3 March 2001
  EXPECT_EQ(date_to_serial(0, 3, 2001), 36949);   // 28 February 2001
  EXPECT_EQ(date_to_serial(31, 2, 2101), reference::serial_of(3, 3, 2101));
  for (const auto& [d, m, y] : {std::tuple{1, 13, 2001}, {1, 0, 2001}, {5, 9, 6896},
                                {1, 1, 100000}, {INT32_MAX, 12, 2001}, {INT32_MAX, 12, 2201},
                                {1, 1, INT32_MAX}}) {
    EXPECT_EQ(date_to_serial(d, m, y), -1) << d << "/" << m << "/" << y;
  }
  EXPECT_LT(date_to_serial(INT32_MIN, 1, 2201), 0);
}

// Every convertible serial splits as the reference algorithm says, every
// serial from 30 December 1899 (-1) on falls on the reference's weekday, and
// every date from 1897 on converts back to the same serial.
TEST(SerialToDate, RoundTripsEverySerialFrom1600) {
  const int32_t first_exact = reference::serial_of(1, 1, 1897);
  int32_t failures = 0;
  for (int32_t s = kMinConvertibleSerial; s <= kMaxSerial; ++s) {
    int32_t d = 0, m = 0, y = 0, rd, rm, ry;
    const int rc = serial_to_date(s, &d, &m, &y);
    reference::date_of(s, &rd, &rm, &ry);
    if (rc != 0 || d != rd || m != rm || y != ry ||
        (s >= -1 && weekday_of(s) != reference::weekday(s)) ||
        (s >= first_exact && date_to_serial(d, m, y) != s)) {
      if (++failures < 10) ADD_FAILURE() << "serial " << s << ": " << d << "/" << m << "/" << y;
    }
  }
  EXPECT_EQ(failures, 0);
}

TEST(SerialToDate, OutOfRangeSerials) {
  int32_t d = -7, m = -7, y = -7;
  EXPECT_EQ(serial_to_date(kMinConvertibleSerial - 1, &d, &m, &y), 1);
  EXPECT_EQ(d, -7);  // nothing written before 1600
  // Above the largest serial the split is still reported, with failure.
  EXPECT_EQ(serial_to_date(kMaxSerial + 1, &d, &m, &y), 1);
  EXPECT_EQ(std::tuple(d, m, y), std::tuple(5, 9, 6896));
  EXPECT_EQ(serial_to_date(INT32_MAX, &d, &m, &y), 1);
  EXPECT_GE(weekday_of(INT32_MAX), 1);
  EXPECT_EQ(serial_to_date(36525, nullptr, nullptr, nullptr), 0);  // null outputs tolerated
}

}  // namespace
}  // namespace kbond::dates
