#include "futures/contract_table.h"

#include "futures/conversion_factor.h"

namespace kbond::futures {
namespace {

// Delivery dates from which contract terms changed.
constexpr int32_t kMar1998 = 35854;
constexpr int32_t kDec1998 = 36129;
constexpr int32_t kJan1999 = 36160;
constexpr int32_t kMar1999 = 36219;
constexpr int32_t kMay1999 = 36280;
constexpr int32_t kAfterMay1999 = 36281;  // deliveries after 1 May 1999
constexpr int32_t kSep1999 = 36403;
constexpr int32_t kDec1999 = 36494;
constexpr int32_t kMar2000 = 36585;
constexpr int32_t kJun2000 = 36677;
constexpr int32_t kSep2000 = 36769;

// Bond types the deliverable bonds are priced under.
constexpr int32_t kGilt = 40;
constexpr int32_t kSpanishBtanStyle = 80;
constexpr int32_t kOat = 81;
constexpr int32_t kBelgianGovernmentBond = 120;
constexpr int32_t kSpanishGovernmentBond = 280;
constexpr int32_t kGenericBond = 500;
constexpr int32_t kPortugueseFuturesOld = 700;
constexpr int32_t kPortugueseFutures = 701;

using enum NotionalFloor;

// The U.S. baskets are in months (whole months, plus half a month for a part
// month, so "under 25 months" is at most 24.5); Canada's in whole quarters.
// Every other basket is in years.
constexpr Contract kContracts[] = {
    {.code = 0, .name = "CBOT U.S. Treasury bond and 10-year note",
     .routine = factor_treasury_quarters, .decimals = 4, .floor = kPositive,
     .terms = {{
         {.notional = 0.08, .basket = {78.0, 120.0}, .second_basket = {180.0, kUnbounded}},
         {.from = kMar2000, .notional = 0.06, .basket = {78.0, 120.0},
          .second_basket = {180.0, kUnbounded}},
     }}},
    {.code = 1, .name = "CBOT 2- and 5-year Treasury notes", .routine = factor_treasury_months,
     .decimals = 4, .floor = kPositive,
     .terms = {{
         {.notional = 0.08, .basket = {21.0, 24.5}, .second_basket = {50.0, 63.0}},
         {.from = kMar2000, .notional = 0.06, .basket = {21.0, 24.5},
          .second_basket = {50.0, 63.0}},
     }}},
    {.code = 2, .name = "LIFFE long gilt, exchange closed form", .routine = factor_gilt_closed_form,
     .decimals = 7,
     .terms = {{
         {.notional = 0.09, .basket = {10.0, 15.0}},
         {.from = kMar1998, .notional = 0.07, .basket = {8.75, 13.0}},
     }}},
    {.code = 3, .name = "MATIF notional bond (10 %)", .routine = factor_matif, .decimals = 6,
     .terms = {{{.notional = 0.10, .basket = {8.5, 10.5}, .priced_as = kOat}}}},
    // No basket check: the exchange lists the deliverable issues.
    {.code = 4, .name = "TSE 10-year JGB", .routine = factor_jgb,
     .decimals = 6, .truncated = true, .floor = kPositive,
     .terms = {{{.notional = 0.06}}}},
    {.code = 5, .name = "Bund delivered on the 10th, 1999-2000 notional", .routine = factor_tenth,
     .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {8.5, 10.5}},
         {.from = kMay1999, .notional = 0.06, .basket = {8.5, 10.5}, .priced_as = kGenericBond},
         {.from = kSep1999, .notional = 0.04, .basket = {8.5, 10.5}, .priced_as = kGenericBond},
         {.from = kMar2000, .notional = 0.06, .basket = {8.5, 10.5}, .priced_as = kGenericBond},
     }}},
    {.code = 6, .name = "LIFFE BTP", .routine = factor_btp_liffe, .decimals = 6,
     .terms = {{
         {.notional = 0.08, .basket = {8.0, 10.5}},
         {.from = kDec1998, .notional = 0.06, .basket = {8.5, 10.5}},
         {.from = kMar1999, .notional = 0.06, .basket = {8.5, 10.5}, .priced_as = kGenericBond},
     }}},
    {.code = 7, .name = "ME 10-year Government of Canada bond", .routine = factor_canada,
     .decimals = 4, .floor = kPositive,
     .terms = {{
         {.notional = 0.09, .basket = {32.0, 42.0}},
         {.from = kJun2000, .notional = 0.06, .basket = {32.0, 42.0}},
     }}},
    {.code = 8, .name = "MEFF 10-year bono", .routine = factor_spain, .decimals = 7,
     .terms = {{
         {.notional = 0.065, .basket = {7.5, 10.5}, .priced_as = kSpanishGovernmentBond},
         {.from = kDec1998, .notional = 0.065, .basket = {7.5, 10.5},
          .priced_as = kSpanishBtanStyle},
         {.from = kAfterMay1999, .notional = 0.04, .basket = {7.5, 10.5},
          .priced_as = kSpanishBtanStyle},
         {.from = kDec1999, .notional = 0.04, .basket = {7.5, 10.5},
          .priced_as = kSpanishGovernmentBond},
     }}},
    {.code = 9, .name = "MEFF 3-year bono", .routine = factor_spain, .decimals = 7,
     .terms = {{
         {.notional = 0.07, .basket = {2.0, 3.5}, .priced_as = kSpanishGovernmentBond},
         {.from = kMar1998, .notional = 0.055, .basket = {3.5, 5.5},
          .priced_as = kSpanishGovernmentBond},
         {.from = kDec1998, .notional = 0.055, .basket = {3.5, 5.5},
          .priced_as = kSpanishBtanStyle},
         {.from = kDec1999, .notional = 0.055, .basket = {3.5, 5.5},
          .priced_as = kSpanishGovernmentBond},
     }}},
    // No basket check.
    {.code = 10, .name = "MEFF notional bono (10 %)", .routine = factor_bono_actual_days,
     .decimals = 7, .floor = kGrowth,
     .terms = {{{.notional = 0.10}}}},
    {.code = 11, .name = "MEFF 15-year bono", .routine = factor_spain, .decimals = 7,
     .terms = {{
         {.notional = 0.065, .basket = {15.0, kUnbounded}, .priced_as = kSpanishGovernmentBond},
         {.from = kDec1998, .notional = 0.065, .basket = {15.0, kUnbounded},
          .priced_as = kSpanishBtanStyle},
         {.from = kDec1999, .notional = 0.065, .basket = {15.0, kUnbounded},
          .priced_as = kSpanishGovernmentBond},
     }}},
    {.code = 15, .name = "DTB/Eurex Bund", .routine = factor_tenth, .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {8.5, 10.5}},
         {.from = kDec1999, .notional = 0.06, .basket = {8.5, 10.5}, .priced_as = kGenericBond},
     }}},
    {.code = 16, .name = "DTB/Eurex Bobl", .routine = factor_tenth, .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {3.5, 5.0}},
         {.from = kDec1999, .notional = 0.06, .basket = {3.5, 5.0}, .priced_as = kGenericBond},
         {.from = kSep2000, .notional = 0.06, .basket = {4.5, 5.5}, .priced_as = kGenericBond},
     }}},
    {.code = 17, .name = "DTB/Eurex Schatz", .routine = factor_tenth, .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {1.75, 2.25}},
         {.from = kDec1999, .notional = 0.06, .basket = {1.75, 2.25}, .priced_as = kGenericBond},
     }}},
    {.code = 18, .name = "DTB/Eurex Buxl", .routine = factor_tenth, .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {20.0, 30.5}},
         {.from = kDec1999, .notional = 0.06, .basket = {20.0, 30.5}, .priced_as = kGenericBond},
     }}},
    {.code = 20, .name = "Bund-model 7 % contract, 8 to 10 years", .routine = factor_tenth,
     .decimals = 6,
     .terms = {{
         {.notional = 0.07, .basket = {8.0, 10.0}},
         {.from = kDec1999, .notional = 0.07, .basket = {8.0, 10.0}, .priced_as = kGenericBond},
     }}},
    {.code = 22, .name = "LIFFE medium gilt, exchange closed form",
     .routine = factor_gilt_closed_form, .decimals = 7,
     .terms = {{
         {.notional = 0.09, .basket = {7.0, 10.0}},
         {.from = kMar1998, .notional = 0.07, .basket = {4.0, 7.0}},
     }}},
    {.code = 25, .name = "Belfox long Belgian government bond", .routine = factor_belgium,
     .decimals = 4,
     .terms = {{{.notional = 0.09, .basket = {7.0, 10.0}, .priced_as = kBelgianGovernmentBond}}}},
    {.code = 26, .name = "Belfox medium Belgian government bond", .routine = factor_belgium,
     .decimals = 4,
     .terms = {{{.notional = 0.05, .basket = {3.5, 5.5}, .priced_as = kBelgianGovernmentBond}}}},
    {.code = 31, .name = "MATIF 30-year", .routine = factor_matif, .decimals = 6,
     .terms = {{{.notional = 0.055, .basket = {25.0, 35.0}, .priced_as = kOat}}}},
    {.code = 32, .name = "MATIF 5-year", .routine = factor_matif, .decimals = 6,
     .terms = {{{.notional = 0.045, .basket = {3.5, 5.5}, .priced_as = kOat}}}},
    {.code = 33, .name = "MATIF Euro notional with the 6-10 year basket kept",
     .routine = factor_matif, .decimals = 6,
     .terms = {{
         {.notional = 0.055, .basket = {8.5, 10.5}, .second_basket = {6.0, 10.0},
          .priced_as = kOat},
     }}},
    {.code = 34, .name = "LIFFE long gilt", .routine = factor_liffe_gilt_priced, .decimals = 6,
     .terms = {{{.notional = 0.07, .basket = {8.75, 13.0}, .priced_as = kGilt}}}},
    {.code = 35, .name = "LIFFE medium gilt", .routine = factor_liffe_gilt_priced, .decimals = 6,
     .terms = {{{.notional = 0.07, .basket = {4.0, 7.0}, .priced_as = kGilt}}}},
    {.code = 36, .name = "MATIF 2-year", .routine = factor_matif, .decimals = 6,
     .terms = {{{.notional = 0.035, .basket = {1.5, 2.5}, .priced_as = kOat}}}},
    {.code = 37, .name = "MATIF Euro notional", .routine = factor_matif, .decimals = 6,
     .terms = {{{.notional = 0.055, .basket = {8.5, 10.5}, .priced_as = kOat}}}},
    {.code = 40, .name = "7 % contract delivered on the 7th, 8 to 10 years",
     .routine = factor_seventh_day, .decimals = 6, .floor = kPositive,
     .terms = {{{.notional = 0.07, .basket = {8.0, 10.0}}}}},
    {.code = 41, .name = "OM Stockholm 2-year government bond", .routine = factor_sweden,
     .decimals = 6, .floor = kPositive,
     .terms = {{{.notional = 0.06, .basket = {1.5, 3.5}}}}},
    {.code = 42, .name = "OM Stockholm 10-year government bond", .routine = factor_sweden,
     .decimals = 6, .floor = kPositive,
     .terms = {{{.notional = 0.06, .basket = {8.0, 12.0}}}}},
    // The long BTP's basket moved with the delivery year, its pricing with
