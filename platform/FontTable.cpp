#include "platform/FontTable.h"

#include "app/base/HostClient.h"
#include "platform/LvglGuard.h"
#include "platform/LvglMemory.h"

FontTableState gFontTable;

namespace {

// The face that stands in for glyphs missing from the others.
constexpr UINTN kCentralFace = 1;

void KeepBlock(void * /*block*/) {}

void OpenFont(void *context) {
  auto *font = static_cast<lv_ft_info_t *>(context);
  if (!lv_ft_font_init(font)) {
    font->font = nullptr;
  }
}

/// Opens a font; false, with the entry's font NULL, when that fails.
bool Open(lv_ft_info_t *font) {
  // FreeType's cache knows a face by the address of LVGL's descriptor, and may still do so when
  // LVGL has given up font and descriptor. At that address the next font would find the wrong
  // face. So what LVGL gives back meanwhile is not handed out again but left to the leak report.
  auto *release = gLvglMemory.Free;
  gLvglMemory.Free = KeepBlock;
  // FreeType tests the allocations of this work. Left early, the entry's font is still NULL.
  (void)RunTestingAllocations(OpenFont, font);
  gLvglMemory.Free = release;
  return font->font != nullptr;
}

/// LVGL's function leaves open for control characters whether the glyph only stands in for a
/// missing one; whatever was on the stack decided whether other fonts were asked.
bool DescribeGlyph(const lv_font_t *font, lv_font_glyph_dsc_t *glyph, UINT32 letter, UINT32 next) {
  glyph->is_placeholder = 0;
  return gFontTable.DescribeGlyph(font, glyph, letter, next);
}

void LoadFont(UINT16 size, UINT8 face, lv_ft_info_t *font) {
  CHAR8 *name = nullptr;
  VOID *file = nullptr;
  UINTN fileSize = 0;
  EFI_STATUS status = gHost.Protocol->GetFontData(gHost.Protocol, face, &name, &file, &fileSize);
  *font = {};
  font->name = name;
  font->mem = file;
  font->mem_size = fileSize;
  font->weight = size;
  font->style = FT_FONT_STYLE_NORMAL;
  // The font engine would take a missing file for the name of one on a disk.
  bool usable = !EFI_ERROR(status) && name != nullptr && file != nullptr;
  if (!usable || !Open(font)) {
    LogError("[OBV] Font(%a %d) not found, ignore.\n", name, size);
    return;
  }
  // The same for all fonts.
  gFontTable.DescribeGlyph = font->font->get_glyph_dsc;
  font->font->get_glyph_dsc = DescribeGlyph;
}

void LinkFallbacks(lv_ft_info_t *faces) {
  lv_font_t *central = faces[kCentralFace].font;
  for (UINTN face = 0; face < kFontFaces; ++face) {
    if (faces[face].font != nullptr) {
      faces[face].font->fallback = face == kCentralFace ? LV_FONT_DEFAULT : central;
    }
  }
}

}  // namespace

void LoadFonts() {
  for (UINT16 size = kFontSizeFirst; size <= kFontSizeLast; ++size) {
    lv_ft_info_t *faces = &gFontTable.Fonts[(size - kFontSizeFirst) * kFontFaces];
    for (UINT8 face = 0; face < kFontFaces; ++face) {
      LoadFont(size, face, &faces[face]);
    }
    LinkFallbacks(faces);
  }
}

const lv_font_t *GetFont(INT16 size, const CHAR8 *name) {
  for (const lv_ft_info_t &font : gFontTable.Fonts) {
    if (font.weight == size && font.font != nullptr && AsciiStrCmp(font.name, name) == 0) {
      return font.font;
    }
  }
  return LV_FONT_DEFAULT;
}
