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
** changes), the custom-type lock could not be had (after about 33 seconds
** of waiting for the calls pricing with custom types to finish), or an
** argument lies outside its set. In the last case the refused field keeps its previous
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

/* Common bond arguments (shared by every straight-bond function; NULL
** pointers select the bond type's or the library's default):
**   coupons, n_coupons   coupon rates (decimal) per step, coupons[i] in force
**                        up to dates[i]. With a single date three forms:
**                        {rate}; {rate, R} redeemed at R per 100 (e.g. 98.0);
**                        {rate, a, b} redeemed at 100 * b / a. The form sets
**                        the default of `redemption`; a given `redemption` wins.
**   dates, n_dates       strictly ascending coupon-change dates, last = maturity
**   settlement           settlement date (not after maturity)
**   dated_date           start of interest accrual (NULL/0: derived)
**   first_coupon         first coupon date (NULL/0: derived; a derived first
**                        coupon within 27 days of maturity is maturity)
**   type                 bond type code (NULL: 0, U.S. Treasury, end-of-month
**                        rule on). The end-of-month rule follows the schedule
**                        anchor: on when it is the 31st, off when it is not a
**                        month end, the type's default otherwise.
**   frequency, n_frequency  [0] coupons per year (1,2,3,4,6,12),
**                        [1] amortisations per year (must divide [0]);
**                        0 / absent: type default
**   redemption           redemption value per 100 (default 100)
**   coupon_tax           withholding tax on coupons, fraction (default 0)
**   discount_tax         tax on the issue discount / capital gain (default 0);
**                        a tax rate beyond +-1e100 is an invalid description
**   horizon              tax horizon: <= 24 months, > 24 days (default 12 months)
**   issue_price          issue price per 100 (default 100)
**   yield_method         -1..-6 select a yield method; other nonzero: business-
**                        day payment dates; NULL/0: the type's convention
**   bd_flags             bit 0 Saturday works, bit 1 Sunday works
**   holidays, n_holidays ascending holiday serials for business-day rules;
**                        holidays NULL is an empty list whatever the count
**                        (a negative count is an invalid description)
**   factor               amortisation: NULL/0 none; < 0 equal repayments on
**                        every amortisation date from the first sink date to
**                        maturity; (0,1] a schedule in sink_dates/sink_amounts,
**                        the outstanding factor at settlement (1.0: computed)
**   sink_dates, n_sink   ascending amortisation dates (not read when factor
**                        is NULL or 0, like the other sinking-fund arrays);
**                        each schedule entry's
**                        amount is repaid on every amortisation date (on the
**                        coupon grid) until the next entry
**   sink_ends, n_sink_ends  optional last date of each entry's run (0: open);
**                        n_sink_ends must equal n_sink when used
**   sink_amounts         amortisation amounts, fractions of initial face
**   sink_premium         premium on each amortisation amount (default 0, >= 0)
**   exdiv_days           ex-dividend override: n < 1 calendar days added to the
**                        coupon date, n >= 1 business days before it
** Dates are serials 1..1825000. Error 1 (KVL_ERR_INVALID) for any invalid
** argument: negative counts, NULL arrays with positive counts (a NULL
** holiday list or the sinking-fund arrays of a bullet excepted), NaN or
** infinite values, invalid or misordered dates, unknown type, frequency not
** in {1,2,3,4,6,12}, a bond fully amortised by settlement. Custom types
** (codes 1000..1099) hold the custom-type lock as readers: -60 when it cannot
** be had. Amortising bonds are quoted per 100 of outstanding face.
*/

/* KVLbpr: clean price per 100 from a yield.
**   yield   decimal fraction per year, compounded at the type's quotation
**           frequency (annually for the "yields quoted annually" types;
**           re-expressed at the coupon frequency when more than one period
**           remains)
** Returns the clean price, rounded by type (types 0, 1: 6 decimals; 2, 3, 16:
** cleaned at 8 decimals, then truncated to 3; 380: 5 decimals; others
** unrounded). An amortising bond's price is per 100 of outstanding face.
** Errors: 1 invalid description or non-finite yield, 401 vanishing
** denominator, -60 lock. Failure value -1.0 (divided by the outstanding
** factor of an amortising bond, then rounded; test the error code). */
KVL_EXPORT double KVL_API KVLbpr(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                 int32_t n_dates, int32_t settlement, double yield,
                                 const int32_t* dated_date, const int32_t* first_coupon,
                                 const int32_t* type, const int32_t* frequency, int32_t n_frequency,
                                 const double* redemption, const double* coupon_tax,
                                 const double* discount_tax, const int32_t* horizon,
                                 const double* issue_price, const int32_t* yield_method,
                                 const int32_t* bd_flags, const int32_t* holidays,
                                 int32_t n_holidays, const double* factor,
                                 const int32_t* sink_dates, int32_t n_sink,
                                 const int32_t* sink_ends, int32_t n_sink_ends,
                                 const double* sink_amounts, const double* sink_premium,
                                 const int32_t* exdiv_days, int32_t* error);

/* KVLbai1: accrued interest per 100 of (outstanding) face at settlement,
** negative when the bond trades ex-dividend (Gilts, Australian, Swedish,
** Norwegian and other markets with an ex-dividend period; `exdiv_days`
** overrides the market's rule, using `holidays` and `bd_flags` for business
** days). Arguments as the common bond arguments; redemption, discount tax,
** horizon, issue price and yield method do not affect accrued interest and
** are not taken. Types 16, 17 and 22 accrue as 2, 12 and 20. Rounding: type
** 81 to 5 decimals of face, 290 to 6, others unrounded. Errors: 1 invalid
** description, -60 lock. Failure value -1.0. */
KVL_EXPORT double KVL_API KVLbai1(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                  int32_t n_dates, int32_t settlement, const int32_t* dated_date,
                                  const int32_t* first_coupon, const int32_t* type,
                                  const int32_t* frequency, int32_t n_frequency,
                                  const double* coupon_tax, const double* factor,
                                  const int32_t* sink_dates, int32_t n_sink,
                                  const int32_t* sink_ends, int32_t n_sink_ends,
                                  const double* sink_amounts, const double* sink_premium,
                                  const int32_t* exdiv_days, const int32_t* bd_flags,
                                  const int32_t* holidays, int32_t n_holidays, int32_t* error);

/* KVLbai: KVLbai1 without the business-day arguments (no holidays,
** Saturdays and Sundays are holidays). Same errors and failure value. */
KVL_EXPORT double KVL_API KVLbai(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                 int32_t n_dates, int32_t settlement, const int32_t* dated_date,
                                 const int32_t* first_coupon, const int32_t* type,
                                 const int32_t* frequency, int32_t n_frequency,
                                 const double* coupon_tax, const double* factor,
                                 const int32_t* sink_dates, int32_t n_sink,
                                 const int32_t* sink_ends, int32_t n_sink_ends,
                                 const double* sink_amounts, const double* sink_premium,
                                 const int32_t* exdiv_days, int32_t* error);

/* ---- end of straight bonds: price and accrued interest ---- */


/* ======================================================================== */
/* Straight bonds: yields, risk measures, schedules and cash flows          */
/* ======================================================================== */

/* Arguments of this section: the common bond arguments as described in the
** section above, in their order 1..28, with each function's own inputs at
** the positions its declaration shows. Where a function takes fewer of them,
** its comment names the ones it takes; the rest are absent (NULL / 0). The
** end-of-month override is only exposed by KVLbcpn and KVLbncpn.
*/

/* KVLbyld: yield to maturity from the clean price.
**   price   clean price per 100 (per 100 of outstanding face for an
**           amortising bond), after coupon arguments 1-5
**   other arguments as KVLbpr
** Returns the yield as a decimal fraction per year, compounded at the type's
** quotation frequency (annually for the "yields quoted annually" types when
** more than one period remains, else at the coupon frequency). Bonds priced
** at simple interest (Japanese simple yield) and bonds in a money-market last
** period are solved in closed form; the others by Newton's method from the
** current yield (5 % for a zero coupon; never above 25, so a price near zero
** starts at the top of the bracket), tolerance 1e-6 of face, 64 steps,
** then by a bracketing search between -0.9 x frequency and 25 (false
** position, bisecting whenever a step fails to halve the bracket, so a price
** with a yield in the bracket finds it).
** Rounding: types 0, 1 to 8 decimals; 2, 3, 16 to 5; 380 to 7; others none.
** Errors: 1 invalid description (or both solvers failed, or a yield beyond
** 1e100 or one that overflows its quotation frequency), 350 price zero,
** negative, NaN or not above minus the accrued interest, 160 settlement after
** maturity in a closed form, 460 no time left to maturity, -60 lock.
** Failure value -1.0; -999.0 when both solvers failed. */
KVL_EXPORT double KVL_API KVLbyld(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                  int32_t n_dates, int32_t settlement, double price,
                                  const int32_t* dated_date, const int32_t* first_coupon,
                                  const int32_t* type, const int32_t* frequency,
                                  int32_t n_frequency, const double* redemption,
                                  const double* coupon_tax, const double* discount_tax,
                                  const int32_t* horizon, const double* issue_price,
                                  const int32_t* yield_method, const int32_t* bd_flags,
                                  const int32_t* holidays, int32_t n_holidays,
                                  const double* factor, const int32_t* sink_dates, int32_t n_sink,
                                  const int32_t* sink_ends, int32_t n_sink_ends,
                                  const double* sink_amounts, const double* sink_premium,
                                  const int32_t* exdiv_days, int32_t* error);

/* KVLbhyld: horizon yield, the yield earned from settlement to a sale.
**   price          clean purchase price per 100
**   horizon_date   sale date, after settlement and not after maturity
**   horizon_price  clean sale price per 100
**   then the common arguments 6-28 without redemption (11): the horizon
**   price takes its place.
** The bond is valued as one that matures on the horizon date at the horizon
** price, on its own coupon grid: a sale between coupon dates ends a broken
** last period whose coupon is the accrued interest the buyer pays. Yield at
** the coupon frequency, unrounded and not re-expressed.
** Errors: 160 horizon not after settlement or after maturity, 1 invalid
** description or solver failure, 350 price not positive, -50 memory, -60
** lock. Failure value -1.0; -999.0 when both solvers fail. */
KVL_EXPORT double KVL_API KVLbhyld(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                   int32_t n_dates, int32_t settlement, double price,
                                   int32_t horizon_date, double horizon_price,
                                   const int32_t* dated_date, const int32_t* first_coupon,
                                   const int32_t* type, const int32_t* frequency,
                                   int32_t n_frequency, const double* coupon_tax,
                                   const double* discount_tax, const int32_t* horizon,
                                   const double* issue_price, const int32_t* yield_method,
                                   const int32_t* bd_flags, const int32_t* holidays,
                                   int32_t n_holidays, const double* factor,
                                   const int32_t* sink_dates, int32_t n_sink,
                                   const int32_t* sink_ends, int32_t n_sink_ends,
                                   const double* sink_amounts, const double* sink_premium,
                                   const int32_t* exdiv_days, int32_t* error);

