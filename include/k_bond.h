/*
** k_bond: fixed-income analytics behind a plain C interface.
**
** This header is the whole public interface of the library. Every function
** is self-contained: the caller passes the full description of a bond (coupon
** steps, dates, settlement, a bond type code that selects a market's
** conventions, optional overrides as pointers that may be NULL) and the market
** input, and receives a double (or an int32) result plus an error code.
**
** Units used throughout:
**   dates       int32 date serials, 1 = 1 January 1900 (proleptic Gregorian)
**   yields      decimal fractions per year (0.0525 = 5.25 %)
**   coupons     decimal fractions per year
**   prices      per 100 of face (clean unless stated otherwise)
**   factors     plain numbers near 1 (conversion factors)
**
** Errors: the last argument of every analytic function is a pointer to int32
** that receives the error code (0 = success). It may be NULL. On failure the
** function returns its documented failure value (-1.0 in general, -999.0 when
** an iterative solver fails, -1 for functions that return dates).
**
** Threads: call KVLbond_initMT() once before calling the library from several
** threads. Afterwards any function may be called from any thread.
*/
#ifndef K_BOND_H
#define K_BOND_H

#include <stdint.h>

/* Calling convention: the platform's system convention on 32-bit Windows
** (callee removes its arguments, as spreadsheet macros expect), nothing
** elsewhere. */
#if defined(_WIN32) && !defined(_WIN64)
#  define KVL_API __stdcall
#else
#  define KVL_API
#endif

/* Symbol visibility: only the KVL... functions leave the shared library. */
#if defined(_WIN32)
#  if defined(KBOND_BUILDING_LIBRARY)
#    define KVL_EXPORT __declspec(dllexport)
#  else
#    define KVL_EXPORT
#  endif
#else
#  define KVL_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ======================================================================== */
/* Error codes                                                              */
/* ======================================================================== */
#define KVL_OK                    0   /* Success */
#define KVL_ERR_INVALID           1   /* Invalid bond description, or solver failure */
#define KVL_ERR_NO_CONVERGENCE   21   /* Brady stripped-yield search did not converge */
#define KVL_ERR_MISSING_ARRAY    50   /* A required array pointer is NULL */
#define KVL_ERR_COUNT            60   /* A count is below its minimum */
#define KVL_ERR_TOO_MANY         70   /* A count is above its maximum */
#define KVL_ERR_BAD_DATE        150   /* A date is invalid or cannot be split */
#define KVL_ERR_BAD_MONTH       152   /* Month outside 1..12 (index interpolation) */
#define KVL_ERR_BAD_YEAR        153   /* Year outside the supported range (index interpolation) */
#define KVL_ERR_DATE_ORDER      160   /* Dates misordered or outside their allowed range */
#define KVL_ERR_CALENDAR        170   /* Unknown holiday calendar code */
#define KVL_ERR_BAD_RATE        250   /* A rate is negative or invalid */
#define KVL_ERR_FRN_DAYCOUNT    300   /* FRN day-count code not 0..5 */
#define KVL_ERR_FRN_FREQUENCY   301   /* FRN frequency not 1,2,3,4,6,12,26,52 */
#define KVL_ERR_FRN_BDRULE      302   /* FRN business-day rule not 0..3 */
#define KVL_ERR_FRN_EOM         303   /* FRN end-of-month flag not 0 or 1 */
#define KVL_ERR_FRN_HOLIDAY_OPT 304   /* FRN holiday option code not 0, 1 or 2 */
#define KVL_ERR_FRN_OPTION      305   /* FRN option flag not 0 or 1 */
#define KVL_ERR_FRN_YEAR_LENGTH 306   /* FRN year length negative */
#define KVL_ERR_BAD_SCALE       310   /* Scale or tick size zero, negative or NaN */
#define KVL_ERR_BAD_PRICE       350   /* Price zero or negative */
#define KVL_ERR_BAD_EOM_FLAG    360   /* End-of-month flag not 0 or 1 (schedule stepping) */
#define KVL_ERR_DENOMINATOR     400   /* Vanishing denominator in the discount margin */
#define KVL_ERR_ZERO_DIVISOR    401   /* Vanishing pricing denominator */
#define KVL_ERR_OUT_OF_SET      460   /* Value outside its allowed set, or unknown bond type */
#define KVL_ERR_FUT_CONTRACT    900   /* Unknown futures contract code or rule */
#define KVL_ERR_FRN_HANDLE      901   /* FRN type handle not registered */
#define KVL_ERR_NOT_DELIVERABLE 910   /* Bond outside the contract's deliverable range */
#define KVL_ERR_NOTIONAL        920   /* Notional coupon override out of range */
#define KVL_ERR_NO_MEMORY       (-50) /* Memory not available */
#define KVL_ERR_LOCK            (-60) /* Custom-type lock not obtained */
#define KVL_ERR_FRN_TYPE_LOST  (-100) /* Temporary FRN type could not be looked up */

