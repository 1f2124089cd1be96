// A progress bar for long batches: percent (when the input's size is
// known), rows per second and the time left, redrawn on one line of
// standard error. Shown only when standard error is a terminal and the
// work has already taken a second, so pipes, logs and quick runs see
// nothing.
#pragma once

#include <chrono>
#include <cstdint>

namespace kbond::cli {

class Progress {
 public:
  // total_bytes: the input's size, 0 when unknown (standard input).
  explicit Progress(int64_t total_bytes);
  void update(int64_t rows, int64_t bytes);
  // Ends the bar's line (when one was drawn).
  void finish();

 private:
  using Clock = std::chrono::steady_clock;
  bool enabled_;
  bool drawn_ = false;
  int64_t total_bytes_;
  int64_t rows_ = 0;
  Clock::time_point start_, last_;
};

}  // namespace kbond::cli
