// Loads k_bond.dll the way spreadsheets and Windows programs do (LoadLibrary,
// then GetProcAddress by plain name) and calls exports through function
// pointers typed from the public header, so on 32-bit Windows they carry the
// header's __stdcall. On 32-bit the stack pointer is compared around every
// call: a callee that leaves its arguments on the stack (cdecl) would shift it
// by the argument size.
//
// The set of exports grows as families land; every check below is compiled
// only when the header declares the function (kbond_export_list.h is
// generated from include/k_bond.h at build time).
//
// Usage: kbond_stdcall_smoke [path\to\k_bond.dll]   exit status 0 = all passed
#include <windows.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <thread>
#include <type_traits>
#include <vector>

#include "k_bond.h"
#include "kbond_export_list.h"

namespace {

std::atomic<int> g_failures{0};
std::atomic<int> g_checks{0};
HMODULE g_dll = nullptr;

[[maybe_unused]] void check(bool ok, const char* what) {
  ++g_checks;
  if (!ok) {
    ++g_failures;
    std::printf("FAIL: %s\n", what);
  }
}

[[maybe_unused]] void check_near(double got, double want, double tol, const char* what) {
  ++g_checks;
  if (!(std::fabs(got - want) <= tol)) {
    ++g_failures;
    std::printf("FAIL: %s: got %.10f, want %.10f\n", what, got, want);
  }
}

#if defined(__i386__)
// Set while the stack check tests itself on a deliberately wrong call.
bool g_self_test = false;
bool g_self_test_caught = false;

void report_stack(const char* name, uintptr_t before, uintptr_t after) {
  if (g_self_test) {
    g_self_test_caught = before - after == 8;
    return;
  }
  ++g_checks;
  if (before != after) {
    ++g_failures;
    std::printf("FAIL: %s left %d bytes on the stack: not the callee-cleans convention\n", name,
                static_cast<int>(before - after));
  }
}
#endif

// Calls fn(args...) and, on 32-bit x86, verifies that the stack pointer is the
// same after the call as before it. Built without optimisation (see
// cmake/windows_dll.cmake) so that the compiler's own stack adjustments around
// the call cancel out.
template <class Fn, class... Args>
auto stack_checked_call(const char* name, Fn fn, Args... args) {
  using Result = std::invoke_result_t<Fn, Args...>;
#if defined(__i386__)
  uintptr_t before = 0;
  uintptr_t after = 0;
  __asm__ volatile("movl %%esp, %0" : "=r"(before) : : "memory");
  if constexpr (std::is_void_v<Result>) {
    fn(args...);
  } else {
    Result result = fn(args...);
    __asm__ volatile("movl %%esp, %0" : "=r"(after) : : "memory");
    report_stack(name, before, after);
    return result;
  }
  __asm__ volatile("movl %%esp, %0" : "=r"(after) : : "memory");
  report_stack(name, before, after);
#else
  (void)name;
  if constexpr (std::is_void_v<Result>) {
    fn(args...);
  } else {
    return fn(args...);
  }
#endif
}

// Resolves an export by its plain name with the header's pointer type.
template <class Fn>
Fn resolve(const char* name) {
  FARPROC p = GetProcAddress(g_dll, name);
  if (!p) {
    std::printf("FAIL: GetProcAddress(\"%s\") found nothing\n", name);
    ++g_failures;
  }
  return reinterpret_cast<Fn>(reinterpret_cast<void*>(p));
}

#define KBOND_RESOLVE(name) resolve<decltype(&name)>(#name)

// Every function the header declares is found under its plain name, and on
// 32-bit no decorated alias (_KVLbpr@120, KVLbpr@120) is exported beside it.
void every_export_resolves_by_plain_name() {
  int count = 0;
#define KBOND_CHECK_NAME(name)                                                            \
  {                                                                                        \
    ++count;                                                                               \
    check(GetProcAddress(g_dll, #name) != nullptr, "plain export name " #name);            \
  }
  KBOND_EXPORT_LIST(KBOND_CHECK_NAME)
#undef KBOND_CHECK_NAME
  std::printf("%d exports resolved by plain name\n", count);
}

#if defined(__i386__)
// Self-test of the stack check: a cdecl function called through a __stdcall
// pointer must be caught. The function leaves its 8 bytes of arguments on the
// stack; the frame pointer of the caller repairs the stack on return.
extern "C" __attribute__((noinline, cdecl)) int32_t cdecl_add(int32_t a, int32_t b) {
  return a + b;
}

__attribute__((noinline)) bool stack_check_catches_cdecl() {
  using stdcall_add = int32_t(__stdcall*)(int32_t, int32_t);
  auto fn = reinterpret_cast<stdcall_add>(reinterpret_cast<void*>(&cdecl_add));
  g_self_test = true;
  const int32_t sum = stack_checked_call("cdecl_add", fn, 2, 3);
  g_self_test = false;
  return g_self_test_caught && sum == 5;
}
#endif

#if defined(KBOND_HAS_KVLbondver)
void version_text() {
  std::puts("KVLbondver");
  auto ver = KBOND_RESOLVE(KVLbondver);
  if (!ver) return;
  const char* text = stack_checked_call("KVLbondver", ver);
  check(text != nullptr && std::strcmp(text, "v2002.0p0nt") == 0, "KVLbondver gives v2002.0p0nt");
}
#endif

// A 5 % U.S. Treasury (type 0) maturing 15 May 2030 (serial 47617), coupon
// dates 15 May / 15 November. Serials count days from 31 December 1899.
constexpr int32_t kMaturity = 47617;     // 15 May 2030
constexpr int32_t kCouponDate = 45975;   // 15 November 2025
constexpr int32_t kMidPeriod = 46067;    // 15 February 2026

#if defined(KBOND_HAS_KVLbpr)
double treasury_price(int32_t type_code, int32_t settlement, double yield, int32_t* err) {
  static auto bpr = KBOND_RESOLVE(KVLbpr);
  if (!bpr) return -1.0;
  const double coupon = 0.05;
  const int32_t maturity = kMaturity;
  const int32_t type = type_code;
  return stack_checked_call("KVLbpr", bpr, &coupon, 1, &maturity, 1, settlement, yield,
                            nullptr, nullptr, &type, nullptr, 0, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                            nullptr, 0, nullptr, nullptr, nullptr, err);
}

void treasury_price_from_yield() {
  std::puts("KVLbpr: Treasury price from yield");
  int32_t err = -1;
  // On a coupon date with nine coupons left, at 6 % (3 % a half-year):
  // sum 2.5 / 1.03^k (k = 1..9) + 100 / 1.03^9 = 96.10694553906...,
  // rounded to six decimals for type 0.
  const double price = treasury_price(0, kCouponDate, 0.06, &err);
  check(err == 0, "KVLbpr error code 0");
  check_near(price, 96.106946, 1e-9, "KVLbpr 5% 2030 Treasury at 6%");

  // Yield equal to the coupon on a coupon date prices at par.
  err = -1;
  check_near(treasury_price(0, kCouponDate, 0.05, &err), 100.0, 1e-9, "KVLbpr at par");
  check(err == 0, "KVLbpr at par error code 0");

  // A missing coupon array is refused with the failure value, not a crash.
  static auto bpr = KBOND_RESOLVE(KVLbpr);
  if (!bpr) return;
  const int32_t maturity = kMaturity;
  err = 0;
  const double failed = stack_checked_call(
      "KVLbpr", bpr, static_cast<const double*>(nullptr), 1, &maturity, 1, kCouponDate, 0.05,
      nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err);
  check(err != 0 && failed == -1.0, "KVLbpr without coupons fails with -1.0");
}
#endif

#if defined(KBOND_HAS_KVLbai)
void treasury_accrued_interest() {
  std::puts("KVLbai: Treasury accrued interest");
  auto bai = KBOND_RESOLVE(KVLbai);
  if (!bai) return;
  const double coupon = 0.05;
  const int32_t maturity = kMaturity;
  const int32_t type = 0;
  int32_t err = -1;
  const double accrued = stack_checked_call(
      "KVLbai", bai, &coupon, 1, &maturity, 1, kMidPeriod, nullptr, nullptr, &type, nullptr, 0,
      nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err);
  // Actual/actual in period: 92 of 181 days of a 2.5 coupon.
  check(err == 0, "KVLbai error code 0");
  check_near(accrued, 2.5 * 92.0 / 181.0, 1e-9, "KVLbai 15 Feb 2026");
}
#endif

#if defined(KBOND_HAS_KVLbond_initMT) && defined(KBOND_HAS_KVLbcustom) && defined(KBOND_HAS_KVLbpr)
// Custom type 1000 defined like a Treasury (actual/actual, semi-annual), then
// priced from several threads while another thread keeps redefining it: the
// custom-type lock (critical sections and back-off sleep) runs inside the DLL.
void custom_type_under_threads() {
  std::puts("custom-type lock: KVLbcustom and KVLbpr on 4 threads");
  auto init = KBOND_RESOLVE(KVLbond_initMT);
  auto custom = KBOND_RESOLVE(KVLbcustom);
  if (!init || !custom) return;
  stack_checked_call("KVLbond_initMT", init);

  static const int32_t basis = 0;
  static const int32_t frequency = 2;
  static const int32_t yield_frequency = 0;
  auto define = [custom] {
    return stack_checked_call("KVLbcustom", custom, 1000, &basis, &basis, nullptr, &frequency,
                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              &yield_frequency);
  };
  check(define() == 1000, "KVLbcustom defines code 1000");

  int32_t err = -1;
  const double single = treasury_price(1000, kCouponDate, 0.06, &err);
  check(err == 0, "custom type 1000 prices");
  check_near(single, 96.10694553906043, 1e-6, "custom type 1000 priced like the Treasury");

  constexpr int kReaders = 3;
  constexpr int kCalls = 200;
  std::vector<int> bad(kReaders, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kReaders; ++t) {
    threads.emplace_back([t, single, &bad] {
      for (int i = 0; i < kCalls; ++i) {
        int32_t e = -1;
        const double p = treasury_price(1000, kCouponDate, 0.06, &e);
        if (e != 0 || p != single) ++bad[t];
      }
    });
  }
  int writer_failures = 0;
  threads.emplace_back([&] {
    for (int i = 0; i < 50; ++i) {
      if (define() != 1000) ++writer_failures;
    }
  });
  for (auto& th : threads) th.join();
  for (int t = 0; t < kReaders; ++t) check(bad[t] == 0, "threaded custom-type prices agree");
  check(writer_failures == 0, "threaded KVLbcustom redefinitions succeed");
}
#endif

#if defined(KBOND_HAS_KVLbond_initMT) && defined(KBOND_HAS_KVLfrntype) && \
    defined(KBOND_HAS_KVLfreefrntype)
// FRN types registered, derived and released from several threads at once:
// every look-up, insertion and removal of the registry holds its critical
// section inside the DLL.
void frn_registry_under_threads() {
  std::puts("FRN type registry: KVLfrntype and KVLfreefrntype on 4 threads");
  auto init = KBOND_RESOLVE(KVLbond_initMT);
  auto frntype = KBOND_RESOLVE(KVLfrntype);
  auto freefrntype = KBOND_RESOLVE(KVLfreefrntype);
  if (!init || !frntype || !freefrntype) return;
  stack_checked_call("KVLbond_initMT", init);

  static const int32_t quarterly = 4;
  static const int32_t act360 = 4;
  auto make = [frntype](int32_t base, int32_t* err) {
    return stack_checked_call("KVLfrntype", frntype, base, &quarterly, &act360, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, 0, err);
  };

  constexpr int kThreads = 4;
  constexpr int kRounds = 100;
  std::vector<int> bad(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &bad, make, freefrntype] {
      for (int i = 0; i < kRounds; ++i) {
        int32_t err = -1;
        const int32_t base = make(0, &err);
        if (base == 0 || err != 0) {
          ++bad[t];
          continue;
        }
        const int32_t derived = make(base, &err);  // looks the base up in the registry
        if (derived == 0 || err != 0 || derived == base) ++bad[t];
        stack_checked_call("KVLfreefrntype", freefrntype, derived);
        stack_checked_call("KVLfreefrntype", freefrntype, base);
      }
    });
  }
  for (auto& th : threads) th.join();
  for (int t = 0; t < kThreads; ++t) check(bad[t] == 0, "threaded FRN type registrations");

  // A released handle is no base any more.
  int32_t err = 0;
  const int32_t gone = make(0, &err);
  stack_checked_call("KVLfreefrntype", freefrntype, gone);
  check(make(gone, &err) == 0 && err == 901, "a released FRN type handle is refused (901)");
}
#endif

// One call into each further family, with a settlement (or delivery) date
// that cannot be valid: the DLL answers with an error code and the failure value (and, on
// 32-bit, cleans its own arguments on this path too).
void family_error_paths() {
  std::puts("family calls with an invalid settlement date");
  [[maybe_unused]] constexpr int32_t kNoDate = -1;
#if defined(KBOND_HAS_KVLfrnsm)
  if (auto fn = KBOND_RESOLVE(KVLfrnsm)) {
    int32_t err = 0;
    const double r = stack_checked_call("KVLfrnsm", fn, kMaturity, kNoDate, 0.05, 99.5, 0.05, 0.01,
                                        nullptr, nullptr, nullptr, nullptr, nullptr, &err);
    check(err != 0 && r == -1.0, "KVLfrnsm refuses an invalid settlement");
  }
#endif
#if defined(KBOND_HAS_KVLbfact)
  if (auto fn = KBOND_RESOLVE(KVLbfact)) {
    int32_t err = 0;
    stack_checked_call("KVLbfact", fn, 0.05, kMaturity, kNoDate, nullptr, nullptr, 0, nullptr,
                       nullptr, nullptr, nullptr, nullptr, &err);
    check(err != 0, "KVLbfact refuses an invalid delivery date");
  }
#endif
#if defined(KBOND_HAS_KVLilgai)
  if (auto fn = KBOND_RESOLVE(KVLilgai)) {
    int32_t err = 0;
    const double r = stack_checked_call("KVLilgai", fn, 0.025, 1.25, kMaturity, kNoDate, nullptr,
                                        nullptr, nullptr, nullptr, 0, nullptr, nullptr, &err);
    check(err != 0 && r == -1.0, "KVLilgai refuses an invalid settlement");
  }
#endif
#if defined(KBOND_HAS_KVLtipsai)
  if (auto fn = KBOND_RESOLVE(KVLtipsai)) {
    int32_t err = 0;
    const double r = stack_checked_call("KVLtipsai", fn, 0.025, kMaturity, kNoDate, nullptr, 0,
                                        nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                                        &err);
    check(err != 0 && r == -1.0, "KVLtipsai refuses an invalid settlement");
  }
#endif
#if defined(KBOND_HAS_KVLoatiai)
  if (auto fn = KBOND_RESOLVE(KVLoatiai)) {
    int32_t err = 0;
    const double r = stack_checked_call("KVLoatiai", fn, 0.025, kMaturity, kNoDate, nullptr, 0,
                                        nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0, nullptr,
                                        &err);
    check(err != 0 && r == -1.0, "KVLoatiai refuses an invalid settlement");
  }
#endif
}

}  // namespace