// the delivery day (factor_btp).
    {.code = 45, .name = "MIF long BTP", .routine = factor_btp, .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {8.0, 10.0}},
         {.from = kJan1999, .notional = 0.06, .basket = {8.5, 10.5}},
         {.from = kMar1999, .notional = 0.06, .basket = {8.5, 10.5}, .priced_as = kGenericBond},
     }}},
    {.code = 46, .name = "MIF medium BTP", .routine = factor_btp, .decimals = 6,
     .terms = {{
         {.notional = 0.06, .basket = {3.5, 5.0}},
         {.from = kMar1999, .notional = 0.06, .basket = {3.5, 5.0}, .priced_as = kGenericBond},
     }}},
    {.code = 47, .name = "MIF 30-year BTP", .routine = factor_btp, .decimals = 6,
     .terms = {{
         {.notional = 0.05, .basket = {15.0, 999.0}},
         {.from = kMar1999, .notional = 0.05, .basket = {15.0, 999.0}, .priced_as = kGenericBond},
     }}},
    {.code = 50, .name = "6 % annual-coupon contract, 8 to 13 years",
     .routine = factor_third_wednesday_annual, .decimals = 6, .floor = kPositive,
     .terms = {{{.notional = 0.06, .basket = {8.0, 13.0}}}}},
    {.code = 51, .name = "6 % annual-coupon contract, 3 to 8 years",
     .routine = factor_third_wednesday_annual, .decimals = 6, .floor = kPositive,
     .terms = {{{.notional = 0.06, .basket = {3.0, 8.0}}}}},
    {.code = 55, .name = "Porto Portuguese government bond", .routine = factor_portugal,
     .decimals = 7,
     .terms = {{
         {.notional = 0.065, .basket = {6.5, 99.0}, .priced_as = kPortugueseFuturesOld},
         {.from = kMar1999, .notional = 0.065, .basket = {6.5, 11.0},
          .priced_as = kPortugueseFutures},
         {.from = kSep1999, .notional = 0.045, .basket = {7.5, 10.5},
          .priced_as = kPortugueseFutures},
     }}},
    {.code = 60, .name = "CBOT 10-year Treasury note", .routine = factor_treasury_quarters,
     .decimals = 4, .floor = kPositive,
     .terms = {{
         {.notional = 0.08, .basket = {78.0, 123.0}},
         {.from = kMar2000, .notional = 0.06, .basket = {78.0, 123.0}},
     }}},
    {.code = 61, .name = "CBOT 5-year Treasury note", .routine = factor_treasury_months,
     .decimals = 4, .floor = kPositive,
     .terms = {{
         {.notional = 0.08, .basket = {48.0, 63.0}},
         {.from = kMar2000, .notional = 0.06, .basket = {48.0, 63.0}},
     }}},
    {.code = 70, .name = "10-year Treasury note, 6.5 % notional",
     .routine = factor_treasury_quarters, .decimals = 4, .floor = kPositive,
     .terms = {{{.notional = 0.065, .basket = {78.0, 123.0}}}}},
    {.code = 71, .name = "5-year Treasury note, 6.5 % notional", .routine = factor_treasury_months,
     .decimals = 4, .floor = kPositive,
     .terms = {{{.notional = 0.065, .basket = {48.0, 63.0}}}}},
};

}  // namespace

const Contract* find_contract(int32_t code) noexcept {
  for (const Contract& contract : kContracts) {
    if (contract.code == code) return &contract;
  }
  return nullptr;
}

}  // namespace kbond::futures
