// Portfolios: KVLbbatch on decoded columns. Bad counts, NULL columns and
// unknown measures must be refused with nothing written; otherwise every
// row is written in place, nothing beyond the rows, and row 0 agrees with
// the single export that values it.
#include <cstring>

#include "bond_arguments.h"
#include "k_bond.h"

using namespace kbond_fuzz;

namespace {

constexpr int32_t kRefusals[] = {50, 60, 460};
constexpr int32_t kRowErrors[] = {0, 1, 160, 350, 401, 460, -60};
constexpr int32_t kAll = 127;
constexpr double kCanary = -7.77e-77;
constexpr size_t kSpare = 4;  // cells past the rows that must stay untouched

struct Columns {
  std::vector<int32_t> types, maturities, settlements, kinds, frequencies, dated, first;
  std::vector<double> coupons, market, redemptions;
};

void decode_row(Input& in, Columns& c) {
  c.types.push_back(in.code(0, kBondTypes));
  c.coupons.push_back(in.real(0.05));
  c.maturities.push_back(in.date(serial(2030, 11, 15)));
  c.settlements.push_back(in.date(serial(2024, 3, 1)));
  const int32_t kind = in.code(static_cast<int32_t>(c.types.size() % 2), {0, 1, 2, -1});
  c.kinds.push_back(kind);
  c.market.push_back(kind == 1 ? in.real(98.0) : in.real(0.045));
  c.frequencies.push_back(in.code(0, {0, 1, 2, 4, 12, 5, -2}));
  c.dated.push_back(in.byte() % 4 == 3 ? in.date(serial(2020, 11, 15)) : 0);
  c.first.push_back(in.byte() % 4 == 3 ? in.date(serial(2021, 5, 15)) : 0);
  c.redemptions.push_back(in.real(100.0));
}

template <class T>
const T* maybe(const std::vector<T>& v, bool null) {
  return null ? nullptr : v.data();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in(data, size);
  // Up to six decoded rows; the last choice repeats them into 70 rows so
  // that the call runs on more than one thread.
  const int shape = in.byte() % 8;
  const size_t decoded = shape == 7 ? 6 : static_cast<size_t>(shape);
  Columns c;
  for (size_t i = 0; i < decoded; ++i) decode_row(in, c);
  const size_t rows = shape == 7 ? 70 : decoded;
  for (size_t i = decoded; i < rows; ++i) {
    const size_t k = i % decoded;
    c.types.push_back(c.types[k]); c.coupons.push_back(c.coupons[k]);
    c.maturities.push_back(c.maturities[k]); c.settlements.push_back(c.settlements[k]);
    c.kinds.push_back(c.kinds[k]); c.market.push_back(c.market[k]);
    c.frequencies.push_back(c.frequencies[k]); c.dated.push_back(c.dated[k]);
    c.first.push_back(c.first[k]); c.redemptions.push_back(c.redemptions[k]);
  }
  const int32_t measures = in.code(kAll, {0, 1, 2, 4, 8, 64, 128, -1, 5, 126});
  const int32_t threads = in.code(2, {0, 1, 8, -1, -100, 1000});
  const int32_t market_kind = in.code(0, {0, 1, 2, -1});
  // Bit k set: input column k (0..8), the row codes (9) or output column
  // k - 10 is NULL.
  const uint32_t nulls = in.byte() % 4 == 3 ? in.raw<uint32_t>() : 0;
  const bool per_row_kinds = in.byte() % 2 == 1;
  // The count passed: the rows, fewer, or a negative one; more than the
  // columns hold only when a required column is NULL (refused before use).
  int32_t n = static_cast<int32_t>(rows);
  switch (in.byte() % 8) {
    case 1: n = rows ? static_cast<int32_t>(in.byte() % rows) : 0; break;
    case 2: n = -static_cast<int32_t>(in.byte()) - 1; break;
    case 3: if (nulls & 0xF) n = in.raw<int32_t>(); break;
    default: break;
  }
  const bool bad_count = n < 0;

  std::vector<std::vector<double>> out(7, std::vector<double>(rows + kSpare, kCanary));
  std::vector<int32_t> row_errors(rows + kSpare, 12345), failed(rows + kSpare, 12345);
  double* columns[7];
  for (int k = 0; k < 7; ++k) columns[k] = (nulls >> (10 + k)) & 1 ? nullptr : out[k].data();
  int32_t error = 12345;
  int32_t* error_out = (in.byte() % 16 == 15) ? nullptr : &error;
  const int32_t result = KVLbbatch(
      n, maybe(c.types, nulls & 1), maybe(c.coupons, nulls & 2), maybe(c.maturities, nulls & 4),
      maybe(c.settlements, nulls & 8), maybe(c.market, nulls & 16), market_kind,
      per_row_kinds ? c.kinds.data() : nullptr, maybe(c.frequencies, nulls & 32),
      maybe(c.dated, nulls & 64), maybe(c.first, nulls & 128), maybe(c.redemptions, nulls & 256),
      measures, threads, columns[0], columns[1], columns[2], columns[3], columns[4], columns[5],
      columns[6], (nulls & 512) ? nullptr : row_errors.data(), failed.data(), error_out);

  const size_t written = result < 0 ? 0 : static_cast<size_t>(n);
  check(result >= -1, "result below -1", result);
  if (bad_count || threads < 0) check(result == -1, "a negative count was accepted", result);
  for (size_t i = written; i < rows + kSpare; ++i) {
    for (int k = 0; k < 7; ++k)
      if (std::memcmp(&out[k][i], &kCanary, sizeof kCanary) != 0)
        fail("a cell outside the valued rows was written", out[k][i], 0);
    check(row_errors[i] == 12345 && failed[i] == 12345, "a row code outside the rows");
  }
  if (!error_out) return 0;
  if (result == -1) {
    check(one_of(error, kRefusals), "refusal code outside its set", result, error);
    return 0;
  }
  check(error == 0, "accepted call with an error code", result, error);
  int32_t failures = 0;
  for (size_t i = 0; i < written; ++i) {
    const int32_t e = (nulls & 512) ? 0 : row_errors[i];
    if (nulls & 512) continue;
    failures += e != 0;
    check(one_of(e, kRowErrors), "row error outside its set", 0, e);
    check((e == 0) == (failed[i] == 0) || e == 460, "failed measure without an error", 0, e);
    check(failed[i] == 0 || (failed[i] & (failed[i] - 1)) == 0, "more than one failed measure");
  }
  if (!(nulls & 512)) check(failures == result, "failure count differs from the row codes", result);
  // Row 0 through the single export: the price at a given yield.
  if (written > 0 && (measures & 1) && (per_row_kinds ? c.kinds[0] : market_kind) == 0) {
    int32_t e = 0;
    const int32_t f = c.frequencies[0];
    const bool has_f = f != 0 && !(nulls & 32);
    const int32_t dated = (nulls & 64) ? 0 : c.dated[0], first = (nulls & 128) ? 0 : c.first[0];
    const double p = KVLbpr(&c.coupons[0], 1, &c.maturities[0], 1, c.settlements[0],
                            c.market[0], dated ? &dated : nullptr, first ? &first : nullptr,
                            &c.types[0], has_f ? &f : nullptr, has_f ? 1 : 0,
                            (nulls & 256) ? nullptr : &c.redemptions[0], nullptr, nullptr,
                            nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr, 0,
                            nullptr, 0, nullptr, nullptr, nullptr, &e);
    check(std::memcmp(&p, &out[0][0], sizeof p) == 0, "row 0 price differs from KVLbpr", p, e);
    // The price comes first: its failure is the row's; after a success a
    // later measure may still fail.
    if (!(nulls & 512))
      check(e != 0 ? row_errors[0] == e && failed[0] == 1 : failed[0] != 1,
            "row 0 code differs from KVLbpr", p, e);
  }
  return 0;
}
