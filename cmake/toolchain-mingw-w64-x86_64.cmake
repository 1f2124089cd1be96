# Cross-build for 64-bit Windows with mingw-w64 (Debian: g++-mingw-w64-x86-64).
#   cmake -S . -B build/win64 -G Ninja \
#         -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-mingw-w64-x86_64.cmake \
#         -DKBOND_BUILD_TESTS=OFF -DKBOND_BUILD_BENCH=OFF
set(KBOND_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64-common.cmake)
