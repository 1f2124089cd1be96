// The call frame shared by the straight-bond exports: error pointer, set-up
// failures and release of the description.
#include <gtest/gtest.h>

#include <cmath>

#include "dates/date_serial.h"
#include "engine/call_frame.h"

namespace kbond::engine {
namespace {

int32_t ymd(int32_t y, int32_t m, int32_t d) { return dates::date_to_serial(d, m, y); }

TEST(CallFrame, NullErrorPointerAndSetupFailure) {
  const double coupon = 0.05;
  const int32_t maturity = ymd(2030, 6, 15);
  const int32_t unknown = 10;
  bond_args args{.coupons = &coupon, .n_coupons = 1, .dates = &maturity, .n_dates = 1,
                 .settlement = ymd(2025, 3, 10), .type = &unknown};
  {
    BondCall call(args, nullptr);
    EXPECT_FALSE(call.ok());
    EXPECT_EQ(call.error(), 1);
  }
  int32_t err = 42;
  EXPECT_EQ(with_bond(args, &err, -1.0, [](const bond_desc&, int32_t&) { return 5.0; }), -1.0);
  EXPECT_EQ(err, 1);
  args.type = nullptr;
  EXPECT_EQ(with_bond(args, &err, -1.0, [](const bond_desc& d, int32_t&) { return d.frequency; }),
            2.0);
  EXPECT_EQ(err, 0);
  // An error raised by the computation gives the failure value.
  EXPECT_EQ(with_bond(args, &err, -999.0, [](const bond_desc&, int32_t& e) {
              e = 401;
              return 3.0;
            }),
            -999.0);
  EXPECT_EQ(err, 401);
}

TEST(CallFrame, OwnedScheduleIsReleasedOnEveryPath) {
  // Run under AddressSanitizer: a leaked schedule copy fails the build.
  const double coupon = 0.05, factor = 1.0, amount = 0.1;
  const int32_t maturity = ymd(2030, 6, 15), sink = ymd(2027, 6, 15);
  bond_args args{.coupons = &coupon, .n_coupons = 1, .dates = &maturity, .n_dates = 1,
                 .settlement = ymd(2025, 3, 10), .factor = &factor, .sink_dates = &sink,
                 .n_sink = 1, .sink_amounts = &amount};
  int32_t err = -1;
  EXPECT_EQ(with_bond(args, &err, -1.0, [](const bond_desc& d, int32_t&) { return d.factor; }),
            1.0);
  EXPECT_EQ(with_bond(args, &err, -1.0, [](const bond_desc&, int32_t& e) {
              e = 1;
              return 0.0;
            }),
            -1.0);
}

}  // namespace
}  // namespace kbond::engine
