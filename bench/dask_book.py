"""A book valued by k_bond.dask on a local cluster: rows per second end to
end (CSV read, valuation, CSV written) and each worker's peak memory, the
figures behind the user guide's recipe for 10^8 rows.

Usage: /usr/bin/python3 bench/dask_book.py BUILD_DIR [ROWS] [WORKERS] [BLOCKSIZE]
"""
import os
import resource
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "python"))


def peak_mb():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024


def cpu_seconds():
    usage = resource.getrusage(resource.RUSAGE_SELF)
    return usage.ru_utime + usage.ru_stime


def main():
    build = sys.argv[1]
    rows = int(sys.argv[2]) if len(sys.argv) > 2 else 1_000_000
    workers = int(sys.argv[3]) if len(sys.argv) > 3 else 2
    blocksize = sys.argv[4] if len(sys.argv) > 4 else "16MB"
    os.environ.setdefault("KBOND_LIBRARY", os.path.join(build, "libk_bond.so"))
    os.environ["PYTHONPATH"] = os.path.join(HERE, "..", "python")
    import dask.dataframe as dd
    from distributed import Client, LocalCluster
    import k_bond.dask as kd

    work = tempfile.mkdtemp()
    book = os.path.join(work, "book.csv")
    subprocess.run([sys.executable, os.path.join(HERE, "make_portfolio.py"), str(rows), book],
                   check=True)
    with LocalCluster(n_workers=workers, threads_per_worker=1, processes=True,
                      dashboard_address=None) as cluster, Client(cluster) as client:
        frame = dd.read_csv(book, blocksize=blocksize, dtype=kd.CSV_DTYPES,
                            float_precision="round_trip")
        before = client.run(cpu_seconds)
        start = time.perf_counter()
        kd.value(frame, threads=1).to_csv(os.path.join(work, "valued-*.csv"), index=False)
        seconds = time.perf_counter() - start
        peaks = client.run(peak_mb)
        cpu = sum(client.run(cpu_seconds).values()) - sum(before.values())
    print(f"{rows} rows, {frame.npartitions} partitions of {blocksize}, {workers} workers: "
          f"{seconds:.1f} s, {rows / seconds:.0f} rows/s, load average {os.getloadavg()[0]:.1f}")
    print(f"worker CPU {cpu:.1f} s in all: {cpu / rows * 1e6:.1f} us a row, "
          f"{rows / cpu:.0f} rows per core-second")
    print("worker peak memory: " + ", ".join(f"{v:.0f} MB" for v in peaks.values()))
    subprocess.run(["rm", "-rf", work])


if __name__ == "__main__":
    main()
