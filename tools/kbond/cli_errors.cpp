#include "cli_errors.h"

#include "k_bond.h"

namespace kbond::cli {
namespace {

struct ErrorText {
  int32_t code;
  const char* constant;
  const char* sentence;
};

constexpr ErrorText kErrors[] = {
    {KVL_OK, "KVL_OK", "success"},
    {KVL_ERR_INVALID, "KVL_ERR_INVALID",
     "the bond description is invalid (check the dates, coupon, frequency and type: settlement "
     "must not be after maturity, the dated date must come before the first coupon) or the "
     "solver found no answer"},
    {KVL_ERR_NO_CONVERGENCE, "KVL_ERR_NO_CONVERGENCE", "the yield search did not converge"},
    {KVL_ERR_MISSING_ARRAY, "KVL_ERR_MISSING_ARRAY", "a required list of values is missing"},
    {KVL_ERR_COUNT, "KVL_ERR_COUNT", "a count is below its minimum"},
    {KVL_ERR_TOO_MANY, "KVL_ERR_TOO_MANY", "a count is above its maximum"},
    {KVL_ERR_BAD_DATE, "KVL_ERR_BAD_DATE", "a date is invalid"},
    {KVL_ERR_BAD_MONTH, "KVL_ERR_BAD_MONTH", "a month lies outside 1 to 12"},
    {KVL_ERR_BAD_YEAR, "KVL_ERR_BAD_YEAR", "a year lies outside the supported range"},
    {KVL_ERR_DATE_ORDER, "KVL_ERR_DATE_ORDER",
     "the dates are in the wrong order (settlement must come before maturity)"},
    {KVL_ERR_CALENDAR, "KVL_ERR_CALENDAR", "the holiday calendar is unknown"},
    {KVL_ERR_BAD_RATE, "KVL_ERR_BAD_RATE", "a rate is negative or invalid"},
    {KVL_ERR_FRN_DAYCOUNT, "KVL_ERR_FRN_DAYCOUNT", "the FRN day-count code must be 0 to 5"},
    {KVL_ERR_FRN_FREQUENCY, "KVL_ERR_FRN_FREQUENCY",
     "the FRN frequency must be 1, 2, 3, 4, 6, 12, 26 or 52"},
    {KVL_ERR_FRN_BDRULE, "KVL_ERR_FRN_BDRULE", "the FRN business-day rule must be 0 to 3"},
    {KVL_ERR_FRN_EOM, "KVL_ERR_FRN_EOM", "the FRN end-of-month flag must be 0 or 1"},
    {KVL_ERR_FRN_HOLIDAY_OPT, "KVL_ERR_FRN_HOLIDAY_OPT", "the FRN holiday option must be 0, 1 or 2"},
    {KVL_ERR_FRN_OPTION, "KVL_ERR_FRN_OPTION", "the FRN option flag must be 0 or 1"},
    {KVL_ERR_FRN_YEAR_LENGTH, "KVL_ERR_FRN_YEAR_LENGTH", "the FRN year length is negative"},
    {KVL_ERR_BAD_SCALE, "KVL_ERR_BAD_SCALE", "the scale or tick size must be a positive number"},
    {KVL_ERR_BAD_PRICE, "KVL_ERR_BAD_PRICE",
     "the price must be positive (and above minus the accrued interest)"},
    {KVL_ERR_BAD_EOM_FLAG, "KVL_ERR_BAD_EOM_FLAG", "the end-of-month flag must be 0 or 1"},
    {KVL_ERR_DENOMINATOR, "KVL_ERR_DENOMINATOR", "the discount-margin denominator vanishes"},
    {KVL_ERR_ZERO_DIVISOR, "KVL_ERR_ZERO_DIVISOR",
     "the pricing denominator vanishes (the yield is too close to -100 %)"},
    {KVL_ERR_OUT_OF_SET, "KVL_ERR_OUT_OF_SET",
     "a value is outside its allowed set (unknown bond type, or no time left to maturity)"},
    {KVL_ERR_FUT_CONTRACT, "KVL_ERR_FUT_CONTRACT", "the futures contract code is unknown"},
    {KVL_ERR_FRN_HANDLE, "KVL_ERR_FRN_HANDLE", "the FRN type handle is not registered"},
    {KVL_ERR_NOT_DELIVERABLE, "KVL_ERR_NOT_DELIVERABLE",
     "the bond is not deliverable into the contract"},
    {KVL_ERR_NOTIONAL, "KVL_ERR_NOTIONAL", "the notional coupon override is out of range"},
    {KVL_ERR_NO_MEMORY, "KVL_ERR_NO_MEMORY", "memory was not available"},
    {KVL_ERR_LOCK, "KVL_ERR_LOCK", "the custom bond type lock could not be obtained"},
    {KVL_ERR_FRN_TYPE_LOST, "KVL_ERR_FRN_TYPE_LOST", "a temporary FRN type could not be looked up"},
};

const ErrorText* find(int32_t code) {
  for (const auto& e : kErrors)
    if (e.code == code) return &e;
  return nullptr;
}

}  // namespace

const char* error_sentence(int32_t code) {
  const ErrorText* e = find(code);
  return e ? e->sentence : "the library reported an error this program does not know";
}

const char* error_constant(int32_t code) {
  const ErrorText* e = find(code);
  return e ? e->constant : "unknown";
}

}  // namespace kbond::cli