/* KVLbryld: realized compound yield of a bond held to maturity with its
** coupons reinvested.
**   price              clean price per 100
**   reinvestment_rate  decimal per year, compounded at the coupon frequency
**   then the common arguments 6-13 and 15-20 (no sinking fund, no
**   ex-dividend override).
** Each coupon (net of coupon_tax) grows at the reinvestment rate to
** maturity; the redemption is net of tax on the gain over the price (as
** income, at coupon_tax, when the next coupon date falls before the tax
** horizon, else at discount_tax; untaxed without a discount_tax). Result
** ((value at maturity / dirty price)^(1/N) - 1) x frequency, N the periods
** from settlement to maturity. Unrounded.
** Errors: 250 reinvestment rate of -100 % a period or below, or beyond
** +-1e100, 1 invalid description, dirty price or periods not positive, or
** a yield no double holds, -60 lock. Failure value -1.0. */
KVL_EXPORT double KVL_API KVLbryld(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                   int32_t n_dates, int32_t settlement, double price,
                                   double reinvestment_rate, const int32_t* dated_date,
                                   const int32_t* first_coupon, const int32_t* type,
                                   const int32_t* frequency, int32_t n_frequency,
                                   const double* redemption, const double* coupon_tax,
                                   const double* discount_tax, const int32_t* horizon,
                                   const double* issue_price, const int32_t* yield_method,
                                   const int32_t* bd_flags, const int32_t* holidays,
                                   int32_t n_holidays, int32_t* error);

/* KVLbyldal: yield to average life of a bond with a sinking fund.
**   price   clean price per 100
**   then the common arguments 6-13, 15-17 and the amortisation arguments
**   21-27 of KVLbal (no business-day or ex-dividend arguments).
** Without a sinking fund (factor NULL or 0) it is KVLbyld. Otherwise the
** average life (KVLbal, plus half a day) from settlement gives the
** average-life date (whole years as whole years, the fraction in days of
** the accrued day count), and the result is the yield of the bond as a
** bullet maturing on that date, on its own coupon grid, rounded as KVLbyld.
** Errors: 50 NULL dates, 60 n_dates below 1, those of KVLbal and KVLbyld,
** -50 memory. Failure value -1.0 (-999.0 from KVLbyld without a sinking
** fund). */
KVL_EXPORT double KVL_API KVLbyldal(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    double price, const int32_t* dated_date,
                                    const int32_t* first_coupon, const int32_t* type,
                                    const int32_t* frequency, int32_t n_frequency,
                                    const double* redemption, const double* coupon_tax,
                                    const double* discount_tax, const int32_t* horizon,
                                    const double* issue_price, const int32_t* yield_method,
                                    const double* factor, const int32_t* sink_dates,
                                    int32_t n_sink, const int32_t* sink_ends,
                                    int32_t n_sink_ends, const double* sink_amounts,
                                    const double* sink_premium, int32_t* error);

/* KVLbel: remaining life in years as the bond's conventions measure time:
** the Macaulay duration (KVLbdur) of a zero-coupon bond with the same
** maturity, settlement, type and schedule.
**   price_or_yield  10.0 or more: a clean price, first turned into a yield
**                   by KVLbyld (its error is returned with -1.0); below
**                   10.0: a yield
**   other arguments as KVLbpr; taxes, redemption and sinking fund do not
**   enter the life.
** Errors and failure value those of KVLbdur. */
KVL_EXPORT double KVL_API KVLbel(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                 int32_t n_dates, int32_t settlement, double price_or_yield,
                                 const int32_t* dated_date, const int32_t* first_coupon,
                                 const int32_t* type, const int32_t* frequency,
                                 int32_t n_frequency, const double* redemption,
                                 const double* coupon_tax, const double* discount_tax,
                                 const int32_t* horizon, const double* issue_price,
                                 const int32_t* yield_method, const int32_t* bd_flags,
                                 const int32_t* holidays, int32_t n_holidays,
                                 const double* factor, const int32_t* sink_dates, int32_t n_sink,
                                 const int32_t* sink_ends, int32_t n_sink_ends,
                                 const double* sink_amounts, const double* sink_premium,
                                 const int32_t* exdiv_days, int32_t* error);

/* KVLbyworst: yield to worst, the lowest of the yield to maturity and the
** yields to each call date after settlement.
**   price          clean price per 100
**   call_dates, n_call_dates    strictly ascending call dates, the last not
**                               after maturity
**   call_prices, n_call_prices  call price per 100 for each call date (a
**                               date without its own price takes the next
**                               date's); the last price given is also the
**                               redemption at maturity (100 when none);
**                               at most n_call_dates + 1 prices
**   these four stand where redemption (11) would; then the common
**   arguments 12, 13, 15 and 17-28 (no issue price).
** Each call is valued as the bond maturing on the call date at its price,
** on its own coupon grid, with the sinking-fund entries before the call.
** A call yield replaces the worst only when strictly lower (ties keep the
** later date, or maturity). When the yield to maturity fails but call
** dates are given the walk goes on: the failed value (-1.0 or -999.0) stays
** a candidate and the later steps' error codes replace its code, so the
** failure value can come back with error 0, and a candidate's yield with
** the code of a call that failed after it. Rounded as KVLbyld.
** Errors, checked in this order: 60 n_dates below 1 or a negative count,
** 70 more prices than dates + 1, 50 a NULL array, 150 first call date not
** positive, 160 call dates not increasing or after maturity, 460 a call
** price zero, negative or NaN; then those of KVLbyld, -50 memory, -60 lock.
** Failure value -1.0; -999.0 when both solvers fail. */
KVL_EXPORT double KVL_API KVLbyworst(const double* coupons, int32_t n_coupons,
                                     const int32_t* dates, int32_t n_dates, int32_t settlement,
                                     double price, const int32_t* dated_date,
                                     const int32_t* first_coupon, const int32_t* type,
                                     const int32_t* frequency, int32_t n_frequency,
                                     const int32_t* call_dates, int32_t n_call_dates,
                                     const double* call_prices, int32_t n_call_prices,
                                     const double* coupon_tax, const double* discount_tax,
                                     const int32_t* horizon, const int32_t* yield_method,
                                     const int32_t* bd_flags, const int32_t* holidays,
                                     int32_t n_holidays, const double* factor,
                                     const int32_t* sink_dates, int32_t n_sink,
                                     const int32_t* sink_ends, int32_t n_sink_ends,
                                     const double* sink_amounts, const double* sink_premium,
                                     const int32_t* exdiv_days, int32_t* error);

/* KVLbdur: duration at a quoted yield.
**   yield          as KVLbpr (quotation frequency of the type)
**   duration_kind  NULL or 0: modified duration; nonzero: Macaulay
**   the common arguments in their order, duration_kind standing between
**   redemption (11) and coupon_tax (12); no end-of-month override.
** Modified duration = -(dP/dy) / (P + AI), in years, with dP/dy by the quoted
** yield (chain rule through the annual re-expression for the "yields quoted
** annually" types). Macaulay = modified x (1 + y / quotation frequency).
** Unrounded. Errors: 1 invalid description, non-finite yield or dirty value
** not positive; 401 vanishing denominator; -60 lock. Failure value -1.0. */
KVL_EXPORT double KVL_API KVLbdur(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                  int32_t n_dates, int32_t settlement, double yield,
                                  const int32_t* dated_date, const int32_t* first_coupon,
                                  const int32_t* type, const int32_t* frequency,
                                  int32_t n_frequency, const double* redemption,
                                  const int32_t* duration_kind, const double* coupon_tax,
                                  const double* discount_tax, const int32_t* horizon,
                                  const double* issue_price, const int32_t* yield_method,
                                  const int32_t* bd_flags, const int32_t* holidays,
                                  int32_t n_holidays, const double* factor,
                                  const int32_t* sink_dates, int32_t n_sink,
                                  const int32_t* sink_ends, int32_t n_sink_ends,
                                  const double* sink_amounts, const double* sink_premium,
                                  const int32_t* exdiv_days, int32_t* error);

/* KVLbconv: convexity (d2P/dy2) / (P + AI) at a quoted yield, in years
** squared; arguments as KVLbpr. Unrounded. Errors as KVLbdur. Failure value
** -1.0 when the lock or the description fails, -999.0 when the computation
** fails. */
KVL_EXPORT double KVL_API KVLbconv(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                   int32_t n_dates, int32_t settlement, double yield,
                                   const int32_t* dated_date, const int32_t* first_coupon,
                                   const int32_t* type, const int32_t* frequency,
                                   int32_t n_frequency, const double* redemption,
                                   const double* coupon_tax, const double* discount_tax,
                                   const int32_t* horizon, const double* issue_price,
                                   const int32_t* yield_method, const int32_t* bd_flags,
                                   const int32_t* holidays, int32_t n_holidays,
                                   const double* factor, const int32_t* sink_dates,
                                   int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
                                   const double* sink_amounts, const double* sink_premium,
                                   const int32_t* exdiv_days, int32_t* error);

/* KVLbvalbp: price value of a basis point, -(dP/dy) / scale per 100 of
** (outstanding) face: the fall in price for a one basis point rise in the
** quoted yield when scale is 100.
**   scale   NULL: 100.0; stands between issue_price (16) and yield_method (17)
** Errors: 310 scale zero, negative or NaN (checked first, before the lock),
** 1 invalid description or yield, 401, -60 lock. Failure value -999.0,
** except -1.0 when the description is invalid. */
KVL_EXPORT double KVL_API KVLbvalbp(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    double yield, const int32_t* dated_date,
                                    const int32_t* first_coupon, const int32_t* type,
                                    const int32_t* frequency, int32_t n_frequency,
                                    const double* redemption, const double* coupon_tax,
                                    const double* discount_tax, const int32_t* horizon,
                                    const double* issue_price, const double* scale,
                                    const int32_t* yield_method, const int32_t* bd_flags,
                                    const int32_t* holidays, int32_t n_holidays,
                                    const double* factor, const int32_t* sink_dates,
                                    int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
                                    const double* sink_amounts, const double* sink_premium,
                                    const int32_t* exdiv_days, int32_t* error);

