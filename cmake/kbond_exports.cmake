# Reads the exported function names from the public header: every
# declaration there has the form  KVL_EXPORT <type> KVL_API KVLname(...);
# Sets <out_var> to the sorted list of names.
function(kbond_read_header_exports header out_var)
  file(READ "${header}" text)
  # Same rule as tests/abi/check_exports.sh: the name follows KVL_API on
  # the same line.
  string(REGEX MATCHALL "KVL_API[ \t]+KVL[A-Za-z0-9_]+" decls "${text}")
  set(names "")
  foreach(decl IN LISTS decls)
    string(REGEX REPLACE "^KVL_API[ \t]+" "" name "${decl}")
    list(APPEND names "${name}")
  endforeach()
  list(REMOVE_DUPLICATES names)
  list(SORT names)
  set(${out_var} "${names}" PARENT_SCOPE)
endfunction()
