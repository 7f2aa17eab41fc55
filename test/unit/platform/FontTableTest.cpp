// Loading of all fonts, their fallbacks, and finding one.

#include "test/unit/stage/PortStage.h"

namespace {

using fake::Service;

class FontTable : public PortStage {
 protected:
  static const lv_ft_info_t &Entry(int size, int face) {
    return gFontTable.Fonts[(size - 8) * 3 + face];
  }
  static fake::LogLine Missing(const std::string &name, int size) {
    return Error("[OBV] Font(" + name + " " + std::to_string(size) + ") not found, ignore.\n");
  }
  LogLines FontLines() {
    LogLines lines;
    std::copy_if(Log().begin(), Log().end(), std::back_inserter(lines),
                 [](const fake::LogLine &line) { return line.Text.starts_with("[OBV] Font("); });
    return lines;
  }
};

TEST_F(FontTable, EverySizeOfEveryFaceIsLoaded) {
  InitializeLvglPort();
  EXPECT_EQ(std::size(gFontTable.Fonts), 159u);
  const char *names[] = {"DejaVuSans", "DroidSans", "DejaVuSansBold"};
  for (int size = 8; size <= 60; size++) {
    for (int face = 0; face < 3; face++) {
      const lv_ft_info_t &entry = Entry(size, face);
      EXPECT_STREQ(entry.name, names[face]);
      EXPECT_EQ(entry.mem, Host.Fonts[face].File.data());
      EXPECT_EQ(entry.mem_size, Host.Fonts[face].File.size());
      EXPECT_EQ(entry.weight, size);
      EXPECT_EQ(entry.style, 0);
      EXPECT_NE(entry.font, nullptr);
    }
  }
  EXPECT_EQ(FontLines(), LogLines{});
}

TEST_F(FontTable, FacesAreAskedForInOrderForEverySize) {
  LeaveFontsOut();
  std::vector<int> faces;
  Host.OnGetFontData = [&](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
    EXPECT_EQ(*name, nullptr);
    EXPECT_EQ(*data, nullptr);
    EXPECT_EQ(*size, 0u);
    static CHAR8 kName[] = "Face";
    *name = kName;
    *data = kName;
    *size = 77;
    faces.push_back(face);
    return EFI_NOT_READY;
  };
  InitializeLvglPort();
  ASSERT_EQ(faces.size(), 159u);
  for (size_t i = 0; i < faces.size(); i++) {
    EXPECT_EQ(faces[i], static_cast<int>(i % 3));
  }
  EXPECT_STREQ(Entry(60, 2).name, "Face");
  EXPECT_EQ(Entry(60, 2).mem_size, 77u);
  EXPECT_EQ(Entry(60, 2).font, nullptr);
}

TEST_F(FontTable, TheCentralFaceIsEverybodysFallback) {
  InitializeLvglPort();
  for (int size = 8; size <= 60; size++) {
    EXPECT_EQ(Entry(size, 0).font->fallback, Entry(size, 1).font);
    EXPECT_EQ(Entry(size, 2).font->fallback, Entry(size, 1).font);
    EXPECT_EQ(Entry(size, 1).font->fallback, LV_FONT_DEFAULT);
  }
}

// Else whatever was in the descriptor decides whether the fallbacks are asked.
TEST_F(FontTable, AControlCharacterIsNeverAPlaceholder) {
  InitializeLvglPort();
  const lv_font_t *font = Entry(18, 0).font;
  for (UINT32 letter : {UINT32{'\n'}, UINT32{'\t'}, UINT32{'A'}}) {
    lv_font_glyph_dsc_t glyph;
    std::memset(&glyph, 0xFF, sizeof glyph);
    EXPECT_TRUE(lv_font_get_glyph_dsc(font, &glyph, letter, 0));
    EXPECT_EQ(glyph.resolved_font, font);
    EXPECT_EQ(glyph.adv_w != 0, letter == 'A');
  }
}

TEST_F(FontTable, WithoutTheCentralFaceOfASizeTheOthersHaveNoFallback) {
  int asked = 0;
  Host.OnGetFontData = [&](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
    *name = Host.Fonts[face].Name.data();
    *data = Host.Fonts[face].File.data();
    *size = Host.Fonts[face].File.size();
    return asked++ == (20 - 8) * 3 + 1 ? EFI_NOT_FOUND : EFI_SUCCESS;
  };
  InitializeLvglPort();
  EXPECT_EQ(FontLines(), LogLines{Missing("DroidSans", 20)});
  EXPECT_EQ(Entry(20, 1).font, nullptr);
  EXPECT_EQ(Entry(20, 0).font->fallback, nullptr);
  EXPECT_EQ(Entry(20, 2).font->fallback, nullptr);
  EXPECT_EQ(Entry(19, 0).font->fallback, Entry(19, 1).font);
  EXPECT_EQ(Entry(21, 2).font->fallback, Entry(21, 1).font);
  EXPECT_EQ(GetFont(20, "DroidSans"), LV_FONT_DEFAULT);
}

TEST_F(FontTable, AnOuterFaceThatFailsLeavesTheOthersAlone) {
  Host.Fonts[0].File.clear();
  InitializeLvglPort();
  LogLines lines = FontLines();
  ASSERT_EQ(lines.size(), 53u);
  EXPECT_EQ(lines[0], Missing("DejaVuSans", 8));
  EXPECT_EQ(lines[52], Missing("DejaVuSans", 60));
  EXPECT_EQ(Entry(30, 0).font, nullptr);
  EXPECT_EQ(Entry(30, 1).font->fallback, LV_FONT_DEFAULT);
  EXPECT_EQ(Entry(30, 2).font->fallback, Entry(30, 1).font);
}

TEST_F(FontTable, AFileThatIsNoFontIsLoggedAndLeftOut) {
  Host.Fonts[2].File.assign(500, 0x41);
  InitializeLvglPort();
  LogLines lines = FontLines();
  ASSERT_EQ(lines.size(), 53u);
  EXPECT_EQ(lines[12], Missing("DejaVuSansBold", 20));
  EXPECT_EQ(Entry(20, 2).font, nullptr);
  EXPECT_EQ(GetFont(20, "DejaVuSansBold"), LV_FONT_DEFAULT);
}

TEST_F(FontTable, AnAnswerWithoutANameOrFileIsLeftOut) {
  Host.OnGetFontData = [&](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) {
    *name = face == 0 ? nullptr : Host.Fonts[face].Name.data();
    *data = face == 1 ? nullptr : static_cast<VOID *>(Host.Fonts[face].File.data());
    *size = Host.Fonts[face].File.size();
    return EFI_SUCCESS;
  };
  InitializeLvglPort();
  EXPECT_EQ(FontLines().size(), 2u * 53);
  EXPECT_EQ(FontLines()[0], Missing("<null string>", 8));
  EXPECT_EQ(FontLines()[1], Missing("DroidSans", 8));
  EXPECT_EQ(GetFont(20, "DejaVuSansBold"), Entry(20, 2).font);
}

TEST_F(FontTable, AnErrorWithoutANameIsLoggedWithANullText) {
  Host.OnGetFontData = [&](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) -> EFI_STATUS {
    if (face == 0) {
      return EFI_NOT_FOUND;
    }
    *name = Host.Fonts[face].Name.data();
    *data = Host.Fonts[face].File.data();
    *size = Host.Fonts[face].File.size();
    return EFI_SUCCESS;
  };
  InitializeLvglPort();
  LogLines lines = FontLines();
  ASSERT_EQ(lines.size(), 53u);
  EXPECT_EQ(lines[0], Missing("<null string>", 8));
  EXPECT_EQ(lines[52], Missing("<null string>", 60));
  EXPECT_EQ(Entry(20, 0).name, nullptr);
  EXPECT_EQ(Entry(20, 0).font, nullptr);
  // The search passes the nameless entries of its size.
  EXPECT_EQ(GetFont(20, "DroidSans"), Entry(20, 1).font);
  EXPECT_EQ(GetFont(20, "DejaVuSans"), LV_FONT_DEFAULT);
}

TEST_F(FontTable, AFontIsFoundBySizeAndName) {
  InitializeLvglPort();
  EXPECT_EQ(GetFont(8, "DejaVuSans"), Entry(8, 0).font);
  EXPECT_EQ(GetFont(33, "DroidSans"), Entry(33, 1).font);
  EXPECT_EQ(GetFont(60, "DejaVuSansBold"), Entry(60, 2).font);
}

TEST_F(FontTable, SizesOutsideTheTableGetTheDefaultFont) {
  InitializeLvglPort();
  for (INT16 size : {7, 61, 0, -1, -32768, 32767}) {
    EXPECT_EQ(GetFont(size, "DroidSans"), LV_FONT_DEFAULT) << size;
  }
}

TEST_F(FontTable, NamesAreComparedByteForByte) {
  InitializeLvglPort();
  for (const char *name : {"droidsans", "DroidSan", "DroidSansX", "Droid Sans", ""}) {
    EXPECT_EQ(GetFont(20, name), LV_FONT_DEFAULT) << name;
  }
}

TEST_F(FontTable, OfTwoFacesOfOneNameTheFirstIsTaken) {
  Host.Fonts[2].Name = "DejaVuSans";
  InitializeLvglPort();
  EXPECT_EQ(GetFont(20, "DejaVuSans"), Entry(20, 0).font);
}

TEST_F(FontTable, ANameIsFoundInALaterFaceWhenTheFirstFailed) {
  Host.Fonts[2].Name = "DejaVuSans";
  Host.Fonts[0].File.clear();
  InitializeLvglPort();
  EXPECT_EQ(GetFont(20, "DejaVuSans"), Entry(20, 2).font);
}

}  // namespace