/* KVLbval32: yield value of a tick, 1 / (KVLbvalbp x ticks): the change in
** yield, in basis points, that moves the price by one tick.
**   ticks_per_point  NULL: 32.0 (a 32nd); in KVLbvalbp's scale position
** Errors: 310 ticks zero, negative or NaN (result -999.0); otherwise those of
** KVLbvalbp, whose value is used as it comes: on its failure the result is
** 1 / (failure value x ticks) and only the error code tells; 401 (result
** -999.0) when the price does not move with the yield or the quotient
** overflows (a bond settling at maturity, a denormal tick size). */
KVL_EXPORT double KVL_API KVLbval32(const double* coupons, int32_t n_coupons,
                                    const int32_t* dates, int32_t n_dates, int32_t settlement,
                                    double yield, const int32_t* dated_date,
                                    const int32_t* first_coupon, const int32_t* type,
                                    const int32_t* frequency, int32_t n_frequency,
                                    const double* redemption, const double* coupon_tax,
                                    const double* discount_tax, const int32_t* horizon,
                                    const double* issue_price, const double* ticks_per_point,
                                    const int32_t* yield_method, const int32_t* bd_flags,
                                    const int32_t* holidays, int32_t n_holidays,
                                    const double* factor, const int32_t* sink_dates,
                                    int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
                                    const double* sink_amounts, const double* sink_premium,
                                    const int32_t* exdiv_days, int32_t* error);

/* KVLbcamt: the coupon of the current period per 100 of face, net of the
** withholding tax (a full coupon in a regular period, the odd amount in an
** odd first period). Takes common arguments 1-10, coupon_tax (12) and the
** amortisation arguments 21-27. Types 16, 17 and 22 pay as 2, 12 and 20.
** Errors: 1 invalid description, -60 lock. Failure value -1.0. */
KVL_EXPORT double KVL_API KVLbcamt(const double* coupons, int32_t n_coupons, const int32_t* dates,
                                   int32_t n_dates, int32_t settlement, const int32_t* dated_date,
                                   const int32_t* first_coupon, const int32_t* type,
                                   const int32_t* frequency, int32_t n_frequency,
                                   const double* coupon_tax, const double* factor,
                                   const int32_t* sink_dates, int32_t n_sink,
                                   const int32_t* sink_ends, int32_t n_sink_ends,
                                   const double* sink_amounts, const double* sink_premium,
                                   int32_t* error);

/* KVLbcshflw: the table of remaining cash flows, one row per remaining
** cash-flow period, in date order, in four parallel arrays that the library
** allocates (malloc) and the caller releases with KVLbcshflw_free:
**   out_dates      payment dates, moved to the following business day when
**                  the bond pays on business days (yield_method 1)
**   out_coupons    coupon per 100 of initial face, net of coupon_tax; 0 in
**                  the first row when the bond trades ex-dividend; paid on
**                  the face still outstanding after sinking-fund repayments
**   out_principal  principal repaid per 100 of initial face (at par on
**                  sinking-fund dates, at the redemption value at maturity),
**                  net of tax on the gain over `price`: taxed at coupon_tax
**                  before the tax horizon date, at discount_tax from then
**                  on, and not at all without a discount_tax
**   out_periods    time from settlement in coupon periods: the exponents of
**                  the bond's own yield convention, so that the rows
**                  discounted at (1 + y/f)^-periods sum to the dirty price
**                  (times the outstanding factor of an amortising bond)
** Any out pointer may be NULL: that column is not made; with all four NULL
** nothing is allocated and the row count is returned.
**   price   clean price per 100 of outstanding face (NULL: 100.0), for the
**           tax on the gain; stands between issue_price (16) and
**           yield_method (17)
** The common arguments follow the four out pointers in their order (no
** end-of-month override). Types 16, 17 and 22 pay as 2, 12 and 20.
** Returns the row count. Errors: 1 invalid description (result -1), 350
** price not finite or beyond +-1e100 (-1), -60 lock (-1), -50 memory (0). After any failure
** every given out pointer is NULL. */
KVL_EXPORT int32_t KVL_API KVLbcshflw(int32_t** out_dates, double** out_coupons,
                                      double** out_principal, double** out_periods,
                                      const double* coupons, int32_t n_coupons,
                                      const int32_t* dates, int32_t n_dates, int32_t settlement,
                                      const int32_t* dated_date, const int32_t* first_coupon,
                                      const int32_t* type, const int32_t* frequency,
                                      int32_t n_frequency, const double* redemption,
                                      const double* coupon_tax, const double* discount_tax,
                                      const int32_t* horizon, const double* issue_price,
                                      const double* price, const int32_t* yield_method,
                                      const int32_t* bd_flags, const int32_t* holidays,
                                      int32_t n_holidays, const double* factor,
                                      const int32_t* sink_dates, int32_t n_sink,
                                      const int32_t* sink_ends, int32_t n_sink_ends,
                                      const double* sink_amounts, const double* sink_premium,
                                      const int32_t* exdiv_days, int32_t* error);

/* KVLbcshflw_free: releases the arrays of a KVLbcshflw table (any pointer
** may be NULL). The arrays must not be freed in any other way. */
KVL_EXPORT void KVL_API KVLbcshflw_free(int32_t* dates, double* coupons, double* principal,
                                        double* periods);

/* KVLbcpn: a coupon date counted from settlement, for a bond described by
** its maturity and schedule alone.
**   maturity, settlement   date serials
**   k             NULL: 0. 0 the last coupon date on or before settlement,
**                 1 the next one, -1 the one before the last, and so on
**   dated_date, first_coupon, type, frequency (NULL: the type's default),
**   eom           the common arguments 6, 7, 8, 9 and the end-of-month
**                 override (NULL: the type's rule)
** A maturity off the coupon grid is itself the last coupon date. When the
** dated date or the first coupon is given, no date before the first coupon
** is returned (a settlement before it counts from the day before it).
** Types 16, 17 and 22 as 2, 12 and 20. Errors: 1 invalid description or a
** date before the first coupon or after maturity, -60 lock. Failure -1. */
KVL_EXPORT int32_t KVL_API KVLbcpn(int32_t maturity, int32_t settlement, const int32_t* k,
                                   const int32_t* dated_date, const int32_t* first_coupon,
                                   const int32_t* type, const int32_t* frequency,
                                   const int32_t* eom, int32_t* error);

/* KVLbncpn: the number of coupons still to be paid after settlement
** (including a broken last one); arguments as KVLbcpn without k.
** Errors: 1 invalid description, -60 lock. Failure -1. */
KVL_EXPORT int32_t KVL_API KVLbncpn(int32_t maturity, int32_t settlement,
                                    const int32_t* dated_date, const int32_t* first_coupon,
                                    const int32_t* type, const int32_t* frequency,
                                    const int32_t* eom, int32_t* error);

/* KVLbexdiv: the ex-dividend date of the first coupon after settlement.
**   reference_coupon  any coupon date of the bond (normally its maturity);
**                     the schedule steps from it at the type's frequency
**   type              bond type code (NULL: 0); its own ex-dividend rule
**                     applies, e.g. Gilts 7 business days back plus a day
**   exdiv_period      NULL: the type's rule; n >= 1: n business days before
**                     the coupon date; n <= 0: n calendar days added to it
**   holidays, n_holidays  ascending holiday serials for business days; a
**                     NULL list or a count below 1 is an empty list
**   weekend_flags     NULL: Saturday and Sunday are holidays; bit 0 set:
**                     Saturday is a business day; bit 1: Sunday. Every
**                     business-day rule follows them except the Gilts',
**                     whose weekends are always closed
** A type without an ex-dividend period returns the coupon date itself.
** Errors: 1 invalid date, a type without a default frequency, or no date
** in 1..1825000 for the coupon or its ex-dividend date, 460 unknown type,
** -60 lock. Failure -1. */
KVL_EXPORT int32_t KVL_API KVLbexdiv(int32_t reference_coupon, int32_t settlement,
                                     const int32_t* type, const int32_t* exdiv_period,
                                     const int32_t* holidays, int32_t n_holidays,
                                     const uint8_t* weekend_flags, int32_t* error);

/* KVLbal: average life in years of a bond with a sinking fund: the time
** from settlement to each repayment of principal, weighted by the fraction
** of face repaid (coupon periods over the frequency). Repayments fall on
** the amortisation dates of the coupon grid; what remains is repaid at
** maturity, after a broken last period when the maturity is off the grid.
** Without a sinking fund: the time to maturity so measured.
**   maturity, settlement, then the common arguments 6-11 (dated_date,
**   first_coupon, type, frequency, n_frequency, redemption) and 21-27
**   (factor .. sink_premium). Types 16, 17 and 22 as 2, 12 and 20.
** Errors: 1 any invalid description (result 0.0, not -1.0), or nothing
** left to repay (result -1 / frequency); -60 lock (-1.0). */
KVL_EXPORT double KVL_API KVLbal(int32_t maturity, int32_t settlement, const int32_t* dated_date,
                                 const int32_t* first_coupon, const int32_t* type,
                                 const int32_t* frequency, int32_t n_frequency,
                                 const double* redemption, const double* factor,
                                 const int32_t* sink_dates, int32_t n_sink,
                                 const int32_t* sink_ends, int32_t n_sink_ends,
                                 const double* sink_amounts, const double* sink_premium,
                                 int32_t* error);

/* ---- end of straight bonds: yields, risk, schedules ---- */


/* ======================================================================== */
/* Bond futures: conversion factors, carry, forward, implied repo           */
/* ======================================================================== */