/* ======================================================================== */
/* Catalogue and library services                                           */
/* ======================================================================== */

/* ---- end of catalogue and library services ---- */


/* ======================================================================== */
/* Straight bonds: price and accrued interest                               */
/* ======================================================================== */

/* ---- end of straight bonds: price and accrued interest ---- */


/* ======================================================================== */
/* Straight bonds: yields, risk measures, schedules and cash flows          */
/* ======================================================================== */

/* ---- end of straight bonds: yields, risk, schedules ---- */


/* ======================================================================== */
/* Bond futures: conversion factors, carry, forward, implied repo           */
/* ======================================================================== */

/* ---- end of bond futures ---- */


/* ======================================================================== */
/* Floating-rate notes                                                      */
/* ======================================================================== */

/*
** A floating-rate note is described by an FRN type: reset frequency, day
** count, business-day rule, end-of-month rule, holiday options, the
** pay-on-business-day flag, the year length and extra accrual days. The plain
** functions (KVLfrn...) use the default type: 2 resets a year, actual/360
** with a 360-day year, dates not adjusted, no end-of-month rule. The typed
** functions (KVLtfrn...) take, first, the handle of a type registered with
** KVLfrntype (0 = the defaults). Each call's own optional frequency, day-count
** and adjustment arguments override the type for that call only.
**
** FRN day-count codes: 0 actual/360, 1 actual/365, 2 actual/365.25 (accrual
** year 366 in leap years), 3 30/360 (U.S.), 4 30E/360, 5 actual over the
** period length x frequency (year length 365.25).
**
** Frequencies: 1, 2, 3, 4, 6, 12 (months of 12/frequency) or 26, 52 (14 or
** 7 days).
**
** Placement of the current period: the next coupon date is the first of
** the caller's coupon (reset) dates after settlement; else a known reset date
** (the last listed one or previous_coupon) rolled forward by whole periods
** past settlement; else stepped back from maturity. The previous coupon date
** is previous_coupon, the listed date before the next one, or one period
** before the next coupon date.
**
** Rate schedules (analytics): rates[i] (decimal, >= 0) applies from
** rate_dates[i] (ascending serials) until the next rate date; a period's
** coupon is the day-weighted average of the rates in force over it.
**
** Common error codes: 50 missing array, 60 count < 1 (rate count) or negative
** count, 150 bad date (settlement < 1, date out of range, first listed date
** negative), 160 misordered dates (lists not strictly increasing, last coupon
** date after maturity, previous coupon date not before settlement or not before
** the next coupon date, maturity not after settlement), 250 negative or
** invalid rate or tax rate, 300..306 invalid type field (day count,
** frequency, business-day rule, end-of-month flag, holiday options, option
** flag, year length), 350 price or redemption not a positive number, 460
** negative holding period, 901 unknown type handle, -50 memory not
** available, -100 temporary type lost. Failure value -1.0 unless stated.
*/

/* Registers an FRN type derived from `base` (a registered handle, or 0 for
** the defaults); every NULL pointer keeps the base's value.
**   frequency          1, 2, 3, 4, 6, 12, 26 or 52 (default 2)          301
**   day_count          FRN day-count code 0..5 (default 0)             300
**   business_day_rule  0 following, 1 preceding, 2 modified following,
**                      3 unadjusted (default 3)                         302
**   end_of_month       0 or 1 (default 0)                               303
**   holiday_options    0; 1 Saturday is a business day; 2 Sunday is     304
**   option_flag        1 = coupons and redemption paid and discounted
**                      on business days (default 0)                     305
**   year_length        days per year, >= 0; 0 = from the day count     306
**   extra_accrual_days days added to accrued interest (default 0)
**   reserved1..6       ignored
** Fields are validated in this order; the first invalid one ends the call.
** Returns the new handle (never 0), or 0 on failure: 901 unknown base, the
** field's code, -50 memory not available. Release with KVLfreefrntype. */
KVL_EXPORT int32_t KVL_API KVLfrntype(int32_t base, const int32_t* frequency, const int32_t* day_count, const int32_t* business_day_rule, const int32_t* end_of_month, const int32_t* holiday_options, const int32_t* option_flag, const double* year_length, const int32_t* extra_accrual_days, int32_t reserved1, int32_t reserved2, int32_t reserved3, int32_t reserved4, int32_t reserved5, int32_t reserved6, int32_t* error);

