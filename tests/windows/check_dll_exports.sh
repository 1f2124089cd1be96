#!/usr/bin/env bash
# k_bond.dll must export exactly the KVL... functions that the public header
# declares, under their plain names (no _KVLbpr@120 on 32-bit), and must stand
# alone: no mingw runtime DLLs beside the system ones.
# On 32-bit, the import library must carry every function as a __stdcall
# symbol (_KVLbpr@120): proof that the exports were compiled with the
# callee-cleans convention that the header promises.
#
# Usage: check_dll_exports.sh <mingw triple> <k_bond.dll> <k_bond.h> [import library]
#   e.g. check_dll_exports.sh i686-w64-mingw32 build/win32/k_bond.dll include/k_bond.h \
#                             build/win32/libk_bond.dll.a
set -euo pipefail
triple=$1
dll=$2
header=$3
implib=${4:-}

dump=$("$triple-objdump" -p "$dll")
# The name table of the export directory:  "\t[   0] KVLbpr"
exported=$(awk '/^\[Ordinal\/Name Pointer\] Table/ {t = 1; next}
                t && /^[[:space:]]*\[ *[0-9]+\]/ {print $NF; next}
                t {t = 0}' <<<"$dump" | sort -u)
# Declarations read: KVL_EXPORT <type> KVL_API KVLname(   (as tests/abi/check_exports.sh)
declared=$(grep -oE 'KVL_API[[:space:]]+KVL[A-Za-z0-9_]+' "$header" | awk '{print $2}' | sort -u || true)

status=0
stray=$(comm -23 <(echo "$exported") <(echo "$declared") | sed '/^$/d' || true)
missing=$(comm -13 <(echo "$exported") <(echo "$declared") | sed '/^$/d' || true)
if [ -n "$stray" ]; then
  echo "$dll exports names the header does not declare:"; echo "$stray"; status=1
fi
if [ -n "$missing" ]; then
  echo "$dll lacks exports that the header declares:"; echo "$missing"; status=1
fi

# Only system DLLs may be imported: the C++ runtime is linked in statically.
imports=$(awk '/DLL Name:/ {print tolower($3)}' <<<"$dump" | sort -u)
foreign=$(grep -vxE 'kernel32\.dll|msvcrt\.dll|user32\.dll|advapi32\.dll|api-ms-win-.*\.dll' \
          <<<"$imports" || true)
if [ -n "$foreign" ]; then
  echo "$dll depends on non-system DLLs:"; echo "$foreign"; status=1
fi

if [ -n "$implib" ]; then
  symbols=$("$triple-nm" -g --defined-only "$implib" | awk '$2 == "T" {print $3}' | sort -u)
  for name in $declared; do
    if ! grep -qxE "_${name}@[0-9]+" <<<"$symbols"; then
      echo "$implib: $name is not a __stdcall symbol (_${name}@<bytes> expected)"
      status=1
    fi
  done
fi

n=$(echo "$exported" | sed '/^$/d' | wc -l)
[ $status -eq 0 ] && echo "$(basename "$(dirname "$dll")")/$(basename "$dll"): $n exported functions match the header${implib:+, all __stdcall}"
exit $status
