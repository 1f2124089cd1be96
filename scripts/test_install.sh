#!/usr/bin/env bash
# Installs k_bond as a user would and uses what was installed:
#   - a Release build (build/package) installed with cmake --install into a
#     fresh temporary prefix;
#   - examples/price_bond.c built against it three ways, with
#     find_package(k_bond) (shared), with pkg-config, and with
#     find_package(k_bond) against the static library, and run with an empty
#     LD_LIBRARY_PATH, as is the installed kbond;
#   - a consumer of the static library that cannot find Threads stops at
#     configure time with k_bond's message;
#   - the Debian package (cpack -G DEB), checked with dpkg-deb -c / -I / -f
#     and never installed;
#   - k_bond.bas generated from the header and checked against it.
# Nothing is written outside build/ and the temporary directory.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
jobs=${KBOND_JOBS:-2}
build=${KBOND_PACKAGE_BUILD_DIR:-build/package}
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
prefix=$tmp/prefix
status=0
fail() { echo "install: FAILED: $*"; status=1; }
expect() {  # <what> <regex> <text>
  if grep -Eq -- "$2" <<<"$3"; then echo "install: ok: $1"; else fail "$1"; echo "$3" | head -20; fi
}

# Configured for /usr so that the libraries go to Debian's multiarch
# directory; the temporary prefix is given at install time.
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
      -DKBOND_BUILD_TESTS=OFF -DKBOND_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j"$jobs"
cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(sed -n 's/^CMAKE_INSTALL_LIBDIR:PATH=//p' "$build/CMakeCache.txt")

for f in include/k_bond.h "$libdir/libk_bond.so.2002.0" "$libdir/libk_bond.so.2002" "$libdir/libk_bond.so" \
         "$libdir/libk_bond.a" "$libdir/cmake/k_bond/k_bondConfig.cmake" \
         "$libdir/cmake/k_bond/k_bondConfigVersion.cmake" "$libdir/pkgconfig/k_bond.pc" \
         bin/kbond share/man/man1/kbond.1.gz share/doc/k_bond/user-guide.md share/doc/k_bond/NOTICE; do
  [ -e "$prefix/$f" ] || fail "not installed: $f"
done
expect "soname carries the major version" "SONAME +libk_bond\.so\.2002$" \
       "$(objdump -p "$prefix/$libdir/libk_bond.so.2002.0")"
expect "man page from kbond --help" "\.TH KBOND.*price" "$(zcat "$prefix/share/man/man1/kbond.1.gz" | tr '\n' ' ')"

# ---- consumers of examples/price_bond.c ---------------------------------------
clean_price="Clean price +98\.026057"
mkdir -p "$tmp/consumer"
cat >"$tmp/consumer/CMakeLists.txt" <<EOF
cmake_minimum_required(VERSION 3.25)
project(price_bond_consumer C)
option(USE_STATIC "link libk_bond.a" OFF)
if(USE_STATIC)
  find_package(k_bond 2002 CONFIG REQUIRED COMPONENTS static)
  set(lib k_bond::k_bond_static)
else()
  find_package(k_bond 2002 CONFIG REQUIRED COMPONENTS shared)
  set(lib k_bond::k_bond)
endif()
add_executable(price_bond $root/examples/price_bond.c)
target_link_libraries(price_bond PRIVATE \${lib})
EOF
for kind in shared static; do
  dir=$tmp/consumer-$kind
  use_static=OFF; [ $kind = static ] && use_static=ON
  if cmake -S "$tmp/consumer" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DUSE_STATIC=$use_static \
           -DCMAKE_PREFIX_PATH="$prefix" >"$tmp/log" 2>&1 && cmake --build "$dir" >>"$tmp/log" 2>&1; then
    expect "find_package(k_bond) $kind consumer runs" "$clean_price" \
           "$(env LD_LIBRARY_PATH= "$dir/price_bond" 2>&1)"
  else
    fail "find_package(k_bond) $kind consumer did not build"; cat "$tmp/log"
  fi
done
if readelf -d "$tmp/consumer-static/price_bond" 2>/dev/null | grep -q "libk_bond"; then
  fail "the static consumer needs libk_bond.so"
fi

export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
if cc -o "$tmp/price_bond_pc" examples/price_bond.c $(pkg-config --cflags --libs k_bond) \
      -Wl,-rpath,"$(pkg-config --variable=libdir k_bond)" 2>"$tmp/log"; then
  expect "pkg-config consumer runs" "$clean_price" "$(env LD_LIBRARY_PATH= "$tmp/price_bond_pc" 2>&1)"
else
  fail "pkg-config consumer did not build"; cat "$tmp/log"
fi
if cc -o "$tmp/price_bond_pc_static" examples/price_bond.c \
      $(pkg-config --cflags --static --libs k_bond | sed 's/-lk_bond/-l:libk_bond.a/') 2>"$tmp/log"; then
  expect "pkg-config --static consumer runs" "$clean_price" "$(env LD_LIBRARY_PATH= "$tmp/price_bond_pc_static" 2>&1)"
else
  fail "pkg-config --static consumer did not build"; cat "$tmp/log"
fi
unset PKG_CONFIG_PATH

