// The PIK cash-flow table: it reprices the bond, counts the remaining
// periods, and leaves nothing behind on failure.
#include <gtest/gtest.h>

#include <cmath>

#include "pik/pik_test_bond.h"

namespace kbond::testing {
namespace {

struct Table {
  int32_t* dates = nullptr;
  double* coupons = nullptr;
  double* principal = nullptr;
  double* periods = nullptr;
  ~Table() { KVLpikcshflw_free(dates, coupons, principal, periods); }
};

// Clean price per 100 from the table: every row at v^periods, less accrued.
double table_price(const Table& table, int32_t rows, double yield, double frequency,
                   double accrued) {
  double value = 0.0;
  for (int32_t i = 0; i < rows; ++i) {
    value += (table.coupons[i] + table.principal[i]) * std::pow(1.0 + yield / frequency,
                                                                 -table.periods[i]);
  }
  return value - accrued;
}

TEST(PikCashFlows, TableRepricesTheBond) {
  PikBond stepped;
  stepped.dates = {civil_serial(2026, 6, 15), civil_serial(2028, 6, 15),
                   civil_serial(2030, 6, 15)};
  stepped.cash = {0.05};
  stepped.in_kind = {0.07, 0.05, 0.03};
  PikBond called;
  const int32_t call = civil_serial(2029, 9, 1);
  called.call = &call;
  const int32_t on = 1;
  PikBond business;
  business.business_days = &on;
  for (PikBond* bond : {&stepped, &called, &business}) {
    Table table;
    const int32_t rows =
        bond->cash_flows(&table.dates, &table.coupons, &table.principal, &table.periods);
    ASSERT_GT(rows, 1);
    const double accrued = bond->accrued();
    EXPECT_NEAR(table_price(table, rows, 0.09, 2.0, accrued), bond->price(0.09), 1e-9);
    for (int32_t i = 1; i < rows; ++i) EXPECT_GT(table.dates[i], table.dates[i - 1]);
  }
}

TEST(PikCashFlows, RowsAreTheRemainingPeriods) {
  // From 20 Mar 2025 to 15 Jun 2030: 11 semi-annual coupons.
  PikBond bond;
  Table table;
  EXPECT_EQ(bond.cash_flows(&table.dates, nullptr, nullptr, nullptr), 11);
  EXPECT_EQ(table.dates[0], civil_serial(2025, 6, 15));
  EXPECT_EQ(table.dates[10], civil_serial(2030, 6, 15));
  // With every out pointer NULL nothing is made but the count is returned.
  EXPECT_EQ(bond.cash_flows(nullptr, nullptr, nullptr, nullptr), 11);
  EXPECT_EQ(bond.error, 0);
}

TEST(PikCashFlows, SinglePeriodRowCarriesTheInKindCouponAsPrincipal) {
  PikBond bond;
  bond.settlement = civil_serial(2030, 4, 15);
  Table table;
  ASSERT_EQ(bond.cash_flows(&table.dates, &table.coupons, &table.principal, &table.periods), 1);
  EXPECT_DOUBLE_EQ(table.coupons[0], 4.0);
  EXPECT_DOUBLE_EQ(table.principal[0], 102.0);
  EXPECT_NEAR(table.periods[0], 2.0 * 61.0 / 364.0, 1e-12);
}

TEST(PikCashFlows, FailureLeavesEveryOutPointerNull) {
  PikBond bond;
  bond.type = 60;
  Table table;
  table.dates = reinterpret_cast<int32_t*>(&bond);  // must be overwritten
  table.coupons = reinterpret_cast<double*>(&bond);
  EXPECT_EQ(bond.cash_flows(&table.dates, &table.coupons, &table.principal, &table.periods), 0);
  EXPECT_EQ(bond.error, 1);
  EXPECT_EQ(table.dates, nullptr);
  EXPECT_EQ(table.coupons, nullptr);
  EXPECT_EQ(table.principal, nullptr);
  EXPECT_EQ(table.periods, nullptr);
}

}  // namespace
}  // namespace kbond::testing
