#!/usr/bin/env bash
# Installs the build and test dependencies when they are missing (Debian).
# Idempotent: does nothing when everything is already present.
set -euo pipefail

# clang-14 with its compiler runtime (libFuzzer, sanitizers) builds the fuzz
# harnesses.
# The Python package builds, installs and is tested with Debian's interpreter
# and its packages (numpy, pandas, matplotlib, setuptools, wheel, build, venv;
# dask and distributed for the cluster functions).
# pkg-config, help2man (the kbond man page) and dpkg-dev (dpkg-shlibdeps for
# the Debian package) serve the install test.
packages=(cmake g++ ninja-build libgtest-dev libbenchmark-dev python3 libquantlib0-dev
          clang-14 libclang-rt-14-dev
          python3-numpy python3-pandas python3-matplotlib python3-setuptools python3-wheel
          python3-build python3-venv python3-pip python3-dask python3-distributed
          pkg-config help2man dpkg-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -ne 0 ] && command -v sudo >/dev/null && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}"
fi

# Windows cross-build tools (mingw-w64 posix compilers, wine64); never fails.
bash "$(dirname "$0")/windows_deps.sh"
