// Lines and texts of the panel at the ends of their buffers.

#include "test/unit/stage/PanelStage.h"
#include "view/ComponentPanel.h"

namespace {

class PanelBounds : public PanelStage {
 protected:
  PanelBounds() { Host.AddComponent(u"X", OBV_TYPE_USB, 1, 300, 300); }

  /// Shows a component with these lines; the info text without its two leading line feeds.
  std::string Show(std::vector<fake::TestHost::InfoLine> lines) {
    Host.Answers[u"X"].Lines = std::move(lines);
    Build();
    FillComponentPanel(0);
    std::string text = PanelText();
    EXPECT_EQ(text.substr(0, 2), "\n\n");
    return text.substr(2);
  }

  /// A line that takes this many bytes of the text, its end included.
  static fake::TestHost::InfoLine LineOf(size_t bytes, UINT32 kind = OBV_INFO_DESCRIPTION) {
    return {u"", std::u16string(bytes - 2, u'v'), kind};
  }
  static std::string TextOf(size_t bytes) { return std::string(bytes - 2, 'v') + kLineEnd; }
};

// "#B4B4B4 ", ": #" and the line's end take 13 of the 289 bytes.
TEST_F(PanelBounds, LineOf288BytesIsWhole) {
  EXPECT_EQ(Show({{std::u16string(20, u'l'), std::u16string(255, u'v')}}),
            InfoLineText(std::string(20, 'l'), std::string(255, 'v')));
}

TEST_F(PanelBounds, LineOf289BytesIsWhole) {
  EXPECT_EQ(Show({{std::u16string(21, u'l'), std::u16string(255, u'v')}}),
            InfoLineText(std::string(21, 'l'), std::string(255, 'v')));
}

TEST_F(PanelBounds, LineOf290BytesLosesItsLast) {
  std::string line = InfoLineText(std::string(22, 'l'), std::string(255, 'v'));
  ASSERT_EQ(line.size(), 290u);
  EXPECT_EQ(Show({{std::u16string(22, u'l'), std::u16string(255, u'v')}}), line.substr(0, 289));
}

TEST_F(PanelBounds, LongestLineIsCutInItsValue) {
  std::string line = InfoLineText(std::string(31, 'l'), std::string(255, 'v'));
  ASSERT_EQ(line.size(), 299u);
  EXPECT_EQ(Show({{std::u16string(31, u'l'), std::u16string(255, u'v')}}), line.substr(0, 289));
}

// Two line feeds and four lines take 1022 of the 1279 bytes.
TEST_F(PanelBounds, InfoTextOf1279BytesIsWhole) {
  EXPECT_EQ(Show({LineOf(255), LineOf(255), LineOf(255), LineOf(255), LineOf(257)}),
            TextOf(255) + TextOf(255) + TextOf(255) + TextOf(255) + TextOf(257));
}

TEST_F(PanelBounds, InfoTextOf1278BytesIsWhole) {
  EXPECT_EQ(Show({LineOf(255), LineOf(255), LineOf(255), LineOf(255), LineOf(256)}),
            TextOf(255) + TextOf(255) + TextOf(255) + TextOf(255) + TextOf(256));
}

TEST_F(PanelBounds, LineThatWouldMakeThe1280thByteIsLeftOut) {
  EXPECT_EQ(Show({LineOf(255), LineOf(255), LineOf(255), LineOf(256), LineOf(257)}),
            TextOf(255) + TextOf(255) + TextOf(255) + TextOf(256));
}

TEST_F(PanelBounds, ShorterLineThatStillFitsFollowsOneThatDidNot) {
  EXPECT_EQ(Show({LineOf(255), LineOf(255), LineOf(255), LineOf(256), LineOf(257), LineOf(100)}),
            TextOf(255) + TextOf(255) + TextOf(255) + TextOf(256) + TextOf(100));
}

TEST_F(PanelBounds, SideListHasTheSameBound) {
  constexpr UINT32 kSide = OBV_INFO_SIDE_LIST;
  Show({LineOf(255, kSide), LineOf(255, kSide), LineOf(255, kSide), LineOf(257, kSide),
        LineOf(257, kSide), LineOf(2, kSide), LineOf(2, kSide)});
  // 1279 bytes: the first "\r\n" of the two ends the text.
  std::string full = TextOf(255) + TextOf(255) + TextOf(255) + TextOf(257) + TextOf(257);
  ASSERT_EQ(full.size(), 1279u);
  EXPECT_EQ(PanelList(), full);
}

TEST_F(PanelBounds, TwentyLongestLinesFillBothTexts) {
  std::vector<fake::TestHost::InfoLine> lines;
  for (UINT32 i = 0; i < 20; i++) {
    lines.push_back({std::u16string(31, u'l'), std::u16string(255, u'v'), i % 2});
  }
  std::string line = InfoLineText(std::string(31, 'l'), std::string(255, 'v')).substr(0, 289);
  EXPECT_EQ(Show(std::move(lines)), line + line + line + line);
  EXPECT_EQ(PanelList(), line + line + line + line);
}

}  // namespace
