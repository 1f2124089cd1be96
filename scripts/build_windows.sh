#!/usr/bin/env bash
# Cross-builds k_bond.dll for 32-bit and 64-bit Windows with mingw-w64, checks
# both export tables against include/k_bond.h, and runs the two test programs
# (tests/windows/) under Wine where Wine can run them, then packs each width
# into a kit for users (scripts/windows_kit.sh: DLL, header, .def, import
# library, kbond.exe, the VBA module k_bond.bas).
#
#   bash scripts/build_windows.sh            build/win32/k_bond.dll, build/win64/k_bond.dll
#                                            build/kit/k_bond-<version>-win32.zip, ...-win64.zip
#
# Without the mingw-w64 compilers it prints a message and exits 0, unless
# KBOND_WINDOWS_REQUIRED=1. Without a Wine able to run a program of one width
# that run is skipped with a message. Environment:
#   KBOND_JOBS                 parallel build jobs (default 2)
#   KBOND_WINDOWS_BUILD_TYPE   CMake build type (default Release)
#   KBOND_WINDOWS_REQUIRED=1   fail instead of skipping when mingw-w64 is missing
#   KBOND_WINDOWS_TESTS=1      also cross-build the GoogleTest suites for 64-bit
#                              Windows (build/win64-tests) and run them under wine64
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
jobs=${KBOND_JOBS:-2}
build_type=${KBOND_WINDOWS_BUILD_TYPE:-Release}

have_mingw=1
for triple in i686-w64-mingw32 x86_64-w64-mingw32; do
  if ! command -v "$triple-g++-posix" >/dev/null && ! command -v "$triple-g++" >/dev/null; then
    have_mingw=0
  fi
done
if [ $have_mingw -eq 0 ]; then
  echo "windows: mingw-w64 compilers not found (g++-mingw-w64-i686, g++-mingw-w64-x86-64): skipped"
  [ "${KBOND_WINDOWS_REQUIRED:-0}" = 1 ] && exit 1
  exit 0
fi

# Wine loaders: Debian puts them in /usr/lib/wine (wine64 for 64-bit programs,
# wine from wine32:i386 for 32-bit ones); elsewhere they are on the PATH.
find_loader() {
  local name
  for name in "$@"; do
    if [ -x "/usr/lib/wine/$name" ]; then echo "/usr/lib/wine/$name"; return; fi
  done
  for name in "$@"; do
    if command -v "$name" >/dev/null && [ ! -d /usr/lib/wine ]; then command -v "$name"; return; fi
  done
}
wine64_loader=$(find_loader wine64)
wine32_loader=$(find_loader wine)
wineserver=$(find_loader wineserver64 wineserver)

export WINEPREFIX="$root/build/wineprefix"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree=;mshtml="  # no Mono or Gecko installer prompts
unset DISPLAY

run_under_wine() {  # <loader> <build dir>: both test programs
  local loader=$1 dir=$2
  if [ ! -f "$WINEPREFIX/system.reg" ]; then  # first use: create the prefix quietly
    "$loader" wineboot --init >/dev/null 2>&1 || true
  fi
  (cd "$dir" && "$loader" ./kbond_stdcall_smoke.exe k_bond.dll && "$loader" ./kbond_import_link.exe) || return 1
  # The kit's kbond.exe values the user guide's Treasury note.
  (cd "$dir" && "$loader" ./kbond.exe price --type ust --coupon 4.25 --maturity 2034-11-15 \
                 --settlement 2025-01-15 --yield 4.5) | tr -d '\r' | grep -E "^Clean price +98\.026057$"
}

status=0
for arch in win32 win64; do
  if [ $arch = win32 ]; then triple=i686-w64-mingw32; toolchain=i686; loader=$wine32_loader
  else triple=x86_64-w64-mingw32; toolchain=x86_64; loader=$wine64_loader; fi
  dir=build/$arch

  cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE="$build_type" \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw-w64-$toolchain.cmake" \
        -DKBOND_BUILD_TESTS=OFF -DKBOND_BUILD_BENCH=OFF -DKBOND_WERROR=ON >/dev/null
  cmake --build "$dir" -j"$jobs" --target k_bond kbond kbond_stdcall_smoke kbond_import_link

  implib=""
  [ $arch = win32 ] && implib="$dir/libk_bond.dll.a"
  bash tests/windows/check_dll_exports.sh "$triple" "$dir/k_bond.dll" include/k_bond.h $implib \
    || status=1
  bash scripts/windows_kit.sh "$arch" "$dir" || status=1

  if [ -n "$loader" ]; then
    echo "windows: running the $arch test programs under $(basename "$loader")"
    run_under_wine "$loader" "$dir" || status=1
  elif [ $arch = win32 ]; then
    echo "windows: no 32-bit Wine (wine32:i386): 32-bit test programs built, not run"
  else
    echo "windows: no wine64: 64-bit test programs built, not run"
  fi
done

if [ "${KBOND_WINDOWS_TESTS:-0}" = 1 ]; then
  if [ -z "$wine64_loader" ]; then
    echo "windows: no wine64: the 64-bit test suites are not run"
  else
    dir=build/win64-tests
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE="$build_type" \
          -DCMAKE_TOOLCHAIN_FILE="$root/cmake/toolchain-mingw-w64-x86_64.cmake" \
          -DKBOND_BUILD_TESTS=ON -DKBOND_BUILD_BENCH=OFF -DKBOND_WERROR=ON >/dev/null
    cmake --build "$dir" -j"$jobs"
    for suite in "$dir"/kbond_*_tests.exe; do
      [ -e "$suite" ] || continue
      echo "windows: $(basename "$suite") under wine64"
      (cd "$dir" && "$wine64_loader" "./$(basename "$suite")" --gtest_brief=1) || status=1
    done
  fi
fi

# Stop this prefix's wineserver (and the helper programs it started) rather
# than leave it lingering after the script.
if [ -n "$wineserver" ] && [ -d "$WINEPREFIX" ]; then "$wineserver" -k 2>/dev/null || true; fi
exit $status
