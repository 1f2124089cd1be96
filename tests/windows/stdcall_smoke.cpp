// Loads k_bond.dll the way spreadsheets and Windows programs do (LoadLibrary,
// then GetProcAddress by plain name) and calls exports through function
// pointers typed from the public header, so on 32-bit Windows they carry the
// header's __stdcall. On 32-bit the stack pointer is compared around every
// call: a callee that leaves its arguments on the stack (cdecl) would shift it
// by the argument size. Every export is called once that way with all of its
// arguments absent (NULL, 0), which the library refuses without a crash.
//
// Usage: kbond_stdcall_smoke [path\to\k_bond.dll]   exit status 0 = all passed
#include <windows.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <thread>
#include <tuple>
#include <type_traits>
#include <vector>

#include "k_bond.h"
#include "kbond_export_list.h"

namespace {

std::atomic<int> g_failures{0};
std::atomic<int> g_checks{0};
HMODULE g_dll = nullptr;

void check(bool ok, const char* what) {
  ++g_checks;
  if (!ok) {
    ++g_failures;
    std::printf("FAIL: %s\n", what);
  }
}

void check_near(double got, double want, double tol, const char* what) {
  check(std::fabs(got - want) <= tol, what);
  if (!(std::fabs(got - want) <= tol)) std::printf("  got %.10f, want %.10f\n", got, want);
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
#if defined(__i386__)
  using Result = std::invoke_result_t<Fn, Args...>;
  uintptr_t before = 0;
  uintptr_t after = 0;
  __asm__ volatile("movl %%esp, %0" : "=r"(before) : : "memory");
  if constexpr (std::is_void_v<Result>) {
    fn(args...);
    __asm__ volatile("movl %%esp, %0" : "=r"(after) : : "memory");
    report_stack(name, before, after);
  } else {
    Result result = fn(args...);
    __asm__ volatile("movl %%esp, %0" : "=r"(after) : : "memory");
    report_stack(name, before, after);
    return result;
  }
#else
  (void)name;
  return fn(args...);
#endif
}

// Resolves an export by its plain name with the header's pointer type.
template <class Fn>
Fn resolve(const char* name) {
  FARPROC p = GetProcAddress(g_dll, name);
  check(p != nullptr, name);
  return reinterpret_cast<Fn>(reinterpret_cast<void*>(p));
}

#define KBOND_RESOLVE(name) resolve<decltype(&name)>(#name)

// The header's argument types of an export, each value-initialised.
template <class Fn>
struct Absent;
template <class R, class... A>
struct Absent<R(KVL_API*)(A...)> {
  using Arguments = std::tuple<A...>;
};

// Every function the header declares is found under its plain name (on
// 32-bit no decorated alias such as _KVLbpr@120 stands in for it) and cleans
// its own arguments off the stack when called with none of them given.
void every_export_resolves_and_is_callable() {
  int count = 0;
#define KBOND_CALL_ABSENT(name)                                                  \
  if (auto fn = KBOND_RESOLVE(name)) {                                           \
    ++count;                                                                     \
    std::apply([fn](auto... a) { stack_checked_call(#name, fn, a...); },         \
               typename Absent<decltype(&name)>::Arguments{});                   \
  }
  KBOND_EXPORT_LIST(KBOND_CALL_ABSENT)
#undef KBOND_CALL_ABSENT
  std::printf("%d exports resolved by plain name and called\n", count);
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

// A 5 % U.S. Treasury maturing 15 May 2030 (serial 47617), coupon dates
// 15 May / 15 November. Serials count days from 31 December 1899.
constexpr int32_t kMaturity = 47617;     // 15 May 2030
constexpr int32_t kCouponDate = 45975;   // 15 November 2025
constexpr int32_t kMidPeriod = 46067;    // 15 February 2026

double treasury_price(int32_t type_code, int32_t settlement, double yield, int32_t* err,
                      const double* coupon) {
  static auto bpr = KBOND_RESOLVE(KVLbpr);
  const int32_t maturity = kMaturity;
  return stack_checked_call("KVLbpr", bpr, coupon, 1, &maturity, 1, settlement, yield, nullptr,
                            nullptr, &type_code, nullptr, 0, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0, nullptr, 0,
                            nullptr, nullptr, nullptr, err);
}

// Values worked by hand, so that arguments reach the library in their places.
void treasury_values() {
  std::puts("KVLbondver, KVLbpr, KVLbai on a Treasury");
  const char* text = stack_checked_call("KVLbondver", KBOND_RESOLVE(KVLbondver));
  check(text != nullptr && std::strcmp(text, "v2002.0p0nt") == 0, "KVLbondver gives v2002.0p0nt");
  const double coupon = 0.05;
  int32_t err = -1;
  // On a coupon date with nine coupons left, at 6 % (3 % a half-year):
  // sum 2.5 / 1.03^k (k = 1..9) + 100 / 1.03^9 = 96.10694553906...,
  // rounded to six decimals for type 0. At the coupon rate: par.
  check_near(treasury_price(0, kCouponDate, 0.06, &err, &coupon), 96.106946, 1e-9,
             "KVLbpr 5% 2030 Treasury at 6%");
  check_near(treasury_price(0, kCouponDate, 0.05, &err, &coupon), 100.0, 1e-9, "KVLbpr at par");
  check(err == 0, "KVLbpr error code 0");
  // A missing coupon array is refused with the failure value.
  check(treasury_price(0, kCouponDate, 0.05, &err, nullptr) == -1.0 && err != 0,
        "KVLbpr without coupons fails with -1.0");
  // Actual/actual in period: 92 of 181 days of a 2.5 coupon.
  const int32_t maturity = kMaturity, type = 0;
  err = -1;
  const double accrued = stack_checked_call(
      "KVLbai", KBOND_RESOLVE(KVLbai), &coupon, 1, &maturity, 1, kMidPeriod, nullptr, nullptr,
      &type, nullptr, 0, nullptr, nullptr, nullptr, 0, nullptr, 0, nullptr, nullptr, nullptr, &err);
  check(err == 0, "KVLbai error code 0");
  check_near(accrued, 2.5 * 92.0 / 181.0, 1e-9, "KVLbai 15 Feb 2026");
}

// Custom type 1000 defined like a Treasury (actual/actual, semi-annual), then
// priced from several threads while another thread keeps redefining it: the
// custom-type lock (critical sections and back-off sleep) runs inside the DLL.
void custom_type_under_threads() {
  std::puts("custom-type lock: KVLbcustom and KVLbpr on 4 threads");
  stack_checked_call("KVLbond_initMT", KBOND_RESOLVE(KVLbond_initMT));
  static const auto custom = KBOND_RESOLVE(KVLbcustom);
  static const int32_t basis = 0, frequency = 2, yield_frequency = 0;
  auto define = [] {
    return stack_checked_call("KVLbcustom", custom, 1000, &basis, &basis, nullptr, &frequency,
                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                              &yield_frequency);
  };
  check(define() == 1000, "KVLbcustom defines code 1000");

  static const double coupon = 0.05;
  int32_t err = -1;
  const double single = treasury_price(1000, kCouponDate, 0.06, &err, &coupon);
  check(err == 0, "custom type 1000 prices");
  check_near(single, 96.10694553906043, 1e-6, "custom type 1000 priced like the Treasury");

  std::atomic<int> bad{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([single, &bad] {
      for (int i = 0; i < 200; ++i) {
        int32_t e = -1;
        if (treasury_price(1000, kCouponDate, 0.06, &e, &coupon) != single || e != 0) ++bad;
      }
    });
  }
  threads.emplace_back([&bad, define] {
    for (int i = 0; i < 50; ++i) bad += define() != 1000;
  });
  for (auto& th : threads) th.join();
  check(bad == 0, "threaded custom-type prices and redefinitions agree");
}

// FRN types registered, derived and released from several threads at once:
// every look-up, insertion and removal of the registry holds its critical
// section inside the DLL.
void frn_registry_under_threads() {
  std::puts("FRN type registry: KVLfrntype and KVLfreefrntype on 4 threads");
  static const auto frntype = KBOND_RESOLVE(KVLfrntype);
  static const auto freefrntype = KBOND_RESOLVE(KVLfreefrntype);
  static const int32_t quarterly = 4, act360 = 4;
  auto make = [](int32_t base, int32_t* err) {
    return stack_checked_call("KVLfrntype", frntype, base, &quarterly, &act360, nullptr, nullptr,
                              nullptr, nullptr, nullptr, nullptr, 0, 0, 0, 0, 0, 0, err);
  };
  std::atomic<int> bad{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&bad, make] {
      for (int i = 0; i < 100; ++i) {
        int32_t err = -1;
        const int32_t base = make(0, &err);
        if (base == 0 || err != 0) {
          ++bad;
          continue;
        }
        const int32_t derived = make(base, &err);  // looks the base up in the registry
        if (derived == 0 || err != 0 || derived == base) ++bad;
        stack_checked_call("KVLfreefrntype", freefrntype, derived);
        stack_checked_call("KVLfreefrntype", freefrntype, base);
      }
    });
  }
  for (auto& th : threads) th.join();
  check(bad == 0, "threaded FRN type registrations");

  // A released handle is no base any more.
  int32_t err = 0;
  const int32_t gone = make(0, &err);
  stack_checked_call("KVLfreefrntype", freefrntype, gone);
  check(make(gone, &err) == 0 && err == 901, "a released FRN type handle is refused (901)");
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
  every_export_resolves_and_is_callable();
  treasury_values();
  custom_type_under_threads();
  frn_registry_under_threads();
  FreeLibrary(g_dll);
  std::printf("%d checks, %d failed\n", g_checks.load(), g_failures.load());
  return g_failures == 0 ? 0 : 1;
}
