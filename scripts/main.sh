#!/usr/bin/env bash
# Builds the library and the kbond program (release) and values the sample
# portfolio: price, yield, accrued interest, duration, convexity and PVBP.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install_deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKBOND_BUILD_TESTS=OFF >/dev/null
cmake --build build/release -j2 --target kbond
echo "kbond batch examples/portfolio.csv --table"
./build/release/kbond batch examples/portfolio.csv --table
