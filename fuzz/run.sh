#!/usr/bin/env bash
# Runs each libFuzzer harness for a number of seconds from its seed corpus.
# Usage: bash fuzz/run.sh SECONDS [harness ...]   (default: every harness)
# The harnesses are built first (fuzz/build.sh). New inputs go to a working
# corpus under build/fuzz/corpus/<family> (the committed seeds stay small);
# a failing input is written to build/fuzz/artifacts/ and the script exits
# non-zero after running the others.
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="${KBOND_FUZZ_BUILD:-$root/build/fuzz}"
seconds="${1:-20}"
shift || true
bash "$root/fuzz/build.sh" "$@" >/dev/null || exit 1

if [ $# -gt 0 ]; then harnesses=("$@"); else
  harnesses=(); for f in "$root"/fuzz/*_fuzzer.cpp; do harnesses+=("$(basename "$f" .cpp)"); done
fi
mkdir -p "$out/artifacts"
status=0
for h in "${harnesses[@]}"; do
  h="${h%.cpp}"; family="${h%_fuzzer}"
  work="$out/corpus/$family"; seeds="$root/fuzz/corpus/$family"
  mkdir -p "$work" "$seeds"
  log="$out/$family.log"
  "$out/$h" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$out/artifacts/$family-" "$work" "$seeds" >"$log" 2>&1
  rc=$?
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || true)
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 || true)
  if [ $rc -ne 0 ]; then
    status=1
    echo "$family: FAILED after ${runs:-?} runs, $cov (log $log)"
    grep -m1 -E 'invariant violated|ERROR: (AddressSanitizer|UndefinedBehaviorSanitizer|libFuzzer)|runtime error' "$log"
  else
    echo "$family: ${runs:-?} runs, $cov, no failure"
  fi
done
exit $status
