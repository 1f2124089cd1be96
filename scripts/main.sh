#!/usr/bin/env bash
# Builds the library (release) and runs the demonstration program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install_deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKBOND_BUILD_TESTS=OFF >/dev/null
cmake --build build/release -j2
./build/release/date_demo
