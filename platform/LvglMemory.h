/** @file
  The three functions through which LVGL, lodepng included, takes and returns all of its memory.
**/

#ifndef BOARDSCOPE_LVGL_MEMORY_H
#define BOARDSCOPE_LVGL_MEMORY_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/// LVGL's allocator. StartLvgl sets all three before it calls lv_init; none is NULL then.
/// Without memory, Allocate and Reallocate do as LvglGuard.h says.
typedef struct LvglMemory {
  /// Returns Size bytes, which the caller owns; NULL only to work that tests for it.
  void *(*Allocate)(size_t Size);
  /// Gives a block back; NULL is allowed. Does nothing while the font table opens a font.
  void (*Free)(void *Block);
  /// Returns the block with Size bytes, moved where needed; or NULL as above, and Block stays as it
  /// was.
  void *(*Reallocate)(void *Block, size_t Size);
} LvglMemory;

extern LvglMemory gLvglMemory;

#ifdef __cplusplus
}
#endif

#endif
