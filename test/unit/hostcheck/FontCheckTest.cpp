// Font files that are broken, and fonts that nobody has.

#include "test/unit/hostcheck/HostCheckStage.h"

namespace hostcheck {
namespace {

class FontCheck : public HostCheckStage {
 protected:
  std::vector<uint8_t> &File(size_t face) { return Host.Fonts[face].File; }
};

TEST_F(FontCheck, FontThatIsBrokenIsNamed) {
  File(2).assign(5000, 0x5A);
  ExpectTheMistake("font files: face 2, \"DejaVuSansBold\": FreeType cannot open its 5000 bytes.");
}

TEST_F(FontCheck, FontThatIsCutIsNamed) {
  File(0).resize(File(0).size() / 2);
  ExpectTheMistake("font files: face 0, \"DejaVuSans\": FreeType cannot open its ");
}

// FreeType opens it, as nothing that it needs stands there.
TEST_F(FontCheck, FontThatLacksItsLastBytesIsNamed) {
  File(0).resize(File(0).size() - 100);
  ExpectTheMistake("font files: face 0, \"DejaVuSans\": of ");
  EXPECT_NE(Mistakes()[0].find("the file is cut"), std::string::npos);
}

TEST_F(FontCheck, FontThatIsLittleMoreThanItsHeaderIsNamed) {
  File(0).resize(8);
  ExpectTheMistake("font files: face 0, \"DejaVuSans\": FreeType cannot open its 8 bytes.");
}

// Its tables are counted in each of its fonts, not at its start.
TEST_F(FontCheck, CollectionOfFontsIsRight) {
  constexpr size_t kHeader = 16;
  std::vector<uint8_t> &file = File(0);
  size_t tables = static_cast<size_t>(file[4]) << 8 | file[5];
  for (size_t i = 0; i < tables; i++) {
    uint8_t *offset = &file[12 + i * 16 + 8];
    uint32_t moved =
        static_cast<uint32_t>(offset[0] << 24 | offset[1] << 16 | offset[2] << 8 | offset[3]) +
        kHeader;
    for (int byte = 0; byte < 4; byte++) {
      offset[byte] = static_cast<uint8_t>(moved >> (24 - 8 * byte));
    }
  }
  const uint8_t header[kHeader] = {'t', 't', 'c', 'f', 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, kHeader};
  file.insert(file.begin(), header, header + kHeader);
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(FontCheck, FontWithoutANameIsNamed) {
  Host.OnGetFontData = [this](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) -> EFI_STATUS {
    *name = face == 0 ? nullptr : Host.Fonts[face].Name.data();
    *data = File(face).data();
    *size = File(face).size();
    return EFI_SUCCESS;
  };
  ExpectTheMistake("font files: face 0 has no name, so nothing can ask for it.");
}

TEST_F(FontCheck, FontWithAnEmptyNameIsNamed) {
  Host.Fonts[2].Name = "";
  ExpectTheMistake("font files: face 2 has no name, so nothing can ask for it.");
}

TEST_F(FontCheck, FontWhoseNameTheRecordCannotHoldIsNamed) {
  Host.Fonts[2].Name = "ANameOf21Characters--";
  ExpectTheMistake("font files: the name of face 2, \"ANameOf21Characters--\", is longer than");
}

TEST_F(FontCheck, NameThatFillsItsFieldIsRight) {
  Host.Fonts[2].Name = "ANameOf20Characters-";
  std::memcpy(Host.Config.TitleFont.Name, "ANameOf20Characters-", 20);
  EXPECT_EQ(Check(), EFI_SUCCESS);
}

TEST_F(FontCheck, SuccessWithoutAFileIsNamed) {
  Host.OnGetFontData = [this](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) -> EFI_STATUS {
    *name = Host.Fonts[face].Name.data();
    *data = face == 0 ? nullptr : File(face).data();
    *size = face == 0 ? 0 : File(face).size();
    return EFI_SUCCESS;
  };
  ExpectTheMistake("font files: face 0, \"DejaVuSans\", has 0 bytes at 0");
}

TEST_F(FontCheck, SizeBeyondTheFilesMemoryIsNamedAndNotRead) {
  Host.OnGetFontData = [this](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) -> EFI_STATUS {
    *name = Host.Fonts[face].Name.data();
    *data = File(face).data();
    *size = File(face).size() + (face == 1 ? 1 : 0);
    return EFI_SUCCESS;
  };
  ExpectTheMistake("font files: face 1, \"DroidSans\", has ");
  EXPECT_NE(Mistakes()[0].find("where there is not as much memory"), std::string::npos);
  EXPECT_EQ(GradeOf("font choices"), Verdict::kLeftOut);
}

TEST_F(FontCheck, NameThatPointsNowhereIsNamed) {
  Host.OnGetFontData = [this](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) -> EFI_STATUS {
    *name = face == 2 ? reinterpret_cast<CHAR8 *>(UINTN{0xAFAFAFAFAFAFAFAF})
                      : Host.Fonts[face].Name.data();
    *data = File(face).data();
    *size = File(face).size();
    return EFI_SUCCESS;
  };
  ExpectTheMistake(
      "font files: the name of face 2 is at AFAFAFAFAFAFAFAF, where there is no memory");
}

TEST_F(FontCheck, FaceThatTheHostLeavesOutIsAWarning) {
  File(2).clear();
  ExpectTheWarning("font files: GetFontData answers Not Found for face 2, which is left out.");
}

TEST_F(FontCheck, HostWithoutAnyFontIsNamed) {
  LeaveFontsOut();
  EXPECT_EQ(Check(), EFI_ABORTED);
  EXPECT_EQ(Mistakes("font files"),
            Lines{"font files: there is no font at all. Hand over one at least."});
}

TEST_F(FontCheck, FontThatIsThereOnlyOnceIsNamed) {
  int asked = 0;
  Host.OnGetFontData = [&](UINT8 face, CHAR8 **name, VOID **data, UINTN *size) -> EFI_STATUS {
    bool broken = face == 0 && asked++ == 7;
    *name = Host.Fonts[face].Name.data();
    *data = broken ? Host.Picture.data() : File(face).data();
    *size = broken ? Host.Picture.size() : File(face).size();
    return EFI_SUCCESS;
  };
  ExpectTheMistake("font files: face 0 does not open in 1 of its 53 sizes.");
}

class FontChoice : public HostCheckStage {};

TEST_F(FontChoice, NameThatNoFaceHasIsNamedWithThoseThatAreThere) {
  fake::CopyText(Host.Config.CalloutFont.Name, "droidsans");
  ExpectTheMistake(
      "font choices: CalloutFont of Config asks for \"droidsans\", and the faces are "
      "\"DejaVuSans\", \"DroidSans\" and \"DejaVuSansBold\": the built-in font stands in.");
}

TEST_F(FontChoice, FontOfAnotherNameIsNamedWhereverItIsAskedFor) {
  Host.Fonts[1].Name = "DroidSansX";
  EXPECT_EQ(Check(), EFI_ABORTED);
  Lines mistakes = Mistakes("font choices");
  ASSERT_EQ(mistakes.size(), 6u);
  EXPECT_TRUE(mistakes[0].starts_with("font choices: TitleFont of Config asks for \"DroidSans\""));
  EXPECT_EQ(Result().Mistakes, 10u);
  EXPECT_EQ(Printed().end()[-2], "     font choices: and 5 more.");
}

TEST_F(FontChoice, BoxesWithoutTheirFontAreAWarning) {
  for (OBV_FONT_CHOICE *font :
       {&Host.Config.TitleFont, &Host.Config.KeyHelpFont, &Host.Config.FooterFont,
        &Host.Config.CalloutFont, &Host.Config.CloseFocusFont, &Host.Config.Filter.Font,
        &Host.Config.FocusFilter.Font, &Host.Config.Heading.Font, &Host.Config.InfoLabel.Font,
        &Host.Config.SideLabel.Font}) {
    fake::CopyText(font->Name, "DejaVuSans");
  }
  Host.Fonts[1].Name = "DroidSansX";
  ExpectTheWarning("font choices: no face has the name DroidSans, so the message boxes take");
}

TEST_F(FontChoice, SizeThatIsTooLargeOnTheLargestScreenIsNamed) {
  Host.Config.Heading.Font.Size = 31;
  ExpectTheMistake(
      "font choices: Heading.Font of Config has size 31, which is 62 pixels at 3840 x 2160");
}

TEST_F(FontChoice, SizeThatIsTooSmallOnTheSmallestScreenIsNamed) {
  Host.Config.SideLabel.Font.Size = 9;
  ExpectTheMistake(
      "font choices: SideLabel.Font of Config has size 9, which is 7 pixels at 1024 x 768");
}

TEST_F(FontChoice, SizesAtBothEndsAreRight) {
  Host.Config.Heading.Font.Size = 30;
  Host.Config.SideLabel.Font.Size = 10;
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

TEST_F(FontChoice, FontWithoutItsRoomIsAWarning) {
  Host.Config.FooterFont.Size = 19;
  ExpectTheWarning("font choices: FooterFont of Config has size 19, and its line has room for 18.");
}

TEST_F(FontChoice, RoomThatGrowsSuffices) {
  Host.Config.FooterFont.Size = 27;
  fake::CopyText(Host.Config.TextRoom, OBV_ROOM_GROWS);
  EXPECT_EQ(Check(), EFI_SUCCESS);
  EXPECT_EQ(Warnings(), Lines{});
}

}  // namespace
}  // namespace hostcheck
