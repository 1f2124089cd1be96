# Install rules (included by CMakeLists.txt when KBOND_INSTALL is on).
#
#   include/k_bond.h
#   lib/libk_bond.so.<major>.<minor>, libk_bond.so.<major>, libk_bond.so, libk_bond.a
#   lib/cmake/k_bond/   find_package(k_bond): k_bond::k_bond, k_bond::k_bond_static
#   lib/pkgconfig/k_bond.pc
#   bin/kbond           finds its library through a relative RPATH
#   share/man/man1/kbond.1.gz, share/doc/k_bond/
#
# Every path is relative to the prefix, so one build installs anywhere
# (cmake --install DIR --prefix P) and the Debian package reuses the rules.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(KBOND_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/k_bond)

install(TARGETS k_bond EXPORT k_bondTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# The static archive has an export set of its own: it needs Threads, the
# shared library does not, and k_bondConfig.cmake asks for Threads only
# when the static library is wanted.
install(TARGETS k_bond_static EXPORT k_bond_staticTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/k_bond.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# ---- the CMake package ------------------------------------------------------
install(EXPORT k_bondTargets NAMESPACE k_bond:: DESTINATION ${KBOND_CMAKE_DIR})
install(EXPORT k_bond_staticTargets NAMESPACE k_bond:: DESTINATION ${KBOND_CMAKE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/k_bondConfig.cmake.in
  ${PROJECT_BINARY_DIR}/k_bondConfig.cmake INSTALL_DESTINATION ${KBOND_CMAKE_DIR})
# 2002.x serves whoever asked for 2002.y with y <= x; a new major is a new ABI
# (and a new soname).
write_basic_package_version_file(${PROJECT_BINARY_DIR}/k_bondConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/k_bondConfig.cmake ${PROJECT_BINARY_DIR}/k_bondConfigVersion.cmake
  DESTINATION ${KBOND_CMAKE_DIR})

# ---- pkg-config -------------------------------------------------------------
# The static archive is C++ inside: a program linked by the C compiler needs
# the C++ runtime too (what the C++ compiler links beyond the C compiler:
# libstdc++ and libm with GCC), and the threads library.
set(KBOND_PC_PRIVATE "")
foreach(lib IN LISTS CMAKE_CXX_IMPLICIT_LINK_LIBRARIES)
  if(NOT lib IN_LIST CMAKE_C_IMPLICIT_LINK_LIBRARIES AND NOT lib MATCHES "^-"
     AND NOT "-l${lib}" IN_LIST KBOND_PC_PRIVATE)
    list(APPEND KBOND_PC_PRIVATE "-l${lib}")
    target_link_libraries(k_bond_static INTERFACE "$<$<NOT:$<LINK_LANGUAGE:CXX>>:${lib}>")
  endif()
endforeach()
if(CMAKE_THREAD_LIBS_INIT)
  list(PREPEND KBOND_PC_PRIVATE ${CMAKE_THREAD_LIBS_INIT})
endif()
list(JOIN KBOND_PC_PRIVATE " " KBOND_PC_PRIVATE)
foreach(dir LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${dir}}")
    set(KBOND_PC_${dir} "${CMAKE_INSTALL_${dir}}")
  else()
    set(KBOND_PC_${dir} "\${prefix}/${CMAKE_INSTALL_${dir}}")
  endif()
endforeach()
# The prefix is written at install time, when it is known: the one given to
# cmake --install --prefix, or /usr in the Debian package.
set(KBOND_PC_PREFIX "@KBOND_PC_PREFIX@")
configure_file(${CMAKE_CURRENT_LIST_DIR}/k_bond.pc.in ${PROJECT_BINARY_DIR}/k_bond.pc.in @ONLY)
install(CODE "
  set(KBOND_PC_PREFIX \"\${CMAKE_INSTALL_PREFIX}\")
  configure_file(\"${PROJECT_BINARY_DIR}/k_bond.pc.in\" \"${PROJECT_BINARY_DIR}/pkgconfig/k_bond.pc\" @ONLY)
  file(INSTALL DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/pkgconfig\"
       TYPE FILE FILES \"${PROJECT_BINARY_DIR}/pkgconfig/k_bond.pc\")")

# ---- kbond, its man page, the documents --------------------------------------
if(TARGET kbond)
  if(UNIX AND NOT APPLE)
    file(RELATIVE_PATH kbond_bin_to_lib /kbond/${CMAKE_INSTALL_BINDIR} /kbond/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(kbond PROPERTIES INSTALL_RPATH "$ORIGIN/${kbond_bin_to_lib}")
  endif()
  install(TARGETS kbond RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

  # The man page is kbond's own --help and --version, turned into roff by
  # help2man when the build runs kbond (not when cross-compiling, nor under
  # a sanitizer, whose reports would end up in the page).
  find_program(KBOND_HELP2MAN help2man)
  find_program(KBOND_GZIP gzip)
  if(KBOND_HELP2MAN AND KBOND_GZIP AND NOT CMAKE_CROSSCOMPILING AND KBOND_SANITIZE STREQUAL "")
    configure_file(${CMAKE_CURRENT_LIST_DIR}/kbond.h2m.in ${PROJECT_BINARY_DIR}/kbond.h2m @ONLY)
    add_custom_command(
      OUTPUT ${PROJECT_BINARY_DIR}/kbond.1.gz
      COMMAND ${KBOND_HELP2MAN} --no-info --no-discard-stderr
              --name "bond analytics with the k_bond library"
              --include ${PROJECT_BINARY_DIR}/kbond.h2m
              --output ${PROJECT_BINARY_DIR}/kbond.1 $<TARGET_FILE:kbond>
      COMMAND ${KBOND_GZIP} -9nf ${PROJECT_BINARY_DIR}/kbond.1
      DEPENDS kbond ${PROJECT_BINARY_DIR}/kbond.h2m
      COMMENT "Writing the kbond man page from kbond --help"
      VERBATIM)
    add_custom_target(kbond_man ALL DEPENDS ${PROJECT_BINARY_DIR}/kbond.1.gz)
    install(FILES ${PROJECT_BINARY_DIR}/kbond.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  elseif(NOT CMAKE_CROSSCOMPILING AND KBOND_SANITIZE STREQUAL "")
    message(STATUS "help2man not found: the kbond man page is not built")
  endif()
endif()

install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/NOTICE
              ${PROJECT_SOURCE_DIR}/docs/user-guide.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