/* Conversion factors. A contract code names the exchange's rule:
**    0 CBOT Treasury bond / 10-year note (quarterly method)
**    1 CBOT 2- and 5-year notes (monthly method)
**   60, 61 CBOT 10-year, 5-year notes; 70, 71 the same at a 6.5 % notional
**    2, 22 LIFFE long, medium gilt (closed form, 7 dp)
**   34, 35 LIFFE long, medium gilt priced as gilts; 3, 31, 32, 33, 36, 37
**          MATIF notional contracts on OATs
**    4 TSE JGB (truncated to 6 dp)      7 Montreal CGB
**    5, 15-18, 20 contracts delivered on the 10th (Bund, Bobl, Schatz, Buxl)
**    6, 45-47 BTP contracts             8, 9, 11 MEFF Spanish bond contracts
**   10 MEFF 10 % notional bono          25, 26 Belfox Belgian bond contracts
**   40 7th-of-month 7 % contract        41, 42 OM Swedish bond contracts
**   50, 51 third-Wednesday annual contracts   55 Porto Portuguese contract
** Any other code gives error 900.
**
** KVLbfact1: conversion factor (a number near 1) of a bond for a contract.
**   coupon         annual coupon rate of the bond, decimal
**   maturity       maturity date
**   delivery       a date in the delivery month (some contracts use it as
**                  the delivery day when it is later than their own)
**   contract       contract code (NULL: 0)
**   holidays, n_holidays  ascending holiday serials for the delivery-day
**                  business-day rules (NULL / 0: none)
**   weekend_flag   nonzero: Saturday is a business day (NULL: 0)
**   adjust_flag    nonzero: Sunday is a business day (NULL: 0)
**   extra_option   contracts 2 and 22 only: ex-dividend period of the gilt,
**                  n < 1 calendar days added to the coupon date, n >= 1
**                  business days before it (NULL: the Gilt rule)
**   dated_date, first_coupon  coupon-date arguments of KVLbpr, handed to
**                  the bond price by the price-based contracts
**   notional       override of the notional coupon, decimal (NULL: the
**                  contract's); error 920 for zero or below under codes 0,
**                  1, 4, 7, 40, 41, 42, 50, 51, 60, 61, 70, 71, for below
**                  zero under the others
**   check_eligibility  NULL or nonzero: error 910 for a bond outside the
**                  contract's deliverable maturities; 0: factor regardless
** Errors: 150 bad date, 160 reference date after maturity, 900 unknown
** contract, 910 not deliverable, 920 notional out of range, 1 non-finite
** coupon or a price-based factor whose bond description is invalid.
** Failure value -1.0. */
KVL_EXPORT double KVL_API KVLbfact1(double coupon, int32_t maturity, int32_t delivery,
                                    const int32_t* contract, const int32_t* holidays,
                                    int32_t n_holidays, const int32_t* weekend_flag,
                                    const int32_t* adjust_flag, const int32_t* extra_option,
                                    const int32_t* dated_date, const int32_t* first_coupon,
                                    const double* notional, const int32_t* check_eligibility,
                                    int32_t* error);

/* KVLbfact: KVLbfact1 with the contract's own notional coupon and the
** eligibility check on. */
KVL_EXPORT double KVL_API KVLbfact(double coupon, int32_t maturity, int32_t delivery,
                                   const int32_t* contract, const int32_t* holidays,
                                   int32_t n_holidays, const int32_t* weekend_flag,
                                   const int32_t* adjust_flag, const int32_t* extra_option,
                                   const int32_t* dated_date, const int32_t* first_coupon,
                                   int32_t* error);

/* Cash and carry. Hold the bond from settlement to an end date (a futures
** delivery or forward date), financed at a repo rate. Prices and futures
** prices per 100, repo and reinvestment rates decimal per year, conversion
** factors plain numbers near 1; no result is rounded.
**
** Argument layout shared by the ten functions:
**   coupons, n_coupons, dates, n_dates, settlement  common arguments 1-5
**   (the function's own arguments, listed per function)
**   dated_date ... exdiv_days   common arguments 6-10, 12 and 21-28, as
**                  for KVLbai1 (coupon_tax is the withholding on coupons;
**                  factor ... sink_premium describe amortisation; a bond
**                  quoted on outstanding face is carried as such)
**   basis          day basis of the repo and reinvestment interest (NULL or
**                  not above 0: the type's money-market basis, 360 or 365)
**   days           the carry period ends this many days before the end
**                  date, never after maturity (NULL: on the end date)
**   mode           mode word (NULL: 0). Bits 1-2: financing interest,
**                  0 simple (compounding at coupon dates), 4 continuous
**                  (both rates first re-expressed from the coupon frequency),
**                  2 simple on the start amount over the whole period.
**                  Bit 0: coupons received are reinvested (simply under 2);
**                  clear: they earn nothing.
**   `1` variants only, the business-day block:
**   date_rule      NULL/0 dates as given; 1 settlement rolled to the next
**                  business day and the end date likewise; 2 both must be
**                  business days (else 160); other values 460
**   holidays, n_holidays, calendar_flags  holiday calendar and weekend
**                  flags (bit 0 Saturday works, bit 1 Sunday works), also
**                  handed to the bond set-up. The short forms pass none.
**   error          error code (may be NULL)
** The carry covers: accrued interest gained, coupons paid in the period
** (with reinvestment interest when asked), less the financing of price plus
** accrued interest. An end date in an ex-coupon period counts the coming
** coupon, discounted from its payment date at the reinvestment rate.
** Errors: 160 end date after maturity or not after settlement (result
** -999.0 for the latter), 460 bad date rule, 1 invalid description or
** non-finite input, -60 lock. Failure value -1.0. */

/* KVLbcarry1: carry in percent of face (per 100 outstanding), financing and
** coupon reinvestment both at the repo rate. */
KVL_EXPORT double KVL_API KVLbcarry1(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, int32_t end_date, double price, double repo, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, const int32_t* date_rule, const int32_t* holidays, int32_t n_holidays,
        const int32_t* calendar_flags, int32_t* error);

/* KVLbcarry: KVLbcarry1 without the business-day block. */
KVL_EXPORT double KVL_API KVLbcarry(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, int32_t end_date, double price, double repo, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, int32_t* error);

/* KVLbifutp1: implied futures price = (price - carry) / conversion_factor,
** the carry to the delivery date with coupons reinvested at *reinvest (NULL
** or negative: the repo rate). Error 401 for a zero conversion factor. */
KVL_EXPORT double KVL_API KVLbifutp1(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, double price, double repo, double conversion_factor,
        int32_t delivery, const double* reinvest, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, const int32_t* date_rule, const int32_t* holidays, int32_t n_holidays,
        const int32_t* calendar_flags, int32_t* error);

/* KVLbifutp: KVLbifutp1 without the business-day block. */
KVL_EXPORT double KVL_API KVLbifutp(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, double price, double repo, double conversion_factor,
        int32_t delivery, const double* reinvest, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, int32_t* error);

/* KVLbfwd1: forward clean price at forward_date: KVLbifutp1 with a
** conversion factor of 1 and reinvestment at the repo rate. */
KVL_EXPORT double KVL_API KVLbfwd1(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, int32_t forward_date, double price, double repo, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, const int32_t* date_rule, const int32_t* holidays, int32_t n_holidays,
        const int32_t* calendar_flags, int32_t* error);

/* KVLbfwd: KVLbfwd1 without the business-day block. */
KVL_EXPORT double KVL_API KVLbfwd(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, int32_t forward_date, double price, double repo, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, int32_t* error);

/* KVLbnbasis1: net basis = forward price - futures_price x
** conversion_factor (the forward's error and failure value stand). */
KVL_EXPORT double KVL_API KVLbnbasis1(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, int32_t forward_date, double price, double repo, double futures_price,
        double conversion_factor, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, const int32_t* date_rule, const int32_t* holidays, int32_t n_holidays,
        const int32_t* calendar_flags, int32_t* error);

/* KVLbnbasis: KVLbnbasis1 without the business-day block. */
KVL_EXPORT double KVL_API KVLbnbasis(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, int32_t forward_date, double price, double repo, double futures_price,
        double conversion_factor, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, int32_t* error);

/* KVLbirepo1: implied repo rate (decimal per year): the rate at which the
** carry to the delivery date equals price - futures_price x
** conversion_factor; coupons reinvested at *reinvest (NULL or negative: at
** the rate being solved for). Bracketing search within [-0.99, 5], then
** [-4, 0.01], then [0, 15] (tolerance 1e-6 of face, 64 iterations); none
** converging: error 1, result -999.0. An invalid date rule does not stop
** this function: the bond set-up's code replaces 460 and the end date is
** rolled to a business day. */
KVL_EXPORT double KVL_API KVLbirepo1(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, double price, double futures_price,
        double conversion_factor, int32_t delivery, const double* reinvest, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, const int32_t* date_rule, const int32_t* holidays, int32_t n_holidays,
        const int32_t* calendar_flags, int32_t* error);

/* KVLbirepo: KVLbirepo1 without the business-day block. */
KVL_EXPORT double KVL_API KVLbirepo(
        const double* coupons, int32_t n_coupons, const int32_t* dates,
        int32_t n_dates, int32_t settlement, double price, double futures_price,
        double conversion_factor, int32_t delivery, const double* reinvest, const int32_t* dated_date,
        const int32_t* first_coupon, const int32_t* type, const int32_t* frequency,
        int32_t n_frequency, const double* coupon_tax, const double* factor,
        const int32_t* sink_dates, int32_t n_sink, const int32_t* sink_ends, int32_t n_sink_ends,
        const double* sink_amounts, const double* sink_premium, const int32_t* exdiv_days,
        const double* basis, const int32_t* days, const int32_t* mode, int32_t* error);

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
** t1 the time to the next coupon in accrual years, T the life in years of
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
** current coupon, discounted to settlement at stub_rate + d with simple
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

/* A perpetual bond pays coupons for ever and is never redeemed. Its rate may
** step: coupons[i] holds until step_dates[i] (inclusive), the last rate for
** ever. Prices are clean, per 100 of face.
**
** Common perpetual arguments, in the order KVLpbpr takes them:
**   coupons, n_coupons   coupon rates (decimal per year), at least one; more
**                        than one needs one per step date
**   reference_date       any coupon date of the bond: the coupon cycle runs
**                        through it every 12/frequency months (end-of-month
**                        rule as the type's, on for a 31st, off inside a month)
**   settlement           settlement date
**   [the market input: yield or price, a double]
**   step_dates, n_steps  ascending dates at which the rate steps (may be NULL
**                        with n_steps 0 for a flat coupon)
**   type                 bond type code (NULL: 0 with its end-of-month rule);
**                        custom codes hold the custom-type lock as readers
**   frequency            coupons per year 1,2,3,4,6,12 (NULL or 0: type's)
**   withholding_tax      fraction withheld from every coupon (NULL: 0)
**   ex_coupon_rule       how coupons are reckoned (NULL: 0):
**                          0   the type's conventions (its yield method,
**                              its ex-dividend period, its accrual)
**                         -1   compound yield (explicit sum)
**                         -2   simple yield (perpetuity formula)
**                         -3   Braess (no perpetual form: error 460)
**                         -4   Moosmueller (simple interest to the next coupon)
**                         -6   compound yield, period fractions actual/actual,
**                              and in the ex-coupon period the buyer is owed
**                              the coupon less the accrued interest
**                          any other value: coupons are paid on the
**                              following business day (calendar_flags,
**                              holidays) and discounted to the moved dates
**   calendar_flags       bit 0 Saturday works, bit 1 Sunday works (NULL: 0)
**   holidays, n_holidays ascending holiday serials (n_holidays >= 0)
**   dated_date           the last option word: start of accrual of a new
**                        issue (NULL or 0: none, every period is regular).
**                        When given and the reference date lies after it,
**                        the reference date is the first coupon date (a short
**                        or long first period); otherwise the first coupon is
**                        the first cycle date after it. Settlement must not
**                        precede it.
**   error                error code (NULL allowed)
** Price functions by the yield method of the type (or the rule above):
**   simple yield     100 * c_last * (1 - tax) / y (accrued not deducted)
**   compound yield   every coupon from the next one through the last step
**                    date (about (last step - next coupon) * f / 365 + 1 of
**                    them; 100 years more with business-day payment or an
**                    actual/365 Spanish or Portuguese type, whose exponents
**                    count actual days) discounted at v^t, v = 1/(1 + y/f),
**                    then c_last * (1 - tax) / y discounted from the last of
**                    them; less accrued interest
**   Moosmueller      as compound, the next coupon at simple interest
**                    1/(1 + t y/f) and the rest compounded from it
**   other methods    error 460
** Yields are compounded at the coupon frequency. Errors: 1 inconsistent
** arguments (no rate; several rates but not one per step date; steps
** counted without an array or out of order; unknown type; frequency outside
** the set; a dated date after settlement; bad dates; negative holiday
** count), 401 zero yield or 1 + y/f not positive, 460 no price function,
** -60 lock. Failure value -1.0. */

