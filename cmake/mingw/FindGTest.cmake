# GoogleTest for the mingw-w64 cross-build: Debian ships no Windows build of
# it, so it is compiled from the sources of the googletest package
# (/usr/src/googletest) with the cross-compiler. Provides GTest::gtest and
# GTest::gtest_main like CMake's own FindGTest.
if(TARGET GTest::gtest)
  set(GTest_FOUND TRUE)
  return()
endif()

find_path(KBOND_GTEST_SOURCE_DIR CMakeLists.txt
          PATHS /usr/src/googletest/googletest /usr/src/gtest
          NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
if(NOT KBOND_GTEST_SOURCE_DIR)
  set(GTest_FOUND FALSE)
  if(GTest_FIND_REQUIRED)
    message(FATAL_ERROR "GoogleTest sources not found (Debian package googletest)")
  endif()
  return()
endif()

set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${KBOND_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
# Third-party code: the project's warnings-as-errors do not apply to it.
target_compile_options(gtest PRIVATE -Wno-error)
target_compile_options(gtest_main PRIVATE -Wno-error)
if(NOT TARGET GTest::gtest)  # older googletest releases define no aliases
  add_library(GTest::gtest ALIAS gtest)
  add_library(GTest::gtest_main ALIAS gtest_main)
endif()
set(GTest_FOUND TRUE)
