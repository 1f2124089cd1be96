// Decoding of a fuzzer's bytes into the arguments of one call.
//
// Bytes are read front to back. Every field starts from a sensible value
// (a valid call on a real bond) and a mode byte decides how it is disturbed;
// once the input runs out every mode reads as 0, "keep the sensible value".
// So the empty input is a valid call, and short seeds select a function, a
// bond type or a contract and let the mutator explore from there.
//
// Arrays never lie about their real length: a buffer handed to the library
// is at least as long as the count passed with it, or the pointer is NULL
// (with any count at all).
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

namespace kbond_fuzz {

// Aborts with a message: libFuzzer records the input that got here.
[[noreturn]] inline void fail(const char* what, double result, int32_t error) {
  std::fprintf(stderr, "invariant violated: %s (result %.17g, error %d)\n", what, result, error);
  std::abort();
}

inline void check(bool ok, const char* what, double result = 0.0, int32_t error = 0) {
  if (!ok) fail(what, result, error);
}

template <std::size_t N>
bool one_of(int32_t code, const int32_t (&set)[N]) {
  for (int32_t c : set)
    if (c == code) return true;
  return false;
}

// Serial of a civil date (1 = 1 January 1900), days-from-civil algorithm,
// independent of the library's own date code.
constexpr int32_t serial(int32_t y, int32_t m, int32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const int32_t yoe = y - era * 400;
  const int32_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468 + 25568;
}
static_assert(serial(1900, 1, 1) == 1);
static_assert(serial(2000, 3, 1) == 36585);

class Input {
 public:
  Input(const uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  // KBOND_FUZZ_TRACE=1 prints every decoded value, to read a failing input.
  static bool tracing() {
    static const bool on = std::getenv("KBOND_FUZZ_TRACE") != nullptr;
    return on;
  }
  template <class T>
  static T traced(const char* kind, T value) {
    if (tracing()) std::fprintf(stderr, "  %s %.17g\n", kind, static_cast<double>(value));
    return value;
  }

  uint8_t byte() { return pos_ < size_ ? data_[pos_++] : 0; }

  template <class T>
  T raw() {
    T value{};
    uint8_t bytes[sizeof(T)] = {};
    for (auto& b : bytes) b = byte();
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }

  // An int in [lo, hi] (lo when the input is exhausted).
  int32_t range(int32_t lo, int32_t hi) {
    const uint32_t span = static_cast<uint32_t>(hi - lo) + 1u;
    return lo + static_cast<int32_t>(raw<uint16_t>() % span);
  }

  // A date serial around `usual`: nearby, far off, or one of the dates that
  // break calendar code (0, negative, the last supported serial and beyond).
  int32_t date(int32_t usual) { return traced("date", date_value(usual)); }
  double real(double usual) { return traced("real", real_value(usual)); }
  template <std::size_t N>
  int32_t code(int32_t usual, const int32_t (&known)[N]) {
    return traced("code", code_value(usual, known));
  }
  int32_t code(int32_t usual) { return traced("code", code_value(usual)); }

 private:
  int32_t date_value(int32_t usual) {
    static constexpr int32_t kSpecial[] = {
        0,         -1,       1,       59,      60,      61,        366,
        1825000,   1825001,  2958465, 3000000, -36525,  INT32_MIN, INT32_MAX,
        INT32_MIN + 1, serial(2000, 2, 29), serial(2024, 2, 29), serial(2023, 12, 31),
        serial(2099, 12, 31), serial(9999, 12, 31)};
    switch (byte() % 8) {
      case 1: return usual + static_cast<int8_t>(byte());
      case 2: return usual + raw<int16_t>();
      case 3: return kSpecial[byte() % (sizeof kSpecial / sizeof kSpecial[0])];
      case 4: return raw<int32_t>();
      case 5: return usual + 365 * static_cast<int8_t>(byte());
      default: return usual;
    }
  }

  // A real around `usual`: scaled, signed, or one of the values that break
  // arithmetic (NaN, infinities, zero, denormals, the overflow marker).
  double real_value(double usual) {
    static constexpr double kSpecial[] = {
        std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(),
        0.0, -0.0, 1.0, -1.0, 100.0, -100.0, 1e-300, 5e-324, 1e300, -1e300,
        1.7014117331926443e38, 1e-9, 0.99, 1e6, -0.5, 2.0, 0.0001};
    switch (byte() % 8) {
      case 1: return usual * (1.0 + static_cast<int8_t>(byte()) / 64.0);
      case 2: return -usual;
      case 3: return kSpecial[byte() % (sizeof kSpecial / sizeof kSpecial[0])];
      case 4: return raw<double>();
      case 5: return usual + static_cast<int8_t>(byte()) / 16.0;
      default: return usual;
    }
  }

  // A code: the usual one, one of `known`, a small integer or any integer.
  template <std::size_t N>
  int32_t code_value(int32_t usual, const int32_t (&known)[N]) {
    switch (byte() % 4) {
      case 1: return known[byte() % N];
      case 2: return static_cast<int8_t>(byte());
      case 3: return raw<int32_t>();
      default: return usual;
    }
  }
  int32_t code_value(int32_t usual) {
    switch (byte() % 4) {
      case 1: return static_cast<int8_t>(byte());
      case 2: return raw<int16_t>();
      case 3: return raw<int32_t>();
      default: return usual;
    }
  }

 public:
  // An optional pointer argument: NULL by default, otherwise `slot` holding
  // a value drawn by `draw`.
  template <class T, class Draw>
  const T* optional(T& slot, Draw draw) {
    if (byte() % 2 == 0) {
      traced("optional NULL", 0);
      return nullptr;
    }
    slot = draw();
    return &slot;
  }

 private:
  const uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

// An input array with its count. The buffer keeps the usual contents unless
// the input reshapes it; the count passed may be smaller than the buffer,
// negative, or anything at all when the pointer is NULL.
template <class T>
struct Array {
  std::vector<T> buffer;
  const T* pointer = nullptr;
  int32_t count = 0;

  template <class Draw>
  void decode(Input& in, const std::vector<T>& usual, Draw draw) {
    buffer = usual;
    switch (in.byte() % 6) {
      case 1: {  // new contents, up to 12 elements
        buffer.resize(static_cast<std::size_t>(in.byte() % 13));
        for (auto& element : buffer) element = draw();
        break;
      }
      case 2: {  // one element disturbed
        if (!buffer.empty()) {
          auto& element = buffer[in.byte() % buffer.size()];
          element = draw();
        }
        break;
      }
      case 3:  // NULL with a count that claims elements
        buffer.clear();
        pointer = nullptr;
        count = static_cast<int8_t>(in.byte());
        return;
      case 4:  // a count below the real length, possibly negative
        count = -static_cast<int32_t>(in.byte() % 4) +
                (buffer.empty() ? 0 : static_cast<int32_t>(in.byte() % buffer.size()));
        pointer = buffer.empty() ? nullptr : buffer.data();
        return;
      case 5:  // absent
        buffer.clear();
        break;
      default:
        break;
    }
    // An empty buffer is passed as NULL with count 0: no pointer to nothing.
    pointer = buffer.empty() ? nullptr : buffer.data();
    count = static_cast<int32_t>(buffer.size());
  }
};

// Dates a successful call returns lie in the library's range.
inline bool valid_serial(int32_t date) { return date >= 1 && date <= 1825000; }

// Outputs of a successful call must be usable numbers.
inline void check_finite(double result, int32_t error, const char* what) {
  check(std::isfinite(result), what, result, error);
}

}  // namespace kbond_fuzz
