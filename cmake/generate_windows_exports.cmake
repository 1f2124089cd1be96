# Build-time generator for the Windows DLL (run with cmake -P).
#
#   -DHEADER=include/k_bond.h    the public header (source of the export list)
#   -DDEF=<file>                 module-definition file to write
#   -DNM=<nm> -DOBJECT_LIST=<f>  with DEF: the objects that make the DLL, one
#                                path a line; each export's decorated name is
#                                read from them (32-bit __stdcall symbols carry
#                                @<argument bytes>, which the linker's
#                                --kill-at strips again in the export table)
#   -DLIST_HEADER=<file>         C header with the export names, for programs
#                                that load the DLL by name
#
# A function declared in the header that no object defines stops the build.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/kbond_exports.cmake)

kbond_read_header_exports("${HEADER}" names)

if(DEF)
  file(STRINGS "${OBJECT_LIST}" objects)
  set(symbols "")
  if(objects)
    execute_process(COMMAND "${NM}" -g --defined-only ${objects}
                    OUTPUT_VARIABLE nm_out RESULT_VARIABLE nm_rc)
    if(NOT nm_rc EQUAL 0)
      message(FATAL_ERROR "${NM} failed on the library objects")
    endif()
    # "<address> T <symbol>": keep KVL functions, with or without the 32-bit
    # leading underscore and @<bytes> suffix.
    string(REGEX MATCHALL "[ \t][TW][ \t]+_?KVL[A-Za-z0-9_]+(@[0-9]+)?" symbols "${nm_out}")
  endif()
  set(def_lines "")
  set(missing "")
  foreach(name IN LISTS names)
    set(found "")
    foreach(sym IN LISTS symbols)
      string(REGEX REPLACE "^[ \t][TW][ \t]+_?" "" sym "${sym}")
      if(sym STREQUAL name OR sym MATCHES "^${name}@[0-9]+$")
        set(found "${sym}")
        break()
      endif()
    endforeach()
    if(found)
      string(APPEND def_lines "    ${found}\n")
    else()
      list(APPEND missing "${name}")
    endif()
  endforeach()
  if(missing)
    string(REPLACE ";" ", " missing "${missing}")
    message(FATAL_ERROR "declared in ${HEADER} but defined by no library source: ${missing}")
  endif()
  file(WRITE "${DEF}"
       "; k_bond.dll exports: every KVL_API function of k_bond.h, nothing else.\n"
       "LIBRARY k_bond.dll\nEXPORTS\n${def_lines}")
endif()

if(LIST_HEADER)
  set(entries "")
  set(flags "")
  foreach(name IN LISTS names)
    string(APPEND entries " \\\n  X(${name})")
    string(APPEND flags "#define KBOND_HAS_${name} 1\n")
  endforeach()
  file(WRITE "${LIST_HEADER}"
       "/* Exported functions of k_bond.h, generated at build time. */\n"
       "#pragma once\n#define KBOND_EXPORT_LIST(X)${entries}\n\n${flags}")
endif()