/* Releases a type registered with KVLfrntype. An unknown handle is ignored.
** Always returns 0. */
KVL_EXPORT int32_t KVL_API KVLfreefrntype(int32_t handle);

/* Simple margin (decimal per year): the quoted margin plus the discount to
** par spread over the life, with the current period's fixed coupon:
**   quoted_margin + [t1 (current_coupon - index_rate - quoted_margin)
**                    + (1 - price/100)] / T,
** t1 the stub to the next coupon in accrual years, T the life in years of
** the type's year length.
**   maturity, settlement   date serials (settlement >= 1)
**   current_coupon         rate fixed for the current period (decimal)
**   price                  clean price per 100 (> 0, else 350)
**   index_rate             assumed index rate for the rest of the life
**   quoted_margin          contractual margin over the index
**   previous_coupon        optional previous coupon date
**   next_coupon            optional next coupon (reset) date; one on or
**                          before settlement is rolled forward
**   day_count, frequency, end_of_month   optional overrides of the type
** Non-numeric rates: 250. 400 when the life to maturity has no length.
** Returns -1.0 on failure. */
KVL_EXPORT double KVL_API KVLfrnsm(int32_t maturity, int32_t settlement, double current_coupon, double price, double index_rate, double quoted_margin, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count, const int32_t* frequency, const int32_t* end_of_month, int32_t* error);

/* KVLfrnsm for the FRN type `type` (0 = defaults). */
KVL_EXPORT double KVL_API KVLtfrnsm(int32_t type, int32_t maturity, int32_t settlement, double current_coupon, double price, double index_rate, double quoted_margin, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count, const int32_t* frequency, const int32_t* end_of_month, int32_t* error);

/* Discount margin (decimal per year): the margin d over the index at which
** the redemption and the projected coupons (index_rate + quoted_margin),
** compounded at the type's frequency to the next coupon date, and the
** current coupon, discounted over the stub at stub_rate + d with simple
** interest, give the dirty price. Found by a fixed 48-step search from
** quoted_margin (step 0.1, halving after the first reversal).
**   stub_rate   money-market rate from settlement to the next coupon date
**   other arguments as KVLfrnsm.
** Error 400 when a discount denominator vanishes: the margin reached so far
** is returned (not -1.0). Other failures return -1.0. */
KVL_EXPORT double KVL_API KVLfrndm(int32_t maturity, int32_t settlement, double current_coupon, double price, double stub_rate, double index_rate, double quoted_margin, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count, const int32_t* frequency, const int32_t* end_of_month, int32_t* error);

/* KVLfrndm for the FRN type `type` (0 = defaults). */
KVL_EXPORT double KVL_API KVLtfrndm(int32_t type, int32_t maturity, int32_t settlement, double current_coupon, double price, double stub_rate, double index_rate, double quoted_margin, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count, const int32_t* frequency, const int32_t* end_of_month, int32_t* error);

/* Common arguments of the FRN analytics below, in this order:
**   rates, rate_dates, rate_count   the rate schedule (see above)
**   maturity, settlement            date serials
**   [yield or price]                where the function takes one
**   previous_coupon                 optional previous coupon date
**   coupon_dates, coupon_count      optional known coupon (reset) dates,
**                                   ascending, none after maturity
**   day_count, frequency            optional overrides of the type
**   redemption                      optional, per 100 (default 100)
**   income_tax, gain_tax            optional tax rates (default 0)
**   holding                         optional holding period: months, or
**                                   days when above 24 (default 12); a gain
**                                   realised within it is taxed as income
**   pay_on_business_day             optional: 1 = coupons and redemption
**                                   paid and discounted on the following
**                                   business day
**   adjustment_code                 optional: 2 x business-day rule +
**                                   end-of-month flag
**   holiday_options                 optional: 0, 1 (Saturday works),
**                                   2 (Sunday works)
**   holidays, holiday_count         ascending holiday serials (may be 0)
** Yields are decimal per year, compounded at the type's frequency; in the
** last coupon period simple interest to maturity applies. */

