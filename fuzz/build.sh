#!/usr/bin/env bash
# Builds the libFuzzer harnesses with clang: the library's sources are
# compiled once with the fuzzer's coverage instrumentation, AddressSanitizer
# and UndefinedBehaviorSanitizer, then linked into every *_fuzzer.cpp.
# Usage: bash fuzz/build.sh [harness ...]   (default: all)
# Output: build/fuzz/<name>_fuzzer (override with KBOND_FUZZ_BUILD).
# KBOND_FUZZ_OPT sets the optimisation level (default -O1; long local runs
# go faster at -O2).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="${KBOND_FUZZ_BUILD:-$root/build/fuzz}"
jobs="${KBOND_JOBS:-2}"
cxx="${CXX_FUZZ:-$(command -v clang++-14 || command -v clang++)}"
mkdir -p "$out/obj"

flags=(-std=c++20 "${KBOND_FUZZ_OPT:--O1}" -g -fno-omit-frame-pointer -Wall -Wextra
       -fsanitize=address,undefined -fno-sanitize-recover=undefined
       -I"$root/include" -I"$root/src" -I"$root/fuzz")

# Library objects, rebuilt only when the source is newer than the object.
export cxx out root
export flags_str="${flags[*]}"
find "$root/src" -name '*.cpp' | sort | xargs -P "$jobs" -I{} bash -c '
  src="{}"; rel="${src#$root/src/}"; obj="$out/obj/${rel//\//__}.o"
  newest=$(find "$root/src" "$root/include" -name "*.h" -newer "$obj" 2>/dev/null | head -1)
  if [ ! -f "$obj" ] || [ "$src" -nt "$obj" ] || [ -n "$newest" ]; then
    $cxx $flags_str -fsanitize=fuzzer-no-link -DKBOND_BUILDING_LIBRARY -c "$src" -o "$obj"
  fi'
# Link exactly the objects of today's sources (a removed source leaves its
# object behind).
objects=()
while IFS= read -r src; do
  rel="${src#$root/src/}"; objects+=("$out/obj/${rel//\//__}.o")
done < <(find "$root/src" -name '*.cpp' | sort)

if [ $# -gt 0 ]; then harnesses=("$@"); else
  harnesses=(); for f in "$root"/fuzz/*_fuzzer.cpp; do harnesses+=("$(basename "$f" .cpp)"); done
fi
for h in "${harnesses[@]}"; do
  h="${h%.cpp}"
  echo "linking $h"
  $cxx "${flags[@]}" -fsanitize=fuzzer "$root/fuzz/$h.cpp" "${objects[@]}" -lpthread -o "$out/$h"
done
