/** @file
  FreeType's opinion of a font file. C, as FreeType's headers bring those of the C library along.
**/

#ifndef BOARDSCOPE_FONT_FACE_H
#define BOARDSCOPE_FONT_FACE_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct FontFace {
  const void *Data;
  size_t Size;
  int Opened;            ///< Whether FreeType takes it for a font.
  unsigned long Tables;  ///< Tables that lie inside the file.
} FontFace;

/// Fills the last two fields of a FontFace. In a library of its own, so that LVGL's knows nothing
/// of the face. Tests its allocations, see platform/LvglGuard.h.
void OpenFontFace(void *fontFace);

#ifdef __cplusplus
}
#endif

#endif
