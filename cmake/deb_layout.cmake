# Run by cpack on the staged install tree before it is packed (see
# cmake/packaging.cmake): moves share/doc/k_bond to share/doc/<package> and
# gives the notice Debian's name for it.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
file(GLOB_RECURSE kbond_staged_docs LIST_DIRECTORIES true
     "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/${CPACK_KBOND_DOCDIR}")
foreach(docdir IN LISTS kbond_staged_docs)
  if(IS_DIRECTORY "${docdir}")
    get_filename_component(parent "${docdir}" DIRECTORY)
    file(RENAME "${docdir}" "${parent}/${CPACK_PACKAGE_NAME}")
    file(RENAME "${parent}/${CPACK_PACKAGE_NAME}/NOTICE" "${parent}/${CPACK_PACKAGE_NAME}/copyright")
  endif()
endforeach()
