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

/*
** Bond type codes select a market's conventions. Each market has a base code
** and usually an end-of-month variant (40 "Gilt", 41 the Gilt with the
** end-of-month rule; 80 BTAN with variant 82). Codes 1000..1099 are types the
** caller defines with KVLbcustom.
*/

/*
** KVLbtype: the conventions of one bond type code.
**   type           bond type code (base, variant or custom 1000..1099)
**   frequency      receives the default coupons per year (-1: the type has
**                  none, the caller must give it); NULL allowed
**   daycount_name  receives the display name of the accrued day count
**                  ("act/act", "30/360", ..., "unknown"), as of today and
**                  with the type's own end-of-month rule; NULL allowed
**   eom            receives 1 when the code has the end-of-month rule on by
**                  default (variant codes), else 0; NULL allowed
**   name           receives the type's name ("Gilt", "Eurobond", ...,
**                  "User-customized bond"); NULL allowed
**   error          receives 0, KVL_ERR_OUT_OF_SET (460) for an unknown code,
**                  or KVL_ERR_LOCK (-60) when a custom code's lock could not
**                  be had; NULL allowed
** On error frequency and eom receive -1 and both names receive "error".
** The strings are static; never free them.
*/
KVL_EXPORT void KVL_API KVLbtype(int32_t type, int32_t* frequency, const char** daycount_name, int32_t* eom, const char** name, int32_t* error);

/*
** KVLbtable: the whole catalogue of base codes 0..540 at once, one row per
** base code in ascending order. Each argument (NULL allowed) receives a
** pointer to a library-owned array; the caller must neither free nor change
** them. The arrays are built on the first call and never change afterwards.
**   codes           codes without the end-of-month rule (-1 when none)
**   eom_codes       codes with the end-of-month rule (-1 when none)
**   names           type names
**   daycount_names  display names of the accrued day counts
**   frequencies     default coupons per year
**   exdiv_flags     one byte per row: 1 when the type has an ex-dividend
**                   period, else 0
** Returns the number of rows (64).
*/
KVL_EXPORT int32_t KVL_API KVLbtable(const int32_t** codes, const int32_t** eom_codes, const char* const** names, const char* const** daycount_names, const int32_t** frequencies, const char** exdiv_flags);

/*
** KVLbcustom: defines or redefines custom bond type `code` (1000..1099).
** Every other argument may be NULL, which selects the default shown:
**   accrual_basis    accrued day count: 0..6, 9..13 (default 0); 1 reads as
**                    30/360(Feb) (7) when the end-of-month rule is on
**   exdiv_basis      day count for negative (ex-dividend) accrued interest,
**                    same set (default: the accrual basis when that was
**                    given, else 0)
**   eom              end-of-month rule default (default 1)
**   frequency        coupons per year: 1, 2, 3, 4, 6, 12 (default 2)
**   simple_final     price the final period at simple interest (default 1)
**   yield_method     0 compound, 1 Japanese simple, 2 Braess, 3 Moosmueller,
**                    4 act/365.25 exponent (default 0)
**   accrual_days     days added to the accrued days (default 0)
**   canadian_cap     1: a regular period accrues at most 363/frequency days
**                    (default 0)
**   mm_basis         money-market days per year, at least 1 (default 360)
**   exdiv_days       ex-dividend period: n < 1 adds n calendar days to the
**                    coupon date, n >= 1 steps n business days back
**                    (default 0: none)
**   yield_frequency  compounding periods per year of quoted yields:
**                    0 (as the coupons), 1, 2, 3, 4, 6, 12 (default 0)
** Returns the code, or -1 when the code is outside 1000..1099 (nothing
** changes), the custom-type lock could not be had, or an argument lies
** outside its set. In the last case the refused field keeps its previous
** value while all other fields are written and the type becomes defined.
*/
KVL_EXPORT int32_t KVL_API KVLbcustom(int32_t code, const int32_t* accrual_basis, const int32_t* exdiv_basis, const int32_t* eom, const int32_t* frequency, const int32_t* simple_final, const int32_t* yield_method, const int32_t* accrual_days, const int32_t* canadian_cap, const int32_t* mm_basis, const int32_t* exdiv_days, const int32_t* yield_frequency);

/*
** KVLbond_initMT: prepares the library's locks. Call it once before calling
** the library from several threads; calling it again is harmless. Without
** it the locks are skipped (single-threaded use).
*/
KVL_EXPORT void KVL_API KVLbond_initMT(void);

/*
** KVLbondver: the library version, "v2002.0p0nt". The string is static;
** never free it.
*/
KVL_EXPORT const char* KVL_API KVLbondver(void);

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