/* KVLpbcpn: a coupon date of the cycle, counted from settlement: k (NULL:
** 0) = 0 the last coupon date on or before settlement, 1 the next one, -1
** the one before the last. `step_date` (NULL or 0: none) is the bond's first
** step date: coupon dates before it fail with error 1. Returns the date
** serial, -1 on failure. */
KVL_EXPORT int32_t KVL_API KVLpbcpn(int32_t reference_date, int32_t settlement, const int32_t* k,
                                   const int32_t* step_date, const int32_t* type,
                                   const int32_t* frequency, int32_t* error);

/* KVLpbpr: clean price per 100 at `yield`; rounded as KVLbpr (types 0 and 1
** to six decimals, 2, 3, 16 truncated to three, 380 to five). */
KVL_EXPORT double KVL_API KVLpbpr(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                  double yield, const int32_t* step_dates, int32_t n_steps,
                                  const int32_t* type, const int32_t* frequency,
                                  const double* withholding_tax, const int32_t* ex_coupon_rule,
                                  const int32_t* calendar_flags, const int32_t* holidays,
                                  int32_t n_holidays, const int32_t* dated_date, int32_t* error);

/* KVLpbai: accrued interest per 100 at settlement, net of withholding tax,
** negative in the type's ex-dividend period. The common arguments without
** the market input and the ex-coupon rule. Rounding as KVLbai1. */
KVL_EXPORT double KVL_API KVLpbai(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                  const int32_t* step_dates, int32_t n_steps, const int32_t* type,
                                  const int32_t* frequency, const double* withholding_tax,
                                  const int32_t* calendar_flags, const int32_t* holidays,
                                  int32_t n_holidays, const int32_t* dated_date, int32_t* error);

/* KVLpbdur: duration in years at `yield`: modified (-dP/dy over the dirty
** price) or, when `duration_kind` points to a nonzero value, Macaulay
** (modified times 1 + y/f). `duration_kind` stands after the frequency. */
KVL_EXPORT double KVL_API KVLpbdur(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                   double yield, const int32_t* step_dates, int32_t n_steps,
                                   const int32_t* type, const int32_t* frequency,
                                   const int32_t* duration_kind, const double* withholding_tax,
                                   const int32_t* ex_coupon_rule, const int32_t* calendar_flags,
                                   const int32_t* holidays, int32_t n_holidays,
                                   const int32_t* dated_date, int32_t* error);

/* KVLpbconv: convexity at `yield`, d2P/dy2 over the dirty price (central
** difference of the first derivative, step 5e-6; exact for the simple-yield
** formula). Failure value -1.0 before the computation, -999.0 after. */
KVL_EXPORT double KVL_API KVLpbconv(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                    double yield, const int32_t* step_dates, int32_t n_steps,
                                    const int32_t* type, const int32_t* frequency,
                                    const double* withholding_tax, const int32_t* ex_coupon_rule,
                                    const int32_t* calendar_flags, const int32_t* holidays,
                                    int32_t n_holidays, const int32_t* dated_date,
                                    int32_t* error);

/* KVLpbvalbp: price value of a basis point per 100, -dP/dy / scale (scale
** NULL: 100.0), `scale` after the ex-coupon rule. Errors: 310 scale zero,
** negative or NaN (-999.0, checked first); set-up failure -1.0; price
** failure and lock -999.0; 401 also when the quotient overflows (a
** denormal scale). */
KVL_EXPORT double KVL_API KVLpbvalbp(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                     double yield, const int32_t* step_dates, int32_t n_steps,
                                     const int32_t* type, const int32_t* frequency,
                                     const double* withholding_tax, const int32_t* ex_coupon_rule,
                                     const double* scale, const int32_t* calendar_flags,
                                     const int32_t* holidays, int32_t n_holidays,
                                     const int32_t* dated_date, int32_t* error);

/* KVLpbval32: yield value of one tick in basis points, 1 / (KVLpbvalbp *
** ticks) (ticks NULL: 32.0). Errors: 310 ticks zero, negative or NaN
** (-999.0); otherwise KVLpbvalbp's code (test it: the result is computed
** from whatever KVLpbvalbp returned); 401 with -999.0 when the quotient is
** not finite (no coupon, so no price movement, or a denormal tick size). */
KVL_EXPORT double KVL_API KVLpbval32(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                     double yield, const int32_t* step_dates, int32_t n_steps,
                                     const int32_t* type, const int32_t* frequency,
                                     const double* withholding_tax, const int32_t* ex_coupon_rule,
                                     const double* ticks, const int32_t* calendar_flags,
                                     const int32_t* holidays, int32_t n_holidays,
                                     const int32_t* dated_date, int32_t* error);

/* KVLpbcamt: the coupon of the current (regular) period per 100, net of
** withholding tax, at the rate in force on the next coupon date. */
KVL_EXPORT double KVL_API KVLpbcamt(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                    const int32_t* step_dates, int32_t n_steps,
                                    const int32_t* type, const int32_t* frequency,
                                    const double* withholding_tax, int32_t* error);

/* KVLpbyld: yield (decimal, compounded at the coupon frequency) from a clean
** `price` per 100: Newton from the current yield c*(1-tax)*100/price (0.05
** below a 1% coupon) over positive yields, tolerance 1e-6 of face, 64
** iterations; then a bracketing search on [-0.9 f, 25]. Errors: 350 price
** zero, negative or not finite (-1.0); 460 no price function; 1 with -999.0
** when both solvers fail. Unrounded. */
KVL_EXPORT double KVL_API KVLpbyld(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                   double price, const int32_t* step_dates, int32_t n_steps,
                                   const int32_t* type, const int32_t* frequency,
                                   const double* withholding_tax, const int32_t* ex_coupon_rule,
                                   const int32_t* calendar_flags, const int32_t* holidays,
                                   int32_t n_holidays, const int32_t* dated_date, int32_t* error);

/* The carry functions hold the bond from settlement to an end date,
** financed at `repo_rate` (decimal per year, at the coupon frequency under
** continuous compounding). `mode` (NULL: 0): bits 1-2 the financing
** interest, 0 simple (compounding at coupon dates), 2 simple on the start
** amount over the whole period, 4 continuous; bit 0 reinvests coupons under
** the same mode (simply under 2). Days count over the type's money-market
** year (360 or 365). An end date in an ex-coupon period keeps the coming
** coupon, discounted at the reinvestment rate. Errors: 160 end date not
** after settlement (-999.0); 1 inconsistent arguments or an end-date
** description that cannot be built (-1.0); -60 lock. Unrounded. */

/* KVLpbcarry: carry per 100 of face to `end_date`: accrued interest gained
** plus coupons (reinvested at the repo rate when bit 0 of the mode is set)
** minus financing of price + accrued. */
KVL_EXPORT double KVL_API KVLpbcarry(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                     int32_t end_date, double price, double repo_rate,
                                     const int32_t* step_dates, int32_t n_steps,
                                     const int32_t* type, const int32_t* frequency,
                                     const double* withholding_tax, const int32_t* ex_coupon_rule,
                                     const int32_t* calendar_flags, const int32_t* holidays,
                                     int32_t n_holidays, const int32_t* dated_date,
                                     const int32_t* mode, int32_t* error);

/* KVLpbfwd: forward clean price per 100 for `forward_date`: price - carry,
** coupons reinvested at `reinvestment` (NULL or negative: the repo rate). */
KVL_EXPORT double KVL_API KVLpbfwd(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                   int32_t forward_date, double price, double repo_rate,
                                   const int32_t* step_dates, int32_t n_steps,
                                   const int32_t* type, const int32_t* frequency,
                                   const double* withholding_tax, const int32_t* ex_coupon_rule,
                                   const int32_t* calendar_flags, const int32_t* holidays,
                                   int32_t n_holidays, const int32_t* dated_date,
                                   const double* reinvestment, const int32_t* mode,
                                   int32_t* error);

/* KVLpbirepo: the repo rate (decimal) at which the forward price for
** `forward_date` is `forward_price` (coupons reinvested at `reinvestment`,
** NULL or negative: at the repo rate sought). Bracketing search, tolerance
** 1e-6 of face, on [-0.99, 5], then [-4, 0.01], then [0, 15]; -999.0 with
** error 1 when none holds the rate, 160 with -999.0 for a forward date not
** after settlement. */
KVL_EXPORT double KVL_API KVLpbirepo(const double* coupons, int32_t n_coupons, int32_t reference_date, int32_t settlement,
                                     double price, double forward_price, int32_t forward_date,
                                     const int32_t* step_dates, int32_t n_steps,
                                     const int32_t* type, const int32_t* frequency,
                                     const double* withholding_tax, const int32_t* ex_coupon_rule,
                                     const int32_t* calendar_flags, const int32_t* holidays,
                                     int32_t n_holidays, const int32_t* dated_date,
                                     const double* reinvestment, const int32_t* mode,
                                     int32_t* error);

/* ---- end of perpetual bonds ---- */


/* ======================================================================== */
/* Brady bonds                                                              */
/* ======================================================================== */

