#!/usr/bin/env bash
# Runs each libFuzzer harness for a number of seconds from its seed corpus.
# Usage: bash fuzz/run.sh SECONDS [harness ...]   (default: every harness)
#        bash fuzz/run.sh ci [harness ...]
# "ci" runs each harness for the fixed number of inputs listed in
# fuzz/ci_runs, with seed 1 (unless KBOND_FUZZ_SEED is set) and a fresh
# working corpus under build/fuzz/ci-corpus, so that a run takes the same
# time everywhere and repeats on the machine that ran it.
# KBOND_FUZZ_JOBS=N runs N harnesses at a time (default 1), each a single
# fuzzing process; KBOND_FUZZ_SEED=S fixes libFuzzer's random seed, so that
# a run repeats the same mutations from the same seeds. The harnesses are built first (fuzz/build.sh). New inputs
# go to a working corpus under build/fuzz/corpus/<family> (the committed
# seeds stay small); a failing input is written to build/fuzz/artifacts/ and
# the script exits non-zero after running the others.
set -uo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
out="${KBOND_FUZZ_BUILD:-$root/build/fuzz}"
seconds="${1:-20}"
shift || true
parallel="${KBOND_FUZZ_JOBS:-1}"
declare -A ci_runs=()
fixed_layout=()
if [ "$seconds" = ci ]; then
  while read -r name count; do
    case "$name" in ''|'#'*) continue ;; esac
    ci_runs[$name]=$count
  done <"$root/fuzz/ci_runs"
  KBOND_FUZZ_SEED="${KBOND_FUZZ_SEED:-1}"
  rm -rf "$out/ci-corpus"
  # Without address randomisation, since the comparisons libFuzzer records
  # include pointers. That makes a run repeat exactly on one machine; the
  # start of the stack still moves with the environment's size, and
  # libFuzzer's stack-depth feature with it, so another machine may take a
  # slightly different path through the same number of inputs.
  if setarch "$(uname -m)" -R true 2>/dev/null; then fixed_layout=(setarch "$(uname -m)" -R)
  else echo "fuzz: address randomisation stays on; runs may differ slightly"; fi
fi
bash "$root/fuzz/build.sh" "$@" >/dev/null || exit 1

if [ $# -gt 0 ]; then harnesses=("$@"); else
  harnesses=(); for f in "$root"/fuzz/*_fuzzer.cpp; do harnesses+=("$(basename "$f" .cpp)"); done
fi
mkdir -p "$out/artifacts"

# One harness: its log in build/fuzz/<family>.log, a one-line verdict in
# <family>.verdict, exit status 1 on a finding.
run_one() {
  local h="${1%.cpp}" family work seeds log rc runs cov
  family="${h%_fuzzer}"
  work="$out/corpus/$family"; seeds="$root/fuzz/corpus/$family"
  local budget=(-max_total_time="$seconds")
  if [ "$seconds" = ci ]; then
    if [ -z "${ci_runs[$family]:-}" ]; then
      echo "$family: no input count in fuzz/ci_runs" >"$out/$family.verdict"
      return 1
    fi
    # No reloading of the corpus directory: nothing else writes to it.
    budget=(-runs="${ci_runs[$family]}" -reload=0)
    work="$out/ci-corpus/$family"
  fi
  mkdir -p "$work" "$seeds"
  log="$out/$family.log"
  local started=$SECONDS
  "${fixed_layout[@]}" "$out/$h" ${KBOND_FUZZ_SEED:+-seed=$KBOND_FUZZ_SEED} "${budget[@]}" -timeout=120 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$out/artifacts/$family-" "$work" "$seeds" >"$log" 2>&1
  rc=$?
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || true)
  cov=$(grep -oE 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -1 || true)
  if [ $rc -ne 0 ]; then
    { echo "$family: FAILED after ${runs:-?} runs, $cov (log $log)"
      grep -m1 -E 'invariant violated|ERROR: (AddressSanitizer|UndefinedBehaviorSanitizer|LeakSanitizer|libFuzzer)|runtime error' "$log"
    } >"$out/$family.verdict"
    return 1
  fi
  echo "$family: ${runs:-?} runs in $((SECONDS - started)) s, $cov, no failure" >"$out/$family.verdict"
}

status=0
running=0
for h in "${harnesses[@]}"; do
  if [ "$running" -ge "$parallel" ]; then
    wait -n || status=1
    running=$((running - 1))
  fi
  run_one "$h" &
  running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
  wait -n || status=1
  running=$((running - 1))
done
for h in "${harnesses[@]}"; do
  h="${h%.cpp}"
  cat "$out/${h%_fuzzer}.verdict"
done
exit $status
