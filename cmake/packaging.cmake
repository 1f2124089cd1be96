# The Debian package (cpack -G DEB in the build directory), made from the
# install rules of cmake/install.cmake. Configure with
# -DCMAKE_INSTALL_PREFIX=/usr so that GNUInstallDirs chooses Debian's
# multiarch library directory (/usr/lib/x86_64-linux-gnu).
#
# One package, k-bond (Debian package names allow no underscore): the shared
# library with its soname, the static library, the header, the CMake and
# pkg-config files, kbond with its man page, and the documents under
# /usr/share/doc/k-bond. Its dependencies come from dpkg-shlibdeps; it
# declares its own shared library (shlibs) and runs ldconfig on install.
set(CPACK_PACKAGE_NAME k-bond)
set(CPACK_PACKAGE_VENDOR "k_bond developers")
set(CPACK_PACKAGE_CONTACT "k_bond developers <k_bond@users.noreply.invalid>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "fixed-income analytics library (prices, yields, risk, coupon dates)")
set(CPACK_PACKAGE_DESCRIPTION
"k_bond computes prices, yields, accrued interest, risk measures, coupon dates
and cash-flow tables for bonds quoted under the conventions of about seventy
markets, and for bond futures, floating-rate notes, perpetual, Brady,
inflation-linked and PIK bonds, behind a plain C interface (k_bond.h).
This package holds the shared and static libraries, the header, the CMake
package (find_package(k_bond)) and k_bond.pc, and the kbond command-line
program.")
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_PACKAGE_FILE_NAME "${CPACK_PACKAGE_NAME}-${PROJECT_VERSION}")  # non-DEB generators

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)          # k-bond_2002.0-1_amd64.deb
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cmake, pkg-config")
set(CPACK_STRIP_FILES TRUE)

# Debian keeps a package's documents under /usr/share/doc/<package>, with the
# copyright notice as "copyright": done on the staged tree before packing.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/deb_layout.cmake)
set(CPACK_KBOND_DOCDIR ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
include(CPack)
