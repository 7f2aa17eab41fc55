/** @file
  The fonts of the view: every size of every face that the host hands over.
**/

#pragma once

#include "app/base/Firmware.h"
#include "lvgl.h"

inline constexpr UINT16 kFontSizeFirst = 8;
inline constexpr UINT16 kFontSizeLast = 60;
inline constexpr UINTN kFontFaces = 3;
inline constexpr UINTN kFontCount = (kFontSizeLast - kFontSizeFirst + 1) * kFontFaces;

/// Size s and face f stand at index (s - 8) * 3 + f. Names and files are the
/// host's; a font is NULL where loading failed.
struct FontTableState {
  lv_ft_info_t Fonts[kFontCount];
  /// What LVGL gives each of them as get_glyph_dsc.
  bool (*DescribeGlyph)(const lv_font_t *font, lv_font_glyph_dsc_t *glyph, UINT32 letter,
                        UINT32 next);
};

extern FontTableState gFontTable;

/// Loads all fonts, so that none is loaded while the user waits. A font that
/// cannot be loaded is logged and left out.
void LoadFonts();

/// The font of this pixel size and exact face name, or LVGL's default font;
/// never NULL.
[[nodiscard]] const lv_font_t *GetFont(INT16 size, const CHAR8 *name);
