#!/usr/bin/env bash
# The Python package as a new user installs it, offline: a clean clone of
# this checkout's HEAD is built into a wheel (python3 -m build) and installed
# with pip into fresh virtual environments, then imported from another
# directory with no KBOND_LIBRARY set.
#
#   plain venv                  the wheel alone: k_bond needs no other package
#   --system-site-packages venv `pip install .` from the clone; Debian's numpy,
#                               pandas and matplotlib stay visible there, since
#                               no package index is reachable to install them
#                               into the venv, and the DataFrame and plot
#                               helpers are checked with them
#
# Every interpreter is Debian's /usr/bin/python3 (the python3 first on PATH
# may be another one that does not see Debian's packages).
set -euo pipefail
repo="$(cd "$(dirname "$0")/.." && pwd)"
py=/usr/bin/python3
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
export KBOND_JOBS="${KBOND_JOBS:-2}"
unset KBOND_LIBRARY PYTHONPATH

git clone -q "$repo" "$work/src"
"$py" -m build --wheel --no-isolation --outdir "$work/dist" "$work/src" >"$work/build.log" 2>&1 \
  || { cat "$work/build.log"; exit 1; }
wheel="$(ls "$work"/dist/k_bond-*.whl)"
echo "built $(basename "$wheel")"
# The listing is read whole first: grep -q stopping early would end unzip with
# SIGPIPE, which pipefail counts as a failure.
listing="$(unzip -Z1 "$wheel")"
grep -qx 'k_bond/libk_bond.so' <<<"$listing" || { echo "the wheel lacks libk_bond.so"; exit 1; }

mkdir -p "$work/elsewhere"
check='
import datetime as dt, os, sys, k_bond
bond = k_bond.Bond(type="treasury", coupon=0.0425, maturity=dt.date(2034, 11, 15))
price = bond.price(0.045, settlement="2025-01-15")
assert abs(price - 98.026057) < 1e-6, price
assert k_bond.library_path().startswith(sys.prefix), k_bond.library_path()
assert os.path.dirname(k_bond.__file__).startswith(sys.prefix), k_bond.__file__
print(f"{sys.prefix}: k_bond {k_bond.__version__}, library {k_bond.library_version()}, price {price:.6f}")
'

"$py" -m venv "$work/plain"
"$work/plain/bin/python" -m pip install -q --no-index "$wheel"
(cd "$work/elsewhere" && "$work/plain/bin/python" -c "$check")

"$py" -m venv --system-site-packages "$work/site"
"$work/site/bin/python" -m pip install -q --no-build-isolation --no-index "$work/src" \
  >"$work/pip.log" 2>&1 || { cat "$work/pip.log"; exit 1; }
(cd "$work/elsewhere" && "$work/site/bin/python" -c "$check
import k_bond
frame = bond.cashflows(\"2025-01-15\", frame=True)
assert list(frame.columns)[:3] == [\"date\", \"coupon\", \"principal\"], frame.columns
print(f\"cash-flow frame: {len(frame)} rows\")
")
echo "python install: OK"
