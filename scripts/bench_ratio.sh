#!/usr/bin/env bash
# Runs the straight-bond benchmarks several times and reports each call's
# median time next to the hand-written closed-form price measured in the
# same run, so that a busy or slow machine shows in the yardstick too.
# Usage: bash scripts/bench_ratio.sh [runs]   (Release build in build/release)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
runs="${1:-9}"
bench="$root/build/release/bond_benchmark"
[ -x "$bench" ] || { echo "build build/release first (bond_benchmark)"; exit 1; }
for _ in $(seq "$runs"); do
  "$bench" --benchmark_repetitions=3 --benchmark_report_aggregates_only=true 2>/dev/null |
    awk '/_median/ {name=$1; sub(/_median$/, "", name); print name, $4}'
  echo "--"
done | awk '
  /^--/ { for (k in t) if (k != ref) { r[k] = r[k] " " t[k] / t[ref]; v[k] = v[k] " " t[k] }
          y = y " " t[ref]; delete t; next }
  { t[$1] = $2 }
  BEGIN { ref = "hand_written/treasury_10y" }
  function median(list,   a, n, i, j, x) {
    n = split(list, a, " ")
    for (i = 2; i <= n; i++) { x = a[i]; for (j = i - 1; j >= 1 && a[j] > x; j--) a[j+1] = a[j]; a[j+1] = x }
    return n % 2 ? a[(n + 1) / 2] : (a[n / 2] + a[n / 2 + 1]) / 2
  }
  END {
    printf "%-28s %10s %8s\n", "call", "median ns", "x hand"
    printf "%-28s %10.0f %8s\n", ref, median(y), "1.00"
    for (k in r) printf "%-28s %10.0f %8.2f\n", k, median(v[k]), median(r[k])
  }'
