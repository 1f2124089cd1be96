/* A C program linked against k_bond.dll through its import library, as a
** Windows program built with the header would be. Taking the address of every
** declared function makes the linker resolve each one: on 32-bit the header's
** __stdcall names (_KVLbpr@120) must bind to the DLL's plain exports. When run,
** the loader resolves them all from k_bond.dll.
**
** Usage: kbond_import_link      exit status 0 = all imports bound */
#include <stdio.h>
#include <string.h>

#include "k_bond.h"
#include "kbond_export_list.h"

/* Not static: the table must stay in the program so that every entry
** is resolved, even though main only counts it. */
#define KBOND_ADDRESS(name) (const void*)&name,
const void* kbond_imported[] = {KBOND_EXPORT_LIST(KBOND_ADDRESS) NULL};

int main(void) {
  size_t count = 0;
  while (kbond_imported[count] != NULL) ++count;
  printf("%u functions imported from k_bond.dll\n", (unsigned)count);
#if defined(KBOND_HAS_KVLbondver)
  if (strcmp(KVLbondver(), "v2002.0p0nt") != 0) {
    printf("FAIL: KVLbondver through the import library\n");
    return 1;
  }
#endif
  return 0;
}
