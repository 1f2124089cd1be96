// The catalogue's data: every market the library knows, one row per base
// code. Adding a market is adding a row here.
#include "engine/catalogue_table.h"

#include <array>
#include <cstddef>

#include "dates/day_count.h"

namespace kbond::engine {
namespace {

using DS = DateSwitch;
using SF = SimpleFinal;
using XR = ExdivRule;
using MM = MoneyMarketBasis;

using namespace dates;  // the day-count names

// A type without a default day count: the caller must give one.
constexpr int8_t kNoDefault = -1;

constexpr DatedCode fixed(int8_t code) { return {code, code, DS::kNone}; }
constexpr DatedCode same_as_accrual() { return {kSameAsAccrual, kSameAsAccrual, DS::kNone}; }
// EMU markets moved to actual/actual (code 0) on 1 January 1999; most judge
// the switch by the start of the coupon period, Belgium by settlement.
constexpr DatedCode emu_by_period(int8_t before) {
  return {kActAct, before, DS::kPeriodStartBefore1Jan1999};
}
constexpr DatedCode emu_by_settlement(int8_t before) {
  return {kActAct, before, DS::kSettlementBefore1Jan1999};
}
// Gilts accrued actual/365 until settlement on 1 November 1998.
constexpr DatedCode gilt_switch() { return {kActAct, kAct365, DS::kSettlementBefore1Nov1998}; }

constexpr CatalogueRow row(int16_t code, int16_t eom_code, const char* name, int8_t freq,
                           DatedCode accrual, SF simple, XR xrule = XR::kNone, int8_t xparam = 0,
                           MM mm = MM::k360, DatedCode xbasis = same_as_accrual(),
                           int8_t yield_method = 0, int8_t annual = 0) {
  return CatalogueRow{code, eom_code, name, freq, accrual, xbasis, simple,
                      yield_method, annual, xrule, xparam, mm};
}

constexpr const char kPortugueseFutures[] = "Portuguese Govmt Bond w/ futures contract conventions";
constexpr const char kGeneric[] = "Generic Bond";

constexpr CatalogueRow kRows[] = {
    row(0, 0, "U.S. Treasury Bond", 2, fixed(kActAct), SF::kAlways),
    row(1, 11, "U.S. Government Agency Bond", 2, fixed(k30_360), SF::kAlways),
    row(2, 12, "Municipal Bond", 2, fixed(k30_360), SF::kAlways),
    row(3, 13, "Corporate Bond", 2, fixed(k30_360), SF::kAlways),
    row(16, 17, "Municipal Bond (ignore odd coupons for price/yield)", 2, fixed(k30_360),
        SF::kAlways),
    row(20, 21, "Canadian Gvmt. Bond, (US Gov equiv yld)", 2, fixed(kActAct), SF::kAlways,
        XR::kNone, 0, MM::k365, fixed(kAct365)),
    row(22, -1, "Can. Gvmt. Bond, Bank of Canada conventions", 2, fixed(kActAct), SF::kAlways,
        XR::kNone, 0, MM::k365),
    row(40, 41, "Gilt", 2, gilt_switch(), SF::kWhenAsked, XR::kBusinessDaysPlusOne, 7, MM::k365),
    row(42, 43, "Gilt; pre November 1998 conventions", 2, fixed(kAct365), SF::kWhenAsked,
        XR::kBusinessDaysPlusOne, 7, MM::k365),
    row(60, 61, "German Government Bond", 1, emu_by_period(k30E_360), SF::kAlways),
    row(62, 63, "German Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kAlways),
    row(80, 82, "French Government Bond (BTAN)", 1, fixed(kActAct), SF::kNever),
    row(81, 83, "French Government Bond (OAT)", 1, fixed(kActAct), SF::kNever),
    row(100, 101, "Swiss Government Bond", 1, fixed(k30EPlus360), SF::kNever),
    row(120, 121, "Belgian Government Bond", 1, emu_by_settlement(k30E_360), SF::kAlways, XR::kNone,
        0, MM::k365Before1999),
    row(122, 123, "Belgian Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kAlways,
        XR::kNone, 0, MM::k365Before1999),
    row(140, 141, "Austrian Government Bond", 1, emu_by_period(k30E_360), SF::kNever),
    row(142, 143, "Austrian Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kNever,
        XR::kAustrian),
    row(160, 161, "Dutch Government Bond", 1, emu_by_period(k30E_360), SF::kNever),
    row(162, 163, "Dutch Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kNever),
    row(170, 171, "Slovak Government Bond", 1, fixed(k30E_360), SF::kNever, XR::kCalendarDays, 1),
    row(180, 181, "Swedish Government Bond", 1, fixed(k30E_360), SF::kAlways, XR::kBusinessDays, 5),
    row(190, 191, "Korean Treasury Bond", 1, fixed(kActAct), SF::kAlways, XR::kCalendarDays, 3,
        MM::k365),
    row(200, 201, "Japanese Government Bond", 2, fixed(kAct365Japanese), SF::kNever, XR::kNone, 0,
        MM::k365, fixed(kAct365), 1),
    row(202, 203, "U.S. Equivalent Japanese Bond", 2, fixed(kActAct), SF::kAlways, XR::kNone, 0,
        MM::k360, fixed(kAct365)),
    row(210, 211, "Hong Kong Exchange Funds Note", 2, fixed(kAct365), SF::kAlways, XR::kNone, 0,
        MM::k365),
    row(220, 221, "Australian Government Bond", 2, fixed(kActAct), SF::kAlways, XR::kCalendarDays,
        7, MM::k365),
    row(240, 241, "Eurobond", 1, emu_by_period(k30E_360), SF::kAlways),
    row(242, 243, "Eurobond (yields quoted annually)", 2, emu_by_period(k30E_360), SF::kAlways,
        XR::kNone, 0, MM::k360, same_as_accrual(), 0, 1),
    row(244, 245, "Eurobond; pre EMU conventions", 1, fixed(k30E_360), SF::kAlways),
    row(246, 247, "Eurobond; pre EMU conventions (yields quoted annually)", 2, fixed(k30E_360),
        SF::kAlways, XR::kNone, 0, MM::k360, same_as_accrual(), 0, 1),
    row(250, 251, "Indian Government Bond", 2, fixed(k30_360), SF::kAlways,
        XR::kBusinessDaysSaturdayMinusOne, 7, MM::k365),
    row(260, 262, "Italian Government BTP Bond", 2, emu_by_period(kAct365), SF::kAlways, XR::kNone,
        0, MM::k365Before1999, emu_by_period(k30E_360Feb), 0, 1),
    row(261, 263, "Italian Government CTE Bond", 1, emu_by_period(kAct365), SF::kAlways, XR::kNone,
        0, MM::k365Before1999, emu_by_period(k30E_360Feb)),
    row(264, 265, "Italian Government BTP Bond (pre 1997 conventions)", 2, fixed(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k365Before1999, fixed(k30E_360Feb), 0, 1),
    row(266, 267, "Italian Government CTE Bond (pre 1997 conventions)", 1, fixed(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k365Before1999, fixed(k30E_360Feb)),
    row(268, 269, "Italian Government BTP Bond; 1997-98 conventions", 2, fixed(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k365Before1999, fixed(k30E_360Feb), 0, 1),
    row(270, 271, "Italian Government CTE Bond; 1997-98 conventions", 1, fixed(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k365Before1999, fixed(k30E_360Feb)),
    row(280, 282, "Spanish Government Bond (default annual cpn.)", 1, emu_by_period(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k360, fixed(kActAct)),
    row(281, 283, "Spanish Gvmt. Bond (default semiannual cpn.)", 2, emu_by_period(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k360, fixed(kActAct)),
    row(284, 285, "Spanish Gvmt. Bond; pre EMU conventions (ann. cpn.)", 1, fixed(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k360, fixed(kActAct)),
    row(286, 287, "Spanish Gvmt. Bond; pre EMU conventions (semiann. cpn.)", 2, fixed(kAct365),
        SF::kAlways, XR::kNone, 0, MM::k360, fixed(kActAct)),
    row(290, 291, "Portuguese Government Bond", 1, emu_by_period(k30E_360), SF::kNever, XR::kNone,
        0, MM::k365Before1999),
    row(292, 293, "Portuguese Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kNever,
        XR::kNone, 0, MM::k365Before1999),
    row(300, 301, "Danish Government Bond", 1, fixed(kActAct), SF::kWhenAsked),
    row(302, 303, "Danish Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kWhenAsked,
        XR::kMonthBack),
    row(310, 311, "Icelandic Government Bond", 1, fixed(k30E_360), SF::kNever),
    row(320, 321, "Finnish Government Bond", 1, emu_by_period(k30E_360), SF::kAlways, XR::kNone, 0,
        MM::k365Before1999),
    row(322, 323, "Finnish Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kAlways,
        XR::kNone, 0, MM::k365Before1999),
    row(330, 331, "Norwegian Government Bond", 1, fixed(kAct365), SF::kAlways, XR::kCalendarDays,
        14),
    row(340, 341, "Irish Government Bond", 1, fixed(kActAct), SF::kNever, XR::kNone, 0,
        MM::k365Before1999),
    row(342, 343, "Irish Government Bond; pre EMU conventions", 1, fixed(k30E_360), SF::kNever,
        XR::kIrish, 0, MM::k365Before1999),
    row(350, 351, "New Zealand Government Bond", 2, fixed(kActAct), SF::kAlways, XR::kCalendarDays,
        9, MM::k365),
    row(360, 361, "Czech Government Bond", 1, fixed(k30E_360), SF::kNever, XR::kMonthBack),
    row(370, 371, "Colombian Government Bond", 1, fixed(kAct365), SF::kNever, XR::kNone, 0,
        MM::k365),
    row(380, 381, "South African Government Bond", 2, fixed(kActAct), SF::kAlways,
        XR::kMonthBackEom, 0, MM::k365, fixed(kAct365)),
    row(390, 391, "Lithuanian Government Bond", 2, fixed(kActAct), SF::kAlways, XR::kNone, 0,
        MM::k365),
    row(400, 400, "U.S. Inflation-adjusted Bond", 2, fixed(kActAct), SF::kAlways),
    row(500, 501, kGeneric, 2, fixed(kActAct), SF::kAlways),
    row(502, 503, "Generic Bond; yields quoted annually", 2, fixed(kActAct), SF::kAlways, XR::kNone,
        0, MM::k360, same_as_accrual(), 0, 1),
    row(510, 511, kGeneric, 2, fixed(kAct365), SF::kAlways),
    row(520, 521, kGeneric, 2, fixed(kAct360), SF::kAlways),
    row(530, 531, kGeneric, 2, fixed(k30_360), SF::kAlways),
    row(540, 541, kGeneric, 2, fixed(k30E_360), SF::kAlways),
    row(700, -1, kPortugueseFutures, 1, fixed(kAct365), SF::kNever, XR::kNone, 0, MM::k360,
        fixed(k30E_360)),
    row(701, -1, kPortugueseFutures, 1, fixed(kActAct), SF::kNever, XR::kNone, 0, MM::k360,
        emu_by_period(k30E_360)),
    row(810, 811, "Yankee Bond", -1, fixed(kNoDefault), SF::kUndefined),
    row(820, 821, "Braess pricing", 1, fixed(k30E_360), SF::kAlways, XR::kNone, 0, MM::k360,
        same_as_accrual(), 2),
    row(830, 831, "Moos-Muller pricing", 1, fixed(k30E_360), SF::kAlways, XR::kNone, 0, MM::k360,
        same_as_accrual(), 3),
};

constexpr int32_t kRowCount = static_cast<int32_t>(sizeof kRows / sizeof kRows[0]);
constexpr int32_t kCodeLimit = 832;  // codes 0..831

// Code -> row index (-1 unknown), built at compile time so that a lookup
// is one load.
constexpr std::array<int8_t, kCodeLimit> build_index() {
  std::array<int8_t, kCodeLimit> index{};
  for (auto& entry : index) entry = -1;
  for (int32_t i = 0; i < kRowCount; ++i) {
    index[kRows[i].code] = static_cast<int8_t>(i);
    if (kRows[i].eom_code >= 0) index[kRows[i].eom_code] = static_cast<int8_t>(i);
  }
  return index;
}

constexpr bool rows_ascending() {
  for (int32_t i = 1; i < kRowCount; ++i)
    if (kRows[i].code <= kRows[i - 1].code) return false;
  return true;
}

static_assert(kRowCount < 128, "row index must fit int8_t");
static_assert(rows_ascending(), "catalogue rows must be sorted by base code");

constexpr std::array<int8_t, kCodeLimit> kIndex = build_index();

}  // namespace

const CatalogueRow* catalogue_row(int32_t code) noexcept {
  if (code < 0 || code >= kCodeLimit) return nullptr;
  const int8_t i = kIndex[static_cast<std::size_t>(code)];
  return i < 0 ? nullptr : &kRows[i];
}

const CatalogueRow* catalogue_rows(int32_t* count) noexcept {
  if (count) *count = kRowCount;
  return kRows;
}

}  // namespace kbond::engine
