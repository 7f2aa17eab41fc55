/** @file
  The functions of the C library that compilers call by themselves, to copy or
  clear a record, in each EFI file; on EDK2's base library.
**/

#include <stddef.h>

extern "C" {
#include <Uefi.h>

#include <Library/BaseMemoryLib.h>

// Link-time optimisation has thrown away what nobody seems to use before the
// compiler calls it.
#define COMPILER_CALL [[gnu::used, gnu::noinline]]

COMPILER_CALL void *memset(void *destination, int value, size_t count) {
  return SetMem(destination, count, static_cast<UINT8>(value));
}

/// The second entry point under which generated code may ask for memset.
COMPILER_CALL void *__memset(void *destination, int value, size_t count) {
  return SetMem(destination, count, static_cast<UINT8>(value));
}

COMPILER_CALL void *memcpy(void *destination, const void *source, size_t count) {
  return CopyMem(destination, source, count);
}

COMPILER_CALL void *memmove(void *destination, const void *source, size_t count) {
  return CopyMem(destination, source, count);
}

COMPILER_CALL int memcmp(const void *first, const void *second, size_t count) {
  return static_cast<int>(CompareMem(first, second, count));
}

}  // extern "C"
