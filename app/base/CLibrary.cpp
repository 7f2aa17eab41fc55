/** @file
  The functions of the C library that LVGL, FreeType and lodepng call, on EDK2's
  base library. They keep no state. Those that the compiler calls by itself are
  in CompilerCalls.cpp.
**/

#include <stddef.h>

#include "app/base/Firmware.h"

// Link-time optimisation must not throw away what it names only later, and the
// compiler must not turn a loop inside one of them into a call of that very
// function.
#define C_LIBRARY [[gnu::used, gnu::noinline]]
#pragma GCC optimize("no-tree-loop-distribute-patterns")

extern "C" {

C_LIBRARY void *memchr(const void *memory, int value, size_t count) {
  return ScanMem8(memory, count, static_cast<UINT8>(value));
}

C_LIBRARY size_t strlen(const char *text) { return AsciiStrLen(text); }

C_LIBRARY char *strcpy(char *destination, const char *source) {
  CopyMem(destination, source, AsciiStrSize(source));
  return destination;
}

C_LIBRARY char *strcat(char *destination, const char *source) {
  strcpy(destination + AsciiStrLen(destination), source);
  return destination;
}

C_LIBRARY int strcmp(const char *first, const char *second) {
  return static_cast<int>(AsciiStrCmp(first, second));
}

C_LIBRARY int strncmp(const char *first, const char *second, size_t count) {
  return static_cast<int>(AsciiStrnCmp(first, second, count));
}

C_LIBRARY char *strstr(const char *text, const char *searched) {
  return AsciiStrStr(text, searched);
}

/// An insertion sort: FreeType sorts the few entries of a font's directory.
/// EDK2's own sort calls back by the firmware's calling convention, C's does not.
C_LIBRARY void qsort(void *base, size_t count, size_t size,
                     int (*compare)(const void *, const void *)) {
  auto *bytes = static_cast<UINT8 *>(base);
  for (UINTN end = 1; end < count; ++end) {
    for (UINT8 *item = bytes + end * size; item > bytes && compare(item - size, item) > 0;
         item -= size) {
      for (UINTN i = 0; i < size; ++i) {
        UINT8 swapped = item[i];
        item[i] = item[i - size];
        item[i - size] = swapped;
      }
    }
  }
}

/// Returns from setjmp with value, which the C standard keeps from being 0.
C_LIBRARY [[noreturn]] void longjmp(void *environment, int value) {
  LongJump(static_cast<BASE_LIBRARY_JUMP_BUFFER *>(environment),
           static_cast<UINTN>(value == 0 ? 1 : value));
  __builtin_unreachable();
}

}  // extern "C"
