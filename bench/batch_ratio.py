"""Portfolio timings as ratios measured in one run, so that a busy machine
slows both sides of each ratio alike:

  kbond batch --jobs 2 / --jobs 1      wall time over the mixed book (CSV in, CSV out)
  k_bond.prices / plain C loop         1,000,000 prices, Python (numpy columns) against
                                       KVLbpr called row by row (bench/batch_benchmark)

Each side runs `rounds` times, alternating, and the medians are compared.
Peak memory is the largest resident set reported by /usr/bin/time -v (CLI)
or getrusage (Python). Run through scripts/bench_batch.sh.

Usage: /usr/bin/python3 bench/batch_ratio.py BUILD_DIR [ROWS] [ROUNDS]
"""
import json
import os
import re
import resource
import statistics
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "python"))


def timed(command):
    """(wall seconds, CPU seconds, peak resident KB) of a command, output
    discarded."""
    start = time.perf_counter()
    proc = subprocess.run(["/usr/bin/time", "-v", *command], stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE, text=True)
    wall = time.perf_counter() - start

    def field(name):
        found = re.search(name + r": ([0-9.]+)", proc.stderr)
        return float(found.group(1)) if found else 0.0
    cpu = field(r"User time \(seconds\)") + field(r"System time \(seconds\)")
    return wall, cpu, int(field(r"Maximum resident set size \(kbytes\)"))


def c_loop_seconds(bench):
    out = subprocess.run([bench, "--benchmark_filter=kvlbpr_loop", "--benchmark_format=json",
                          "--benchmark_min_time=0.01"], capture_output=True, text=True,
                         check=True).stdout
    runs = json.loads(out)["benchmarks"]
    return runs[0]["real_time"] / 1000.0  # milliseconds


def main():
    build = sys.argv[1]
    rows = int(sys.argv[2]) if len(sys.argv) > 2 else 1_000_000
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 3
    os.environ.setdefault("KBOND_LIBRARY", os.path.join(build, "libk_bond.so"))
    import numpy as np
    import k_bond

    kbond = os.path.join(build, "kbond")
    bench = os.path.join(build, "batch_benchmark")
    csv = tempfile.NamedTemporaryFile(suffix=".csv", delete=False).name
    subprocess.run([sys.executable, os.path.join(HERE, "make_portfolio.py"), str(rows), csv],
                   check=True)
    # The C loop's rows (bench/batch_benchmark.cpp), as numpy columns.
    i = np.arange(1_000_000, dtype=np.int64)
    types = np.array([0, 40, 60, 81, 260, 200, 220, 3, 1, 100, 240, 280, 20, 380, 500, 530],
                     dtype=np.int32)[i % 16]
    coupons = (0.5 + (i % 91) * 0.05) / 100.0
    maturities = (45823 + 30 + (i * 7919) % 10950).astype(np.int32)
    yields = (1.0 + (i % 61) * 0.1) / 100.0

    def python_prices(threads):
        start = time.perf_counter()
        k_bond.prices(yield_=yields, coupon=coupons, maturity=maturities, settlement=45823,
                      bond_type=types, errors="nan", threads=threads)
        return time.perf_counter() - start

    t = {k: [] for k in ("jobs1", "jobs2", "cpu1", "cpu2", "py_all", "py_one", "c_loop")}
    peak = {"jobs1": 0, "jobs2": 0}
    try:
        for _ in range(rounds):
            for jobs in (1, 2):
                wall, cpu, kb = timed([kbond, "batch", csv, "--jobs", str(jobs)])
                t[f"jobs{jobs}"].append(wall)
                t[f"cpu{jobs}"].append(cpu)
                peak[f"jobs{jobs}"] = max(peak[f"jobs{jobs}"], kb)
            t["c_loop"].append(c_loop_seconds(bench))
            t["py_all"].append(python_prices(0))
            t["py_one"].append(python_prices(1))
    finally:
        os.unlink(csv)
    m = {k: statistics.median(v) for k, v in t.items()}
    py_peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    print(f"rows {rows}, rounds {rounds}, load average {os.getloadavg()[0]:.1f}")
    for jobs in (1, 2):
        print(f"kbond batch --jobs {jobs}   {m[f'jobs{jobs}']:7.2f} s  "
              f"{rows / m[f'jobs{jobs}']:10.0f} rows/s  CPU {m[f'cpu{jobs}']:.2f} s  "
              f"peak {peak[f'jobs{jobs}'] / 1024:.0f} MB")
    print(f"  ratio jobs 2 / jobs 1          {m['jobs2'] / m['jobs1']:.2f}   (target <= 0.6)")
    print(f"C loop of KVLbpr       {m['c_loop']:7.3f} s  {1e6 / m['c_loop']:10.0f} rows/s")
    print(f"k_bond.prices, 1 thread  {m['py_one']:5.3f} s  ratio to the C loop "
          f"{m['py_one'] / m['c_loop']:.2f}")
    print(f"k_bond.prices, all cores {m['py_all']:5.3f} s  ratio to the C loop "
          f"{m['py_all'] / m['c_loop']:.2f}   (target <= 1.5)")
    print(f"Python peak memory      {py_peak / 1024:.0f} MB")


if __name__ == "__main__":
    main()