/* Accrued interest per 100 (the type's extra accrual days included). */
KVL_EXPORT double KVL_API KVLfrnai(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrnai(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Coupon of the current period per 100; `next_coupon` (optional) is the
** single known reset date. */
KVL_EXPORT double KVL_API KVLfrncamt(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count, const int32_t* frequency, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrncamt(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* day_count, const int32_t* frequency, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Clean price per 100 from `yield`. A yield that is not a number: 250;
** 1 when the price has no value at that yield (1 + yield/frequency <= 0, or
** a vanishing tax denominator). */
KVL_EXPORT double KVL_API KVLfrnpr(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrnpr(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Yield (decimal) from the clean `price` per 100 (> 0, else 350): Newton's
** method from the latest rate of the schedule, then a bracketing search on
** [0, 25]. When both fail: -999.0 with error 1. */
KVL_EXPORT double KVL_API KVLfrnyld(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double price, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrnyld(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double price, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Modified duration in years at `yield`: -(dP/dy) / dirty price. When
** `macaulay` points to a nonzero value, Macaulay duration: modified x
** (1 + yield/f), f the value at `frequency`, or 2 when that pointer is NULL. */
KVL_EXPORT double KVL_API KVLfrndur(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const int32_t* macaulay, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrndur(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const int32_t* macaulay, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Convexity at `yield`: (d2P/dy2) / dirty price. */
KVL_EXPORT double KVL_API KVLfrnconv(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrnconv(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Value of a basis point: -(dP/dy per unit) / divisor, divisor optional
** (default 100), i.e. the price change per 100 for one basis point. A
** divisor <= 0 or not a number: error 1, -999.0. */
KVL_EXPORT double KVL_API KVLfrnvalbp(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const double* divisor, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrnvalbp(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const double* divisor, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Value of a 32nd: -(dP/dy per unit) / divisor, divisor optional (default
** 32). A divisor <= 0 or not a number: error 1, -999.0. */
KVL_EXPORT double KVL_API KVLfrnval32(const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const double* divisor, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT double KVL_API KVLtfrnval32(int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const double* divisor, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Cash-flow table per 100 of par: one row per coupon period from the
** current one to maturity. *dates_out receives the payment dates (the
** following business day when paying on business days), *amounts_out the
** after-tax coupons, the last row also the redemption less the gain tax on
** (redemption - price) when the optional `price` (per 100) is below it.
** Returns the number of rows; 0 on failure (50 for NULL output pointers,
** -50 memory not available), with nothing allocated. Release both arrays
** with KVLfrncshflw_free. */
KVL_EXPORT int32_t KVL_API KVLfrncshflw(int32_t** dates_out, double** amounts_out, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const double* price, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);
KVL_EXPORT int32_t KVL_API KVLtfrncshflw(int32_t** dates_out, double** amounts_out, int32_t type, const double* rates, const int32_t* rate_dates, int32_t rate_count, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* coupon_dates, int32_t coupon_count, const int32_t* day_count, const int32_t* frequency, const double* redemption, const double* income_tax, const double* gain_tax, const int32_t* holding, const double* price, const int32_t* pay_on_business_day, const int32_t* adjustment_code, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, int32_t* error);

/* Releases the two arrays of KVLfrncshflw / KVLtfrncshflw (NULL allowed). */
KVL_EXPORT void KVL_API KVLfrncshflw_free(int32_t* dates, double* amounts);

/* ---- end of floating-rate notes ---- */


/* ======================================================================== */
/* Perpetual bonds                                                          */
/* ======================================================================== */

/* ---- end of perpetual bonds ---- */


/* ======================================================================== */
/* Brady bonds                                                              */
/* ======================================================================== */

/* ---- end of Brady bonds ---- */


/* ======================================================================== */
/* Inflation-linked bonds                                                   */
/* ======================================================================== */

/* ---- end of inflation-linked bonds ---- */


/* ======================================================================== */
/* PIK bonds                                                                */
/* ======================================================================== */

/* ---- end of PIK bonds ---- */

#ifdef __cplusplus
}
#endif

#endif /* K_BOND_H */