/* A Brady bond's principal is backed by zero-coupon collateral and its next
** few coupons by a rolling interest guarantee. Its value splits into three
** parts at three rates: the first n coupons at the guarantee rate yG
** (dG = 1/(1 + yG/f) per period), the other coupons at the stripped yield yS
** as of the end of the guarantee and brought back at the guarantee rate
** (dG^n * dS^(t - n), dS = 1/(1 + yS/f)), and the principal: at the
** stripped yield when not collateralised, else each repayment p at t is
** worth p * ((1 - dC^(T - t)) * dS^t + dC^T), T the time of the last flow
** and dC = (1/(1 + yC/2))^(2/f) (collateral yields are semi-annual). A
** bullet repayment is thus worth 100 * dC^T whatever the stripped yield.
** The flows are KVLbcshflw's (times t in coupon periods) and the accrued
** interest KVLbai1's, built from the common bond arguments; f is the
** frequency given, else the type's, else 2.
**
** Arguments of the three functions, in this order:
**   coupons, n_coupons, dates, n_dates, settlement   common bond words 1-5
**   three doubles: KVLbradypr and KVLbradydur take yG, yC, yS;
**                  KVLbradyyld takes the clean price, yG, yC
**   guaranteed     number of guaranteed coupons (NULL: 2; capped at the
**                  number of flows)
**   collateral     1 collateralised principal, 0 not (NULL: 1)
**   dated_date, first_coupon, type, frequency, n_frequency, redemption,
**   coupon_tax, yield_method, bd_flags, holidays, n_holidays, factor,
**   sink_dates, n_sink, sink_ends, n_sink_ends, sink_amounts, sink_premium,
**   exdiv_days     the common bond arguments as KVLbpr takes them after its
**                  yield, without the tax on the discount, the horizon and
**                  the issue price (no capital-gains tax on Brady principal)
**   error          error code (NULL allowed)
** Errors: 250 a rate below zero or not a number; 460 a negative number of
** guaranteed coupons; 350 a price zero or below; 21 no stripped yield found;
** KVLbcshflw's and KVLbai1's codes (1 invalid description, -50 memory);
** -60 lock. Failure value -1.0. Results are not rounded. */

/* KVLbradypr: clean price per 100 from the guarantee rate, the collateral
** yield and the stripped yield. */
KVL_EXPORT double KVL_API KVLbradypr(const double* coupons, int32_t n_coupons,
                                     const int32_t* dates, int32_t n_dates, int32_t settlement,
                                     double guarantee_rate, double collateral_yield,
                                     double stripped_yield, const int32_t* guaranteed,
                                     const int32_t* collateral, const int32_t* dated_date,
                                     const int32_t* first_coupon, const int32_t* type,
                                     const int32_t* frequency, int32_t n_frequency,
                                     const double* redemption, const double* coupon_tax,
                                     const int32_t* yield_method, const int32_t* bd_flags,
                                     const int32_t* holidays, int32_t n_holidays,
                                     const double* factor, const int32_t* sink_dates,
                                     int32_t n_sink, const int32_t* sink_ends,
                                     int32_t n_sink_ends, const double* sink_amounts,
                                     const double* sink_premium, const int32_t* exdiv_days,
                                     int32_t* error);

/* KVLbradyyld: the stripped yield (decimal, at the coupon frequency) that
** reproduces a clean price per 100, given the guarantee rate and the
** collateral yield: a secant search from the trial values 0.0 and 0.1, then
** a bracket grown from them (down to -0.999 f, up to 1000) halved to 1e-13;
** the dirty value is matched to 1e-9 per 100. Error 21 when no yield moves
** the value to the price (every coupon guaranteed and the principal
** collateralised, or a price out of reach). */
KVL_EXPORT double KVL_API KVLbradyyld(const double* coupons, int32_t n_coupons,
                                      const int32_t* dates, int32_t n_dates, int32_t settlement,
                                      double price, double guarantee_rate,
                                      double collateral_yield, const int32_t* guaranteed,
                                      const int32_t* collateral, const int32_t* dated_date,
                                      const int32_t* first_coupon, const int32_t* type,
                                      const int32_t* frequency, int32_t n_frequency,
                                      const double* redemption, const double* coupon_tax,
                                      const int32_t* yield_method, const int32_t* bd_flags,
                                      const int32_t* holidays, int32_t n_holidays,
                                      const double* factor, const int32_t* sink_dates,
                                      int32_t n_sink, const int32_t* sink_ends,
                                      int32_t n_sink_ends, const double* sink_amounts,
                                      const double* sink_premium, const int32_t* exdiv_days,
                                      int32_t* error);

/* KVLbradydur: duration in years, sum(t * PV) / (f * sum(PV)) over the parts
** of the flows, each part's present value at its own rate and time: a
** guaranteed or sovereign coupon at its date; a collateralised repayment's
** stripped part at its date and its collateral part (p * dC^T) at T. Error 1
** when the total value is not positive. */
KVL_EXPORT double KVL_API KVLbradydur(const double* coupons, int32_t n_coupons,
                                      const int32_t* dates, int32_t n_dates, int32_t settlement,
                                      double guarantee_rate, double collateral_yield,
                                      double stripped_yield, const int32_t* guaranteed,
                                      const int32_t* collateral, const int32_t* dated_date,
                                      const int32_t* first_coupon, const int32_t* type,
                                      const int32_t* frequency, int32_t n_frequency,
                                      const double* redemption, const double* coupon_tax,
                                      const int32_t* yield_method, const int32_t* bd_flags,
                                      const int32_t* holidays, int32_t n_holidays,
                                      const double* factor, const int32_t* sink_dates,
                                      int32_t n_sink, const int32_t* sink_ends,
                                      int32_t n_sink_ends, const double* sink_amounts,
                                      const double* sink_premium, const int32_t* exdiv_days,
                                      int32_t* error);

/* ---- end of Brady bonds ---- */


/* ======================================================================== */
/* Inflation-linked bonds                                                   */
/* ======================================================================== */

/*
** Index-linked gilts (8-month indexation lag): KVLilg...
**
** Coupons and redemption are scaled by an index ratio; the next coupon is
** already fixed and passed in cash, later flows are projected from
** latest_index / base_index at an assumed annual inflation rate. Prices are
** cash (inflation-adjusted) clean prices per 100 nominal; yields are real
** yields, semi-annual. Valuation follows the UK Debt Management Office's
** formula: the projected flows are discounted on the quasi-coupon grid at
** v = 1 / ((1 + y/2) * sqrt(1 + inflation)); with only the redemption left
** the price is a money-market one, 100 * (coupon + redemption) / (1 + t*y),
** t = actual days to the (adjusted) redemption / 365. Gilts go ex-dividend
** seven business days before the coupon: then the next coupon is not
** received and the accrued interest is negative.
**
** Common arguments:
**   real_coupon          annual coupon rate before indexation (0.025 = 2.5 %), > 0
**   next_coupon_amount   cash amount of the next coupon per 100 nominal, > 0
**   base_index, latest_index   index values (> 0); their ratio is the known index ratio
**   maturity, settlement date serials; settlement <= maturity
**   previous_coupon, next_coupon   optional (NULL or 0: from the semi-annual
**                        schedule anchored at maturity; a next coupon within
**                        27 days of maturity becomes the maturity); given,
**                        previous < next <= maturity. A settlement after the
**                        given next coupon trades ex that coupon (first flow
**                        0) and accrues past it: accrued = 2 x accrued
**                        fraction x next_coupon_amount / period fraction -
**                        next_coupon_amount
**   inflation            optional assumed annual inflation (NULL: 0.03), > -0.5
**   pay_on_business_day  optional; 1 moves payment dates to the following business day
**   holiday_options      optional; bit 0 (value 1) Saturday works, bit 1
**                        (value 2) Sunday works, as bd_flags
**   holidays, holiday_count   ascending holiday serials (count >= 0)
**   ex_dividend_override optional n: n >= 1 n business days before the
**                        coupon, n < 1 the coupon date plus n calendar days
**   end_of_month         optional end-of-month rule of the schedule (a maturity
**                        on the 31st turns it on, one off a month end off)
**   extra_date           ("2" variants, optional) a date in the month whose
**                        index is latest_index; NULL or 0: the month two
**                        months before settlement
**   reserved             ignored
** Every failure sets error 1 (-50 when memory is not available) and returns -1.0
** (0 rows for the cash-flow functions).
*/

