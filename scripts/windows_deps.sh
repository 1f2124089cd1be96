#!/usr/bin/env bash
# Installs the Windows cross-build packages when they are missing (Debian):
# the posix-threads mingw-w64 compilers for 32-bit and 64-bit Windows (the
# win32-threads variants are not needed), wine64, which runs
# the 64-bit test programs, and zip for the kits. Idempotent: does nothing when all are present.
# Never fails the caller: without these packages scripts/build_windows.sh
# skips with a message.
#
# KBOND_WINE32=1 also tries 32-bit Wine (wine32:i386, which needs the i386
# architecture and a sizeable download); if it cannot be installed the i386
# architecture is removed again and the 32-bit programs are built, not run.
set -uo pipefail

SUDO=""
[ "$(id -u)" -ne 0 ] && command -v sudo >/dev/null && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive

packages=(g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix wine64 zip)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  if ! { $SUDO apt-get update -qq &&
         $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"; }; then
    echo "windows: could not install ${missing[*]}: the Windows build will be skipped"
  fi
fi

if [ "${KBOND_WINE32:-0}" = 1 ] && ! dpkg -s wine32:i386 >/dev/null 2>&1; then
  added_i386=0
  if ! dpkg --print-foreign-architectures | grep -qx i386; then
    $SUDO dpkg --add-architecture i386 && added_i386=1
  fi
  # An incomplete i386 index (mirror mid-sync) may still be enough.
  $SUDO apt-get update -qq || true
  if $SUDO apt-get install -y -qq --no-install-recommends wine32:i386; then
    echo "wine32:i386 installed"
  else
    echo "windows: wine32:i386 not installable: the 32-bit test programs will not run"
    if [ $added_i386 = 1 ]; then
      # Leave apt as it was: a half-usable i386 index breaks later updates.
      $SUDO dpkg --remove-architecture i386 && $SUDO apt-get update -qq || true
    fi
  fi
fi
exit 0
