// Date serials for test expectations, computed independently of the
// library with std::chrono: serial 1 is 1 January 1900, so a serial is the
// number of days since 31 December 1899.
#pragma once
#include <chrono>
#include <cstdint>

namespace kbond::testing {

constexpr int32_t civil_serial(int year, unsigned month, unsigned day) {
  using namespace std::chrono;
  const sys_days date{std::chrono::year{year} / std::chrono::month{month} / std::chrono::day{day}};
  const sys_days origin{std::chrono::year{1899} / December / 31};
  return static_cast<int32_t>((date - origin).count());
}

static_assert(civil_serial(1900, 1, 1) == 1);
static_assert(civil_serial(1900, 3, 1) == 60);

}  // namespace kbond::testing
