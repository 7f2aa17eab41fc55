#include "hostcheck/FontFace.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

void OpenFontFace(void *fontFace) {
  FontFace *font = fontFace;
  FT_Library library = NULL;
  if (FT_Init_FreeType(&library) != 0) {
    return;
  }
  FT_Face face = NULL;
  if (FT_New_Memory_Face(library, font->Data, (FT_Long)font->Size, 0, &face) == 0) {
    font->Opened = 1;
    (void)FT_Sfnt_Table_Info(face, 0, NULL, &font->Tables);
  }
  // The face goes with it.
  (void)FT_Done_FreeType(library);
}
