#!/usr/bin/env bash
# Packs one width of the Windows cross-build into a kit for users:
#
#   bash scripts/windows_kit.sh win64 build/win64   -> build/kit/k_bond-2002.0-win64.zip
#
# The kit holds k_bond.dll, k_bond.h, k_bond.def, the import library
# libk_bond.dll.a, kbond.exe when it was built, k_bond.bas (the VBA module,
# generated here from include/k_bond.h and checked against it), a README.txt
# and the notices of the statically linked runtime (licenses/). A .zip when
# Debian's zip is installed, else a .tar.gz.
set -euo pipefail
cd "$(dirname "$0")/.."
arch=$1
dir=$2
version=$(sed -n 's/^project(k_bond VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=k_bond-$version-$arch
out=build/kit
stage=$out/$name
rm -rf "$stage" "$out/$name.zip" "$out/$name.tar.gz"
mkdir -p "$stage/licenses"

cp "$dir/k_bond.dll" "$dir/k_bond.def" "$dir/libk_bond.dll.a" include/k_bond.h "$stage/"
[ -f "$dir/kbond.exe" ] && cp "$dir/kbond.exe" "$stage/"
/usr/bin/python3 scripts/generate_vba_module.py "$stage/k_bond.bas"
/usr/bin/python3 tests/windows/check_vba_module.py "$stage/k_bond.bas" >/dev/null
cp NOTICE "$stage/licenses/NOTICE.txt"
for pkg in gcc-mingw-w64-base:gcc-runtime mingw-w64-common:mingw-w64-winpthreads; do
  src=/usr/share/doc/${pkg%%:*}/copyright
  [ -f "$src" ] && cp "$src" "$stage/licenses/${pkg##*:}.txt"
done

bits=${arch#win}
cat >"$stage/README.txt" <<EOF
k_bond $version for $bits-bit Windows

k_bond.dll       the library: every KVL... function of k_bond.h under its plain
                 name$([ "$bits" = 32 ] && echo ", __stdcall"); it needs only KERNEL32.dll and msvcrt.dll
k_bond.h         the C interface, with a comment on every function
k_bond.def       the export list$([ "$bits" = 64 ] && printf '%s\n%s' "; for MSVC, make an import library with" \
                 "                 lib /def:k_bond.def /machine:x64 /out:k_bond.lib")
libk_bond.dll.a  import library for mingw-w64 / gcc
k_bond.bas       VBA module declaring every function for 32- and 64-bit Office:
                 in the VBA editor, File > Import File...
$([ -f "$stage/kbond.exe" ] && echo "kbond.exe        the command-line program (kbond --help)")
licenses/        notices of k_bond and of the runtime linked into the DLL

Use the DLL of Office's width: 64-bit Office needs the win64 kit, 32-bit
Office the win32 kit, whatever the width of Windows. Put k_bond.dll on the
PATH or load it once by its full path (see the user guide, "From a
spreadsheet macro").

Dates are k_bond serials (1 = 1 January 1900, real calendar): from
1 March 1900 on, a spreadsheet date number minus 1.
EOF
sed -i 's/$/\r/' "$stage/README.txt"

if command -v zip >/dev/null; then
  (cd "$out" && zip -qrX "$name.zip" "$name")
  echo "windows: kit $out/$name.zip"
else
  tar -C "$out" -czf "$out/$name.tar.gz" "$name"
  echo "windows: kit $out/$name.tar.gz (no zip installed)"
fi
rm -rf "$stage"