/* Clean price per 100 nominal at real yield `yield`: the dirty price
** rounded to 6 decimals less the accrued interest. -100.0 when the
** money-market denominator vanishes. */
KVL_EXPORT double KVL_API KVLilgpr(double real_coupon, double next_coupon_amount, double base_index, double latest_index, int32_t maturity, int32_t settlement, double yield, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* KVLilgpr with the month of the latest index given by `extra_date`. */
KVL_EXPORT double KVL_API KVLilgpr2(double real_coupon, double next_coupon_amount, double base_index, double latest_index, int32_t maturity, int32_t settlement, double yield, const int32_t* extra_date, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Real yield (decimal, semi-annual) from the clean price per 100 nominal. */
KVL_EXPORT double KVL_API KVLilgyld(double real_coupon, double next_coupon_amount, double base_index, double latest_index, int32_t maturity, int32_t settlement, double price, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* KVLilgyld with the month of the latest index given by `extra_date`. */
KVL_EXPORT double KVL_API KVLilgyld2(double real_coupon, double next_coupon_amount, double base_index, double latest_index, int32_t maturity, int32_t settlement, double price, const int32_t* extra_date, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Accrued interest per 100 nominal, rounded to 6 decimals: the next coupon
** times accrued days / days of the period, less the coupon when ex-dividend. */
KVL_EXPORT double KVL_API KVLilgai(double real_coupon, double next_coupon_amount, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t* error);

/* Projected cash flows. Allocates the payment dates (*dates_out) and the
** coupon amounts per 100 nominal (*amounts_out): the next coupon (0 when
** ex-dividend), the later coupons and a short final coupon at maturity. The
** projected redemption per 100 goes to *redemption_out. Each output may be
** NULL (that column is not made). Returns the number of rows; free the
** columns with KVLilgcshflw_free. */
KVL_EXPORT int32_t KVL_API KVLilgcshflw(int32_t** dates_out, double** amounts_out, double* redemption_out, double real_coupon, double next_coupon_amount, double base_index, double latest_index, int32_t maturity, int32_t settlement, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* KVLilgcshflw with the month of the latest index given by `extra_date`. */
KVL_EXPORT int32_t KVL_API KVLilgcshflw2(int32_t** dates_out, double** amounts_out, double* redemption_out, double real_coupon, double next_coupon_amount, double base_index, double latest_index, int32_t maturity, int32_t settlement, const int32_t* extra_date, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* pay_on_business_day, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* ex_dividend_override, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Frees the two columns returned by KVLilgcshflw / KVLilgcshflw2 (NULL is
** harmless). The same function as KVLfrncshflw_free. */
KVL_EXPORT void KVL_API KVLilgcshflw_free(int32_t* dates, double* amounts);

/*
** U.S. inflation-indexed securities (TIPS, semi-annual): KVLtips...
** French inflation-indexed OATs (OATi, annual): KVLoati...
**
** The reference index at a date is the one index value given, or, with the
** values I0, I1 of two consecutive months, I0 + (day - 1) / days_in_month *
** (I1 - I0). The index ratio is settlement reference / base reference.
** Neither is rounded: the U.S. Treasury's published tables round the Ref
** CPI and the index ratio to five decimals, this library does not (the
** accrued interest and prices may differ from the tables' by a few
** millionths per 100; pass the published values, one each, to match). Prices
** are real clean prices per 100 (the Treasury's formula, 31 CFR 356
** Appendix B; the French Treasury's for OATi) from a real yield compounded
** at the coupon frequency; the projected inflation-adjusted flows are
** discounted at (1 + y/f) * (1 + inflation)^(1/f) per period and the result
** divided by the index ratio. Later index ratios grow at the assumed
** inflation and are rounded to 5 decimals; the principal is never repaid
** below par. No ex-dividend period.
**
** Common arguments:
**   coupon               real coupon rate in percent (1.875 = 1.875 %), > 0
**   base_index, base_count   1 value (the base reference index) or 2 (the
**                        index values of the dated date's month pair)
**   settlement_index, settlement_index_count   1 or 2 values likewise, at settlement
**   maturity, settlement date serials; settlement <= maturity
**   yield                real yield, decimal, compounded at the coupon frequency
**   option_a             optional; 1 moves payment dates (cash-flow table) to
**                        the following business day
**   next_coupon_amount   optional, percent of par, inflation-adjusted; when
**                        given the next coupon is fixed at it, otherwise it is
**                        projected from the latest settlement index value
**   option_b             price basis: 0 real clean price, 1 inflation-adjusted clean price
**   previous_coupon, next_coupon   optional (NULL or 0: from the schedule anchored at maturity)
**   inflation            optional assumed annual inflation (NULL: 0.03), > -0.5
**   option_c             optional dated date of the base reference index
**                        (NULL or 0: the maturity's day of month)
**   holiday_options      optional; bit 0 (value 1) Saturday works, bit 1
**                        (value 2) Sunday works, as bd_flags
**   holidays, holiday_count   ascending holiday serials (count >= 0)
**   end_of_month         optional end-of-month rule of the schedule
**   reserved             ignored
** Errors: 70 a base count above 2 or a settlement count of 3 or more (checked
** first); 50 a NULL index pointer; 1 any other invalid argument or a failed
** yield search; 152/153 bad month/year in an index interpolation; -50 memory.
** Failure value -1.0 (0 rows for the cash-flow functions).
*/

/* Real clean price per 100 (option_b = 1: inflation-adjusted), 3 decimals. */
KVL_EXPORT double KVL_API KVLtipspr(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double yield, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Real yield from the clean price per 100 (in the basis option_b selects). */
KVL_EXPORT double KVL_API KVLtipsyld(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double price, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Inflation-adjusted accrued interest per 100, 6 decimals: accrued days /
** days of the period * coupon / 2 * index ratio. A NULL index pointer
** stands for a reference index of 100 (one value). */
KVL_EXPORT double KVL_API KVLtipsai(double coupon, int32_t maturity, int32_t settlement, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t* error);

/* Projected inflation-adjusted cash flows per 100: one row per coupon date,
** the redemption (index ratio floored at 1) added to the last row. Each
** output may be NULL. Returns the number of rows; free with KVLtipscshflw_free. */
KVL_EXPORT int32_t KVL_API KVLtipscshflw(int32_t** dates_out, double** amounts_out, double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Modified duration in years: -(dP/dy) / dirty price. Not rounded. */
KVL_EXPORT double KVL_API KVLtipsdur(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double yield, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Convexity in years squared: (d2P/dy2) / dirty price. Not rounded. */
KVL_EXPORT double KVL_API KVLtipsconv(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double yield, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Frees the columns of KVLtipscshflw (NULL is harmless); same as KVLfrncshflw_free. */
KVL_EXPORT void KVL_API KVLtipscshflw_free(int32_t* dates, double* amounts);

/* OATi clean price: the inflation-adjusted dirty value cut at 6 decimals,
** less the accrued interest, divided by the index ratio (option_b = 0), 3 decimals. */
KVL_EXPORT double KVL_API KVLoatipr(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double yield, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* OATi real yield (annual) from the clean price per 100. */
KVL_EXPORT double KVL_API KVLoatiyld(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double price, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* OATi inflation-adjusted accrued interest per 100 (as KVLtipsai, annual coupon). */
KVL_EXPORT double KVL_API KVLoatiai(double coupon, int32_t maturity, int32_t settlement, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, const int32_t* previous_coupon, const int32_t* next_coupon, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t* error);

/* OATi projected cash flows (as KVLtipscshflw); free with KVLoaticshflw_free. */
KVL_EXPORT int32_t KVL_API KVLoaticshflw(int32_t** dates_out, double** amounts_out, double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* OATi modified duration in years. Not rounded. */
KVL_EXPORT double KVL_API KVLoatidur(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double yield, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* OATi convexity in years squared. Not rounded. */
KVL_EXPORT double KVL_API KVLoaticonv(double coupon, const double* base_index, int32_t base_count, const double* settlement_index, int32_t settlement_index_count, int32_t maturity, int32_t settlement, double yield, const int32_t* option_a, const double* next_coupon_amount, int32_t option_b, const int32_t* previous_coupon, const int32_t* next_coupon, const double* inflation, const int32_t* option_c, const int32_t* holiday_options, const int32_t* holidays, int32_t holiday_count, const int32_t* end_of_month, int32_t reserved, int32_t* error);

/* Frees the columns of KVLoaticshflw (NULL is harmless); same as KVLfrncshflw_free. */
KVL_EXPORT void KVL_API KVLoaticshflw_free(int32_t* dates, double* amounts);

/* ---- end of inflation-linked bonds ---- */


/* ======================================================================== */
/* PIK bonds                                                                */
/* ======================================================================== */

/* A PIK (payment-in-kind) bond pays at each coupon date a cash coupon and a
** coupon in kind; the in-kind part is added to the principal, so later cash
** coupons and the redemption are paid on the grown principal. Prices and
** accrued interest are per 100 of original face.
**
** Common PIK arguments, in this order:
**   cash_rates, n_cash   cash coupon rates (decimal per year) per step
**   pik_rates, n_pik     in-kind coupon rates (decimal per year) per step
**   dates, n_dates       ascending step dates; the last is maturity. Rate i is
**                        in force up to dates[i]. With one date both counts
**                        are 1; with more, a single in-kind rate needs one cash
**                        rate per date (n_cash = n_dates), and one in-kind
**                        rate per date (n_pik = n_dates) goes with one cash
**                        rate per date or a single cash rate.
**   settlement           settlement date (not after maturity)
**   [the market input or the function's own arguments]
**   dated_date           start of accrual (NULL or 0: derived)
**   first_coupon         first coupon date (NULL or 0: derived; a derived one
**                        within 27 days of maturity is maturity)
**   type                 0 U.S. Treasury, 3 corporate, 500/510/530/540 generic
**                        (act/act, act/365, 30/360, 30E/360) and their
**                        end-of-month variants (13, 501, ...); NULL: 0 with
**                        the end-of-month rule. Other types give error 1.
**   frequency            coupons per year 1,2,3,4,6,12 (NULL or 0: type's)
**   redemption           per 100 of face, not negative (NULL: 100)
**   call_date            redemption date (NULL or 0: maturity); not after
**                        maturity, not before settlement or the first coupon
**   pay_on_business_day  nonzero: payments move to the following business day
**                        and are discounted to the moved dates (NULL: 0)
**   holiday_options      bit 0 Saturday works, bit 1 Sunday works (NULL: 0)
**   holidays, n_holidays ascending holiday serials (n_holidays >= 0)
**   error                receives the error code (NULL allowed)
** Error 1 for every invalid description, among them rates that would make
** an amount (a coupon on the capitalised principal, the redemption) exceed
** 1e100 times the face. */

/* KVLpikpr: clean price per 100 of original face at `yield` (decimal per
** year, compounded at the coupon frequency). With one period left the final
** amount (cash coupon, in-kind coupon, redemption) is discounted at simple
** interest. Rounding: type 0 to 6 decimals, 3 cleaned at 8 decimals and
** truncated to 3, others unrounded. Errors: 1 invalid description (-1.0);
** 401 vanishing discount denominator (1 + t*yield = 0 over one period, or
** 1 + yield/frequency not positive, or so near zero that the price
** overflows), unrounded -100.0; -60 lock. */
KVL_EXPORT double KVL_API KVLpikpr(const double* cash_rates, int32_t n_cash,
                                   const double* pik_rates, int32_t n_pik, const int32_t* dates,
                                   int32_t n_dates, int32_t settlement, double yield,
                                   const int32_t* dated_date, const int32_t* first_coupon,
                                   const int32_t* type, const int32_t* frequency,
                                   const double* redemption, const int32_t* call_date,
                                   const int32_t* pay_on_business_day,
                                   const int32_t* holiday_options, const int32_t* holidays,
                                   int32_t n_holidays, int32_t* error);

/* KVLpikyld: yield (decimal per year, compounded at the coupon frequency)
** from a clean `price` per 100 of original face. One period left: the
** money-market yield in closed form (0 when the final amount equals the
** dirty price). Otherwise Newton from 0.05 (tolerance 1e-6 on the price as a
** fraction of face, 64 iterations, yields in (-1, 25)), then a bracketing
** search on [-0.9 * frequency, 25]. Rounding: type 0 to 8 decimals, 3 to 5,
** others unrounded. Errors: 1 invalid description (-1.0); 460 price zero,
** negative or not finite, zero time to the call date, or a one-period price
** so near zero that the yield overflows (-1.0); 1 with
** -999.0 when both solvers fail; -60 lock. */
KVL_EXPORT double KVL_API KVLpikyld(const double* cash_rates, int32_t n_cash,
                                    const double* pik_rates, int32_t n_pik, const int32_t* dates,
                                    int32_t n_dates, int32_t settlement, double price,
                                    const int32_t* dated_date, const int32_t* first_coupon,
                                    const int32_t* type, const int32_t* frequency,
                                    const double* redemption, const int32_t* call_date,
                                    const int32_t* pay_on_business_day,
                                    const int32_t* holiday_options, const int32_t* holidays,
                                    int32_t n_holidays, int32_t* error);

/* KVLpikai: accrued cash interest per 100 of original face at settlement
** (the in-kind part does not accrue as interest). Takes the common PIK
** arguments up to the frequency. Errors: 1 invalid description, -60 lock.
** Failure value -1.0. */
KVL_EXPORT double KVL_API KVLpikai(const double* cash_rates, int32_t n_cash,
                                   const double* pik_rates, int32_t n_pik, const int32_t* dates,
                                   int32_t n_dates, int32_t settlement, const int32_t* dated_date,
                                   const int32_t* first_coupon, const int32_t* type,
                                   const int32_t* frequency, int32_t* error);

/* KVLpikcshflw: the remaining cash flows as four caller-owned parallel
** arrays, allocated by the library and released only by KVLpikcshflw_free.
** Each out pointer may be NULL (that column is not made):
**   dates_out      payment dates (moved to business days when the bond pays
**                  so); the last row is the call date
**   coupons_out    cash coupons per 100 of original face, on the principal
**                  grown by the in-kind coupons before each date
**   principal_out  principal repaid per 100 of original face: 0 before the
**                  last row, redemption times the capitalised principal at
**                  the last row (with one period left, the redemption plus
**                  the final in-kind coupon)
**   periods_out    discounting time from settlement in coupon periods
** Then the common PIK arguments without a market input. Discounting each
** row's coupon plus principal at v^periods, v = 1 / (1 + yield/frequency),
** and subtracting the accrued interest gives KVLpikpr before rounding (with
** more than one period left). Returns the number of rows; 0 on failure with
** every out pointer NULL. Errors: 1 invalid description, -50 memory, -60
** lock. */
KVL_EXPORT int32_t KVL_API KVLpikcshflw(int32_t** dates_out, double** coupons_out,
                                        double** principal_out, double** periods_out,
                                        const double* cash_rates, int32_t n_cash,
                                        const double* pik_rates, int32_t n_pik,
                                        const int32_t* dates, int32_t n_dates, int32_t settlement,
                                        const int32_t* dated_date, const int32_t* first_coupon,
                                        const int32_t* type, const int32_t* frequency,
                                        const double* redemption, const int32_t* call_date,
                                        const int32_t* pay_on_business_day,
                                        const int32_t* holiday_options, const int32_t* holidays,
                                        int32_t n_holidays, int32_t* error);

/* KVLpikcshflw_free: releases the arrays KVLpikcshflw returned (any may be
** NULL). Never free them in any other way. */
KVL_EXPORT void KVL_API KVLpikcshflw_free(int32_t* dates, double* coupons, double* principal,
                                          double* periods);

/* KVLpikdur: duration in years at `yield`: modified duration -dP/dy / dirty
** price, or, when `duration_kind` points to a nonzero value, Macaulay
** duration (modified times 1 + yield/frequency). Arguments: the KVLpikpr list
** with `duration_kind` (NULL: modified) after `redemption`. Errors as
** KVLpikpr; failure value -1.0. */
KVL_EXPORT double KVL_API KVLpikdur(const double* cash_rates, int32_t n_cash,
                                    const double* pik_rates, int32_t n_pik, const int32_t* dates,
                                    int32_t n_dates, int32_t settlement, double yield,
                                    const int32_t* dated_date, const int32_t* first_coupon,
                                    const int32_t* type, const int32_t* frequency,
                                    const double* redemption, const int32_t* duration_kind,
                                    const int32_t* call_date, const int32_t* pay_on_business_day,
                                    const int32_t* holiday_options, const int32_t* holidays,
                                    int32_t n_holidays, int32_t* error);

/* KVLpikvalbp: price value of a basis point, -dP/dy / scale per 100 of face
** (scale NULL: 100.0, so one basis point of yield). Arguments: the KVLpikpr
** list with `scale` after `call_date`. Errors: 310 scale zero, negative or
** NaN (-999.0, checked first); 1 invalid description (-1.0); 401 in the price
** or an overflowing quotient (-999.0); -60 lock (-999.0). */
KVL_EXPORT double KVL_API KVLpikvalbp(const double* cash_rates, int32_t n_cash,
                                      const double* pik_rates, int32_t n_pik,
                                      const int32_t* dates, int32_t n_dates, int32_t settlement,
                                      double yield, const int32_t* dated_date,
                                      const int32_t* first_coupon, const int32_t* type,
                                      const int32_t* frequency, const double* redemption,
                                      const int32_t* call_date, const double* scale,
                                      const int32_t* pay_on_business_day,
                                      const int32_t* holiday_options, const int32_t* holidays,
                                      int32_t n_holidays, int32_t* error);

/* KVLpikval32: yield value of one tick, 1 / (KVLpikvalbp * ticks) in basis
** points (ticks NULL: 32.0, a 32nd of a point). Arguments as KVLpikvalbp
** with `ticks` in place of the scale. Errors: 310 ticks zero, negative or
** NaN (-999.0); otherwise KVLpikvalbp's code, the result being computed from
** whatever it returned (test the error code); 401 with -999.0 when the
** quotient is not finite (no price movement, a denormal tick size). */
KVL_EXPORT double KVL_API KVLpikval32(const double* cash_rates, int32_t n_cash,
                                      const double* pik_rates, int32_t n_pik,
                                      const int32_t* dates, int32_t n_dates, int32_t settlement,
                                      double yield, const int32_t* dated_date,
                                      const int32_t* first_coupon, const int32_t* type,
                                      const int32_t* frequency, const double* redemption,
                                      const int32_t* call_date, const double* ticks,
                                      const int32_t* pay_on_business_day,
                                      const int32_t* holiday_options, const int32_t* holidays,
                                      int32_t n_holidays, int32_t* error);

/* ---- end of PIK bonds ---- */

/* ======================================================================== */
/* Portfolios                                                               */
/* ======================================================================== */

/* Measures of KVLbbatch, combined with | in its `measures` argument. */
enum {
  KVL_BATCH_PRICE = 1,              /* clean price per 100 */
  KVL_BATCH_YIELD = 2,              /* yield, decimal */
  KVL_BATCH_ACCRUED = 4,            /* accrued interest per 100 */
  KVL_BATCH_MODIFIED_DURATION = 8,  /* years */
  KVL_BATCH_MACAULAY_DURATION = 16, /* years */
  KVL_BATCH_CONVEXITY = 32,         /* years squared */
  KVL_BATCH_PVBP = 64               /* price change per 100 for one basis point */
};

/* Market input of a KVLbbatch row. */
enum { KVL_BATCH_GIVEN_YIELD = 0, KVL_BATCH_GIVEN_PRICE = 1 };

/* KVLbbatch: values `n` straight bonds in one call, one bond per row of
** caller-owned columns, on several threads. Every row is valued by the
** single-bond exports themselves, so each number and each error code equals
** what KVLbpr, KVLbyld, KVLbai, KVLbdur, KVLbconv and KVLbvalbp return for
** that row (single coupon, final maturity date only, no taxes, holidays or
** sinking fund). Rows are independent: a failing row never stops the others.
**   n              rows, 0 or more (0: after the columns are checked,
**                  nothing is written and the result is 0)
**   types          bond type code per row (required)
**   coupons        annual coupon rate per row, decimal (required)
**   maturities     maturity date serial per row (required)
**   settlements    settlement date serial per row (required)
**   market         per row the clean price per 100 or the yield (decimal,
**                  at the type's quotation frequency); required unless
**                  only KVL_BATCH_ACCRUED is asked for
**   market_kind    KVL_BATCH_GIVEN_YIELD (0) or KVL_BATCH_GIVEN_PRICE (1):
**                  what `market` holds in every row, when market_kinds is NULL
**   market_kinds   NULL, or 0 / 1 per row as market_kind (any other value
**                  fails that row with 460, all its columns NaN)
**   frequencies    NULL, or coupons per year per row (0: the type's default)
**   dated_dates    NULL, or the dated date per row (0: derived)
**   first_coupons  NULL, or the first coupon date per row (0: derived)
**   redemptions    NULL (100 for every row), or redemption per 100 per row
**   measures       KVL_BATCH_... bits of the measures wanted (at least one)
**   threads        worker threads: 0 all hardware threads, 1 the calling
**                  thread only; at most 256 are used and none for fewer than
**                  32 rows each
**   prices, yields, accrued, modified_durations, macaulay_durations,
**   convexities, pvbps
**                  output columns of n doubles, one per measure; required
**                  for the measures asked for, ignored (may be NULL) for the
**                  others
**   row_errors     NULL, or n int32 that receive each row's error code
**   failed_measures NULL, or n int32 that receive the KVL_BATCH_... bit of
**                  the measure that failed in a row (0 when none failed)
**   error          receives the call's error code; NULL allowed
** Per row: when the market input is a price and a yield-based measure (yield,
** durations, convexity, PVBP) is wanted, the yield comes from KVLbyld first;
** when it is a yield and the price is wanted, the price comes from KVLbpr.
** The given input is copied to its own column when that measure is asked
** for. Then accrued interest, modified and Macaulay durations, convexity and
** PVBP follow in that order, each at the given or solved yield. A row stops
** at its first failing measure: that measure's column receives the
** export's failure value, the columns of the measures after it NaN, and
** row_errors the export's code (1, 350, 401, 460, -60, ...). Columns are
** in the order price, yield, accrued, modified duration, Macaulay duration,
** convexity, PVBP (a failed yield from a price leaves the price copied).
** Custom types (1000..1099) take the custom-type lock per row as a single
** call does; the worker threads only read, and a caller that redefines
** custom types from another thread during the call must have called
** KVLbond_initMT, as for any use from several threads.
** Returns the number of rows with a nonzero row error, or -1 when the call
** is refused before any row is valued (nothing is written then):
** 50 a required column or output is NULL, 60 n or threads below 0,
** 460 `measures` empty or with unknown bits, or market_kind not 0 or 1. */
KVL_EXPORT int32_t KVL_API KVLbbatch(int32_t n, const int32_t* types, const double* coupons,
                                     const int32_t* maturities, const int32_t* settlements,
                                     const double* market, int32_t market_kind,
                                     const int32_t* market_kinds, const int32_t* frequencies,
                                     const int32_t* dated_dates, const int32_t* first_coupons,
                                     const double* redemptions, int32_t measures,
                                     int32_t threads, double* prices, double* yields,
                                     double* accrued, double* modified_durations,
                                     double* macaulay_durations, double* convexities,
                                     double* pvbps, int32_t* row_errors,
                                     int32_t* failed_measures, int32_t* error);

/* ---- end of portfolios ---- */

#ifdef __cplusplus
}
#endif

#endif /* K_BOND_H */
