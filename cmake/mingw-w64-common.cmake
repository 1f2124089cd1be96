# Shared part of the mingw-w64 toolchain files. Expects KBOND_MINGW_TRIPLE
# (i686-w64-mingw32 or x86_64-w64-mingw32) and CMAKE_SYSTEM_PROCESSOR.
#
# The posix-threads variant of the compilers is used: the library's critical
# sections are std::mutex and its back-off sleep std::this_thread::sleep_for,
# which the win32-threads variant of GCC 12 does not provide. libgcc,
# libstdc++ and winpthread are linked statically so that k_bond.dll needs
# nothing beyond KERNEL32.dll and msvcrt.dll.
set(CMAKE_SYSTEM_NAME Windows)

find_program(KBOND_MINGW_CC NAMES ${KBOND_MINGW_TRIPLE}-gcc-posix ${KBOND_MINGW_TRIPLE}-gcc REQUIRED)
find_program(KBOND_MINGW_CXX NAMES ${KBOND_MINGW_TRIPLE}-g++-posix ${KBOND_MINGW_TRIPLE}-g++ REQUIRED)
set(CMAKE_C_COMPILER ${KBOND_MINGW_CC})
set(CMAKE_CXX_COMPILER ${KBOND_MINGW_CXX})
set(CMAKE_RC_COMPILER ${KBOND_MINGW_TRIPLE}-windres)
set(CMAKE_AR ${KBOND_MINGW_TRIPLE}-ar CACHE FILEPATH "")
set(CMAKE_RANLIB ${KBOND_MINGW_TRIPLE}-ranlib CACHE FILEPATH "")
set(CMAKE_NM ${KBOND_MINGW_TRIPLE}-nm CACHE FILEPATH "")
set(CMAKE_DLLTOOL ${KBOND_MINGW_TRIPLE}-dlltool CACHE FILEPATH "")
set(CMAKE_OBJDUMP ${KBOND_MINGW_TRIPLE}-objdump CACHE FILEPATH "")

set(CMAKE_FIND_ROOT_PATH /usr/${KBOND_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
