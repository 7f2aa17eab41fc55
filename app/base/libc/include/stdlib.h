/** @file
  The part of <stdlib.h> that LVGL, lodepng and FreeType use.
  Firmware only; native builds use the system's.
**/

#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

void free(void *Block);
void *malloc(size_t Size);
void *realloc(void *Block, size_t Size);
void qsort(void *Base, size_t Count, size_t Size, int (*Compare)(const void *, const void *));

#ifdef __cplusplus
}
#endif
