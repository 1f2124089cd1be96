// The four parallel columns of a cash-flow table (dates, coupons, principal,
// periods) that the cash-flow exports allocate and the caller returns to the
// matching _free export. A column whose output pointer is NULL is not asked
// for and stays NULL.
#pragma once
#include <cstdint>
#include <cstdlib>

namespace kbond::engine {

class CashFlowOutput {
 public:
  // Every column asked for starts as NULL (what the caller passed in is
  // not ours to free), whatever happens next.
  CashFlowOutput(int32_t** dates, double** coupons, double** principal, double** periods) noexcept
      : dates_out_(dates), coupons_out_(coupons), principal_out_(principal), periods_out_(periods) {
    if (dates) *dates = nullptr;
    if (coupons) *coupons = nullptr;
    if (principal) *principal = nullptr;
    if (periods) *periods = nullptr;
  }

  bool none_asked() const noexcept {
    return !dates_out_ && !coupons_out_ && !principal_out_ && !periods_out_;
  }

  // Allocates every column asked for with `rows` entries (at least one);
  // false, with every column released, when memory runs out.
  bool allocate(int32_t rows) noexcept {
    bool failed = false;
    dates = allocate_column(dates_out_, rows, failed);
    coupons = allocate_column(coupons_out_, rows, failed);
    principal = allocate_column(principal_out_, rows, failed);
    periods = allocate_column(periods_out_, rows, failed);
    if (failed) release();
    return !failed;
  }

  // Frees every column and sets its output back to NULL.
  void release() noexcept {
    dates = release_column(dates_out_);
    coupons = release_column(coupons_out_);
    principal = release_column(principal_out_);
    periods = release_column(periods_out_);
  }

  // The columns to fill (NULL where not asked for).
  int32_t* dates = nullptr;
  double* coupons = nullptr;
  double* principal = nullptr;
  double* periods = nullptr;

 private:
  template <class T>
  static T* allocate_column(T** out, int32_t rows, bool& failed) noexcept {
    if (!out) return nullptr;
    *out = static_cast<T*>(std::malloc(static_cast<std::size_t>(rows > 0 ? rows : 1) * sizeof(T)));
    if (!*out) failed = true;
    return *out;
  }

  template <class T>
  static T* release_column(T** out) noexcept {
    if (!out) return nullptr;
    std::free(*out);
    return *out = nullptr;
  }

  int32_t** dates_out_;
  double** coupons_out_;
  double** principal_out_;
  double** periods_out_;
};

// What the _free exports do with the columns they are given back.
inline void free_cash_flow_columns(int32_t* dates, double* coupons, double* principal,
                                   double* periods) noexcept {
  std::free(dates);
  std::free(coupons);
  std::free(principal);
  std::free(periods);
}

}  // namespace kbond::engine
