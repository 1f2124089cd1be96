#!/usr/bin/env bash
# The portfolio benchmark: kbond batch on one and two threads over a mixed
# book, and k_bond.prices against a plain C loop of KVLbpr, as ratios taken
# in one run (bench/batch_ratio.py).
# Usage: bash scripts/bench_batch.sh [rows] [rounds]   (Release build in build/release)
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build/release"
[ -f "$build/build.ninja" ] || cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build "$build" -j2 --target k_bond kbond batch_benchmark
/usr/bin/python3 "$root/bench/batch_ratio.py" "$build" "${1:-1000000}" "${2:-3}"
