# Cross-build for 32-bit Windows with mingw-w64 (Debian: g++-mingw-w64-i686).
#   cmake -S . -B build/win32 -G Ninja \
#         -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-mingw-w64-i686.cmake \
#         -DKBOND_BUILD_TESTS=OFF -DKBOND_BUILD_BENCH=OFF
set(KBOND_MINGW_TRIPLE i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
