# Cross-build for 32-bit Windows with mingw-w64 (Debian: g++-mingw-w64-i686).
#   cmake -S . -B build/win32 -G Ninja \
#         -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-mingw-w64-i686.cmake \
#         -DKBOND_BUILD_TESTS=OFF -DKBOND_BUILD_BENCH=OFF
set(KBOND_MINGW_TRIPLE i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)

# Doubles in SSE2 registers rather than the x87 stack: results (and the
# rounding of prices to their market's decimals) then match the 64-bit DLL
# and other platforms instead of depending on 80-bit intermediates.
# Spreadsheets and older Windows programs call with a stack aligned to 4
# bytes only: -mstackrealign lets functions that keep 16-byte-aligned SSE
# data on the stack realign it on entry.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