int main(int argc, char** argv) {
  const char* path = argc > 1 ? argv[1] : "k_bond.dll";
  g_dll = LoadLibraryA(path);
  if (!g_dll) {
    std::printf("FAIL: cannot load %s (error %lu)\n", path, GetLastError());
    return 1;
  }
  std::printf("k_bond.dll loaded (%d-bit)\n", static_cast<int>(sizeof(void*) * 8));

#if defined(__i386__)
  check(stack_check_catches_cdecl(), "the stack check catches a cdecl callee");
#endif
  every_export_resolves_by_plain_name();
#if defined(KBOND_HAS_KVLbondver)
  version_text();
#endif
#if defined(KBOND_HAS_KVLbpr)
  treasury_price_from_yield();
#endif
#if defined(KBOND_HAS_KVLbai)
  treasury_accrued_interest();
#endif
#if defined(KBOND_HAS_KVLbond_initMT) && defined(KBOND_HAS_KVLbcustom) && defined(KBOND_HAS_KVLbpr)
  custom_type_under_threads();
#endif
#if defined(KBOND_HAS_KVLbond_initMT) && defined(KBOND_HAS_KVLfrntype) && \
    defined(KBOND_HAS_KVLfreefrntype)
  frn_registry_under_threads();
#endif

  family_error_paths();

  FreeLibrary(g_dll);
  std::printf("%d checks, %d failed\n", g_checks.load(), g_failures.load());
  return g_failures == 0 ? 0 : 1;
}