expect "installed kbond runs without LD_LIBRARY_PATH" "Clean price +98\.026057" \
       "$(env LD_LIBRARY_PATH= "$prefix/bin/kbond" price --type ust --coupon 4.25 \
            --maturity 2034-11-15 --settlement 2025-01-15 --yield 4.5 2>&1)"

# Static library without threads support: k_bond's own message at configure time.
if cmake -S "$tmp/consumer" -B "$tmp/consumer-nothreads" -G Ninja -DUSE_STATIC=ON \
         -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_DISABLE_FIND_PACKAGE_Threads=ON >"$tmp/log" 2>&1; then
  fail "a static consumer without Threads configured"
else
  expect "static consumer without Threads: clear error" "needs the platform's threads library" \
         "$(tr -s ' \n' ' ' <"$tmp/log")"
fi

# add_subdirectory: the same target names; k_bond's tests, benchmarks and
# programs stay out of the parent's build, which needs neither GoogleTest nor
# Google Benchmark (configured only: the library itself is built above).
mkdir -p "$tmp/parent"
cat >"$tmp/parent/CMakeLists.txt" <<EOF
cmake_minimum_required(VERSION 3.25)
project(parent C)
add_subdirectory($root k_bond)
add_executable(price_bond $root/examples/price_bond.c)
target_link_libraries(price_bond PRIVATE k_bond::k_bond)
add_executable(price_bond_static $root/examples/price_bond.c)
target_link_libraries(price_bond_static PRIVATE k_bond::k_bond_static)
EOF
if cmake -S "$tmp/parent" -B "$tmp/parent-build" -G Ninja -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON \
         -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON >"$tmp/log" 2>&1; then
  targets=$(ninja -C "$tmp/parent-build" -t targets all | sed 's/:.*//')
  grep -qx price_bond_static <<<"$targets" || fail "add_subdirectory: k_bond::k_bond_static not usable"
  extra=$(grep -E '^(kbond|date_demo|kbond_.*_tests|.*_benchmark)$' <<<"$targets" || true)
  if [ -z "$extra" ]; then echo "install: ok: add_subdirectory builds the library alone"
  else fail "add_subdirectory builds $(echo $extra)"; fi
else
  fail "add_subdirectory parent did not configure"; cat "$tmp/log"
fi

# ---- the Debian package -------------------------------------------------------
rm -f "$build"/*.deb
(cd "$build" && cpack -G DEB >"$tmp/log" 2>&1) || { fail "cpack -G DEB"; cat "$tmp/log"; }
deb=$(ls "$build"/k-bond_*.deb 2>/dev/null | head -1)
if [ -n "$deb" ]; then
  contents=$(dpkg-deb -c "$deb" | awk '{print $6}')
  for f in "./usr/$libdir/libk_bond.so.2002.0" "./usr/$libdir/libk_bond.so.2002" "./usr/$libdir/libk_bond.so" \
           "./usr/$libdir/libk_bond.a" ./usr/include/k_bond.h "./usr/$libdir/cmake/k_bond/k_bondConfig.cmake" \
           "./usr/$libdir/pkgconfig/k_bond.pc" ./usr/bin/kbond ./usr/share/man/man1/kbond.1.gz \
           ./usr/share/doc/k-bond/copyright ./usr/share/doc/k-bond/user-guide.md; do
    grep -qx -- "$f" <<<"$contents" || fail "not in the .deb: $f"
  done
  stray=$(grep -v '^\./usr/' <<<"$contents" | grep -vx '\./' || true)
  [ -z "$stray" ] || fail "files outside /usr in the .deb: $stray"
  expect ".deb package name and version" "^k-bond 2002\.0-1 $(dpkg --print-architecture)$" \
         "$(dpkg-deb -f "$deb" Package Version Architecture | awk -F': ' '{printf "%s ", $2}' | sed 's/ $//')"
  expect ".deb dependencies from dpkg-shlibdeps" "libc6 \(>= [0-9.]+\).*libstdc\+\+6" "$(dpkg-deb -f "$deb" Depends)"
  expect ".deb declares its shared library" "^libk_bond 2002 k-bond" "$(dpkg-deb -I "$deb" shlibs)"
  expect ".deb pkg-config file points at /usr" "^prefix=/usr$" \
         "$(dpkg-deb --fsys-tarfile "$deb" | tar -xO "./usr/$libdir/pkgconfig/k_bond.pc")"
  echo "install: $(basename "$deb"): $(wc -l <<<"$contents") entries"
fi

# ---- the spreadsheet module ---------------------------------------------------
/usr/bin/python3 scripts/generate_vba_module.py "$build/k_bond.bas"
/usr/bin/python3 tests/windows/check_vba_module.py "$build/k_bond.bas" || fail "k_bond.bas"
# The check must notice a declaration gone missing.
grep -v "Sub KVLbond_initMT" "$build/k_bond.bas" >"$tmp/short.bas"
if /usr/bin/python3 tests/windows/check_vba_module.py "$tmp/short.bas" >/dev/null; then
  fail "the k_bond.bas check passed a module without KVLbond_initMT"
fi

if [ $status -eq 0 ]; then echo "install: all checks passed"; fi
exit $status
