# k_bond.dll with mingw-w64 (included by CMakeLists.txt on Windows targets).
#
# Export table: exactly the functions that include/k_bond.h declares, under
# their plain names. A module-definition file is generated at build time from
# the header; on 32-bit it lists the __stdcall names as the objects spell them
# (KVLbpr@120) and the linker's --kill-at strips the decoration, so the table
# holds "KVLbpr". The import library is then made by dlltool from the same
# file, so that C callers compiled against k_bond.h (which reference
# _KVLbpr@120) bind to the plain export.
if(NOT MINGW)
  message(WARNING "k_bond.dll export setup is written for mingw-w64 toolchains")
  return()
endif()

# Cross-built test suites (KBOND_BUILD_TESTS=ON) take GoogleTest from its
# Debian source package: cmake/mingw/FindGTest.cmake.
if(CMAKE_CROSSCOMPILING)
  list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/mingw)
endif()

set(KBOND_DEF ${CMAKE_CURRENT_BINARY_DIR}/k_bond.def)
set(KBOND_OBJECT_LIST ${CMAKE_CURRENT_BINARY_DIR}/k_bond_objects.txt)
set(KBOND_HEADER ${CMAKE_CURRENT_SOURCE_DIR}/include/k_bond.h)
set(KBOND_EXPORT_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/generate_windows_exports.cmake)

file(GENERATE OUTPUT ${KBOND_OBJECT_LIST}
     CONTENT "$<JOIN:$<TARGET_OBJECTS:kbond_objects>,\n>\n")

add_custom_command(
  OUTPUT ${KBOND_DEF}
  COMMAND ${CMAKE_COMMAND} -DHEADER=${KBOND_HEADER} -DDEF=${KBOND_DEF} -DNM=${CMAKE_NM}
          -DOBJECT_LIST=${KBOND_OBJECT_LIST} -P ${KBOND_EXPORT_SCRIPT}
  DEPENDS ${KBOND_HEADER} ${KBOND_EXPORT_SCRIPT} ${CMAKE_CURRENT_LIST_DIR}/kbond_exports.cmake
          ${KBOND_OBJECT_LIST} $<TARGET_OBJECTS:kbond_objects>
  COMMENT "Generating k_bond.def from include/k_bond.h"
  VERBATIM)
target_sources(k_bond PRIVATE ${KBOND_DEF})
# GNU ld exports every global symbol when it finds no export at all (an
# empty list while the families are being written): never do that.
target_link_options(k_bond PRIVATE "LINKER:--exclude-all-symbols")

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  target_link_options(k_bond PRIVATE "LINKER:--kill-at")
  add_custom_command(
    TARGET k_bond POST_BUILD
    COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${KBOND_DEF} --dllname k_bond.dll
            --output-lib $<TARGET_LINKER_FILE_NAME:k_bond>
    WORKING_DIRECTORY $<TARGET_LINKER_FILE_DIR:k_bond>
    COMMENT "Import library for k_bond.dll with the __stdcall symbol names"
    VERBATIM)
endif()

# The program that loads the DLL by name and calls exports through __stdcall
# pointers (tests/windows/stdcall_smoke.cpp). It is run under Wine by
# scripts/build_windows.sh.
option(KBOND_BUILD_WINDOWS_SMOKE "Build the k_bond.dll loading test program" ON)
if(KBOND_BUILD_WINDOWS_SMOKE)
  set(KBOND_EXPORT_LIST ${CMAKE_CURRENT_BINARY_DIR}/generated/kbond_export_list.h)
  add_custom_command(
    OUTPUT ${KBOND_EXPORT_LIST}
    COMMAND ${CMAKE_COMMAND} -DHEADER=${KBOND_HEADER} -DLIST_HEADER=${KBOND_EXPORT_LIST}
            -P ${KBOND_EXPORT_SCRIPT}
    DEPENDS ${KBOND_HEADER} ${KBOND_EXPORT_SCRIPT} ${CMAKE_CURRENT_LIST_DIR}/kbond_exports.cmake
    COMMENT "Listing the exports of include/k_bond.h"
    VERBATIM)
  add_executable(kbond_stdcall_smoke
                 ${CMAKE_CURRENT_SOURCE_DIR}/tests/windows/stdcall_smoke.cpp ${KBOND_EXPORT_LIST})
  target_include_directories(kbond_stdcall_smoke PRIVATE
                             ${CMAKE_CURRENT_SOURCE_DIR}/include
                             ${CMAKE_CURRENT_BINARY_DIR}/generated)
  # Unoptimised with a frame pointer: the stack-pointer comparison around each
  # call must see only what the callee did.
  target_compile_options(kbond_stdcall_smoke PRIVATE -O0 -fno-omit-frame-pointer)
  target_link_libraries(kbond_stdcall_smoke PRIVATE Threads::Threads)
  add_dependencies(kbond_stdcall_smoke k_bond)

  # A C program that imports every declared function through the import
  # library (tests/windows/import_link.c).
  add_executable(kbond_import_link
                 ${CMAKE_CURRENT_SOURCE_DIR}/tests/windows/import_link.c ${KBOND_EXPORT_LIST})
  target_include_directories(kbond_import_link PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/generated)
  target_link_libraries(kbond_import_link PRIVATE k_bond)
endif()
