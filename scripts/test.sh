#!/usr/bin/env bash
# Builds and runs every test: the whole suite under AddressSanitizer and
# UndefinedBehaviorSanitizer with warnings as errors, the concurrency suite
# under ThreadSanitizer, a short run of every fuzz harness, the installed
# library as users consume it, then the Windows DLL checks and kits.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/check_type_branches.sh   # market conventions only in the catalogue and its rules
bash scripts/install_deps.sh
jobs=${KBOND_JOBS:-2}

cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DKBOND_SANITIZE=address -DKBOND_WERROR=ON >/dev/null
cmake --build build/asan -j"$jobs"
ctest --test-dir build/asan --output-on-failure -j"$jobs"
bash scripts/test_python_install.sh   # pip install into fresh venvs, import from elsewhere

cmake -S . -B build/tsan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
      -DKBOND_SANITIZE=thread -DKBOND_BUILD_BENCH=OFF -DKBOND_WERROR=ON >/dev/null
cmake --build build/tsan -j"$jobs" --target kbond_concurrency_tests
TSAN_OPTIONS="halt_on_error=1" ctest --test-dir build/tsan -L concurrency --output-on-failure

# Fuzzing: every libFuzzer harness (clang 14, ASan+UBSan) from its seeds for
# the fixed number of inputs in fuzz/ci_runs, from a fixed random seed, as
# many at a time as build jobs; a crash, sanitizer report, leak, timeout or
# broken invariant fails the run.
KBOND_JOBS="$jobs" KBOND_FUZZ_JOBS="$jobs" bash fuzz/run.sh ci

# Install: a Release build installed into a temporary prefix and used through
# find_package, pkg-config and the static library; the Debian package's
# contents and control fields; the VBA module against the header.
KBOND_JOBS="$jobs" bash scripts/test_install.sh

# Windows DLLs: mingw-w64 cross-builds for 32- and 64-bit, export tables checked
# against the header, loading tests under wine64 (skipped when mingw-w64 is missing).
KBOND_JOBS="$jobs" bash scripts/build_windows.sh
