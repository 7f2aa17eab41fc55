// The labels of the right-hand column: heading, info text, side list.

#include "test/unit/stage/PanelStage.h"
#include "test/unit/stage/StyledViewStage.h"
#include "view/InfoPanel.h"

namespace {

class InfoPanel : public StyledViewStage {
 protected:
  InfoPanel() {
    Host.ClearComponents();
    OBV_CONFIG &config = Host.Config;
    fake::CopyText(config.Heading.Color, "10,11,12");
    SetFont(&config.Heading.Font, "DejaVuSans", 31);
    fake::CopyText(config.SideLabel.Color, "20,21,22");
    SetFont(&config.SideLabel.Font, "DejaVuSans", 33);
    fake::CopyText(config.SideText.Color, "30,31,32");
    SetFont(&config.SideText.Font, "DejaVuSans", 35);
  }
  static void SetAll() {
    SetPanelHeading("heading");
    SetInfoText("info");
    SetSideList("list");
    lv_obj_update_layout(Screen());
  }
  static UINT32 ColorOf(lv_obj_t *label) {
    return Rgb(lv_obj_get_style_text_color(label, LV_PART_MAIN));
  }
  static std::string FontOf(lv_obj_t *label) {
    return FontText(lv_obj_get_style_text_font(label, LV_PART_MAIN));
  }
  /// Where a text of the side list must begin.
  static int BelowInfoText() {
    lv_obj_update_layout(gView.InfoText);
    return lv_obj_get_y(gView.InfoText) + lv_obj_get_self_height(gView.InfoText) + 10;
  }
};

TEST_F(InfoPanel, HeadingAndSideListAreCreatedAtTheirFirstUse) {
  Build();
  EXPECT_EQ(gView.Heading, nullptr);
  EXPECT_EQ(gView.SideList, nullptr);
  SetAll();
  lv_obj_t *labels[] = {gView.Heading, gView.InfoText, gView.SideList};
  size_t count = Objects().size();
  SetAll();
  EXPECT_EQ(Objects().size(), count);
  EXPECT_EQ(labels[0], gView.Heading);
  EXPECT_EQ(labels[1], gView.InfoText);
  EXPECT_EQ(labels[2], gView.SideList);
}

TEST_F(InfoPanel, LabelsTakeColoursAndFontsFromTheirGroups) {
  Build();
  SetAll();
  EXPECT_EQ(ColorOf(gView.Heading), 0x0A0B0Cu);
  EXPECT_EQ(FontOf(gView.Heading), "DejaVuSans 31");
  EXPECT_EQ(ColorOf(gView.InfoText), 0x040404u);
  EXPECT_EQ(FontOf(gView.InfoText), "DejaVuSans 27");
  EXPECT_EQ(ColorOf(gView.SideList), 0x1E1F20u);
  EXPECT_EQ(FontOf(gView.SideList), "DejaVuSans 33");
}

TEST_F(InfoPanel, OnlyTheHeadingIsNotRecoloured) {
  Build();
  SetAll();
  EXPECT_FALSE(lv_label_get_recolor(gView.Heading));
  EXPECT_TRUE(lv_label_get_recolor(gView.InfoText));
  EXPECT_TRUE(lv_label_get_recolor(gView.SideList));
  for (lv_obj_t *label : {gView.Heading, gView.InfoText, gView.SideList}) {
    EXPECT_EQ(lv_label_get_long_mode(label), LV_LABEL_LONG_DOT);
  }
}

TEST_F(InfoPanel, ColumnAt1920By1080) {
  Build();
  SetAll();
  EXPECT_EQ(PlaceOf(gView.Heading), (Place{1440, 162, 450, 650}));
  EXPECT_EQ(PlaceOf(gView.InfoText), (Place{1440, 162, 450, 650}));
  EXPECT_EQ(PlaceOf(gView.SideList).Width, 450);
  EXPECT_EQ(PlaceOf(gView.SideList).Height, 650);
}

TEST_F(InfoPanel, ColumnAt1024By768) {
  Build(1024, 768);
  SetAll();
  EXPECT_EQ(PlaceOf(gView.Heading), (Place{768, 115, 235, 446}));
  EXPECT_EQ(PlaceOf(gView.InfoText), (Place{768, 115, 235, 446}));
  EXPECT_EQ(FontOf(gView.Heading), "DejaVuSans 24");
}

TEST_F(InfoPanel, ColumnAt2560By1440) {
  Build(2560, 1440);
  SetAll();
  EXPECT_EQ(PlaceOf(gView.Heading), (Place{1920, 216, 600, 870}));
}

TEST_F(InfoPanel, HeadingOf39BytesIsSetAndOneByteMoreIsNot) {
  Build();
  std::string longest(39, 'x');
  SetPanelHeading("first");
  SetPanelHeading((longest + "y").c_str());
  EXPECT_EQ(WholeText(gView.Heading), "first");
  SetPanelHeading(longest.c_str());
  EXPECT_EQ(WholeText(gView.Heading), longest);
}

TEST_F(InfoPanel, HeadingIgnoresNull) {
  Build();
  SetPanelHeading(nullptr);
  EXPECT_EQ(gView.Heading, nullptr);
  SetPanelHeading("kept");
  SetPanelHeading(nullptr);
  EXPECT_EQ(WholeText(gView.Heading), "kept");
}

TEST_F(InfoPanel, EmptyHeadingIsSet) {
  Build();
  SetPanelHeading("x");
  SetPanelHeading("");
  EXPECT_EQ(WholeText(gView.Heading), "");
}

TEST_F(InfoPanel, InfoTextOfOneBlankBlanksTheHeading) {
  Build();
  SetPanelHeading("x");
  SetInfoText(" ");
  EXPECT_EQ(WholeText(gView.InfoText), " ");
  EXPECT_EQ(WholeText(gView.Heading), " ");
}

TEST_F(InfoPanel, OtherInfoTextsLeaveTheHeading) {
  Build();
  SetPanelHeading("x");
  for (const char *text : {"", "  ", "\n", " a"}) {
    SetInfoText(text);
    EXPECT_EQ(WholeText(gView.InfoText), text);
    EXPECT_EQ(WholeText(gView.Heading), "x");
  }
}

TEST_F(InfoPanel, SideListStartsTenPixelsUnderTheInfoText) {
  Build();
  for (const char *text : {"one line", "two\nlines", "\n\n", "\n\nthree\nmore\nlines"}) {
    SetInfoText(text);
    SetSideList("list");
    lv_obj_update_layout(Screen());
    EXPECT_EQ(PlaceOf(gView.SideList).X, 1440) << text;
    EXPECT_EQ(PlaceOf(gView.SideList).Y, BelowInfoText()) << text;
  }
}

TEST_F(InfoPanel, EmptySideListKeepsItsPlace) {
  Build();
  SetInfoText("a\nb\nc");
  SetSideList("list");
  int before = BelowInfoText();
  SetInfoText("a");
  SetSideList("");
  lv_obj_update_layout(Screen());
  EXPECT_EQ(WholeText(gView.SideList), "");
  EXPECT_EQ(PlaceOf(gView.SideList).Y, before);
  EXPECT_NE(before, BelowInfoText());
}

TEST_F(InfoPanel, EmptyFirstSideListStaysAtTheColumnsTop) {
  Build();
  SetInfoText("a\nb\nc");
  SetSideList("");
  lv_obj_update_layout(Screen());
  EXPECT_EQ(PlaceOf(gView.SideList), (Place{1440, 162, 450, 650}));
}

}  // namespace
