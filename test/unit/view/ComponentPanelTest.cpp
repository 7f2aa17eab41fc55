// What the panel tells about one component.

#include "test/unit/stage/PanelStage.h"
#include "view/ComponentPanel.h"

namespace {

class ComponentPanel : public PanelStage {
 protected:
  ComponentPanel() { fake::CopyText(Host.Config.SideLabel.Color, "1,2,3"); }

  /// The one component of most tests; its query answers success with these lines.
  OBV_COMPONENT &Add(std::vector<fake::TestHost::InfoLine> lines, EFI_STATUS status = EFI_SUCCESS) {
    Host.Answers[u"X"] = {status, std::move(lines), {}};
    return Host.AddComponent(u"X", OBV_TYPE_USB, 1, 300, 300);
  }
  OBV_COMPONENT &Component(size_t index = 0) { return Host.Components[index]; }
  static std::vector<fake::TestHost::InfoLine> Lines(size_t count) {
    return std::vector<fake::TestHost::InfoLine>(count, {u"L", u"v"});
  }

  static std::string Line(const std::string &label, const std::string &value) {
    return InfoLineText(label, value);
  }
  static std::string SideLine(const std::string &label, const std::string &value) {
    return "#010203 " + label + ": #" + value + kLineEnd;
  }
  std::string LabelOf(size_t line) { return fake::ToAscii(Component().Info[line].Label); }
  std::string ValueOf(size_t line) { return fake::ToAscii(Component().Info[line].Value); }
};

const std::string kNotPresent = "Not Present";
const std::string kUnavailable = "Unavailable for this CPU";

TEST_F(ComponentPanel, ShowsNameDescriptionAndSideList) {
  Add({{u"Speed", u"10 Gbps"}, {u"Port", u"Keyboard", OBV_INFO_SIDE_LIST}, {u"Hub", u"4 ports"}});
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelHeading(), "X");
  EXPECT_EQ(PanelText(), "\n\n" + Line("Speed", "10 Gbps") + Line("Hub", "4 ports"));
  EXPECT_EQ(PanelList(), SideLine("Port", "Keyboard"));
}

TEST_F(ComponentPanel, HeadingCarriesTheMarksOfTheName) {
  Add({}, EFI_NOT_READY).SearchTokenId = 0;
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelHeading(), "X * **");
}

TEST_F(ComponentPanel, NameOf19BytesIsShownAndOfTwentyLeavesTheHeadingEmpty) {
  Host.AddComponent(std::u16string(19, u'n'), OBV_TYPE_USB, 1, 300, 300);
  Host.AddComponent(std::u16string(20, u'm'), OBV_TYPE_USB, 1, 300, 300);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelHeading(), std::string(19, 'n'));
  FillComponentPanel(1);
  EXPECT_EQ(PanelHeading(), "");
}

TEST_F(ComponentPanel, IndexAtTheCountDoesNothing) {
  Add({{u"a", u"b"}});
  Build();
  std::string before = PanelText();
  FillComponentPanel(1);
  FillComponentPanel(~UINTN{0});
  EXPECT_EQ(PanelText(), before);
  EXPECT_EQ(gView.Heading, nullptr);
}

TEST_F(ComponentPanel, NoMappingAddsANote) {
  Add({{u"a", u"b"}}, EFI_NO_MAPPING);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(Component().InfoCount, 2u);
  EXPECT_EQ(PanelText(), "\n\n" + Line("a", "b") + Line("Note", kUnavailable));
}

TEST_F(ComponentPanel, NoMappingWithTwentyLinesGetsNoNote) {
  Add(Lines(20), EFI_NO_MAPPING);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(Component().InfoCount, 20u);
  EXPECT_EQ(PanelText().find("Note"), std::string::npos);
}

TEST_F(ComponentPanel, NoMappingWithNineteenLinesGetsItsNoteAsTheTwentieth) {
  Add(Lines(19), EFI_NO_MAPPING);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(Component().InfoCount, 20u);
  EXPECT_EQ(LabelOf(19), "Note");
  EXPECT_EQ(ValueOf(19), kUnavailable);
}

TEST_F(ComponentPanel, AnyNoteOfTheHostStandsForOurs) {
  Add({{u"Note", u"of the host"}}, EFI_NO_MAPPING);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\n" + Line("Note", "of the host"));
}

TEST_F(ComponentPanel, NoMappingCountsBeforeTheOtherFlags) {
  Add({}, EFI_NO_MAPPING);
  Build();
  for (UINT8 OBV_COMPONENT::*flag :
       {&OBV_COMPONENT::Available, &OBV_COMPONENT::NotReady, &OBV_COMPONENT::DeviceError}) {
    Component().*flag = 1;
    Component().InfoCount = 0;
    FillComponentPanel(0);
    EXPECT_EQ(PanelText(), "\n\n" + Line("Note", kUnavailable));
  }
}

TEST_F(ComponentPanel, WithoutAnyFlagTheDeviceIsNotPresent) {
  Add({{u"a", u"b"}}, EFI_NOT_FOUND);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\n" + Line("a", "b") + Line("Device", kNotPresent));
}

TEST_F(ComponentPanel, FocusedSeveralTimesItIsNotPresentOnlyOnce) {
  Add({}, EFI_NOT_FOUND);
  Build();
  for (int i = 0; i < 3; i++) {
    lv_group_focus_obj(gView.CloseButton);
    lv_group_focus_obj(gView.Components[0].Callout);
    EXPECT_EQ(Component().InfoCount, 1u);
    EXPECT_EQ(PanelText(), "\n\n" + Line("Device", kNotPresent));
  }
}

TEST_F(ComponentPanel, EachFlagKeepsTheLineAway) {
  Add({}, EFI_NOT_FOUND);
  Build();
  for (UINT8 OBV_COMPONENT::*flag :
       {&OBV_COMPONENT::Available, &OBV_COMPONENT::NotReady, &OBV_COMPONENT::DeviceError}) {
    Component().*flag = 1;
    FillComponentPanel(0);
    EXPECT_EQ(Component().InfoCount, 0u);
    Component().*flag = 0;
  }
}

TEST_F(ComponentPanel, LineOfTheSameLabelOrValueAloneIsAnother) {
  Add({{u"Device", u"Present"}, {u"Drive", u"Not Present"}}, EFI_NOT_FOUND);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(Component().InfoCount, 3u);
  EXPECT_EQ(LabelOf(2), "Device");
  EXPECT_EQ(ValueOf(2), kNotPresent);
}

TEST_F(ComponentPanel, NotPresentWithTwentyLinesIsNotSaid) {
  Add(Lines(20), EFI_NOT_FOUND);
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(Component().InfoCount, 20u);
  EXPECT_EQ(PanelText().find(kNotPresent), std::string::npos);
}

TEST_F(ComponentPanel, AddedLineGoesWhereItsSlotsKindSays) {
  Add({}, EFI_NOT_FOUND);
  Build();
  Component().Info[0].Kind = OBV_INFO_SIDE_LIST;
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\n");
  EXPECT_EQ(PanelList(), SideLine("Device", kNotPresent));
  EXPECT_EQ(Component().Info[0].Kind, static_cast<UINT32>(OBV_INFO_SIDE_LIST));
}

TEST_F(ComponentPanel, AddedLineOfAForeignKindIsNotShown) {
  Add({}, EFI_NOT_FOUND);
  Build();
  Component().Info[0].Kind = 7;
  FillComponentPanel(0);
  EXPECT_EQ(Component().InfoCount, 1u);
  EXPECT_EQ(PanelText(), "\n\n");
  EXPECT_EQ(PanelList(), "");
}

TEST_F(ComponentPanel, LinesOfOtherKindsAreDropped) {
  Add({{u"a", u"1", 2}, {u"b", u"2"}, {u"c", u"3", 0xFFFFFFFF}, {u"d", u"4", OBV_INFO_SIDE_LIST}});
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\n" + Line("b", "2"));
  EXPECT_EQ(PanelList(), SideLine("d", "4"));
}

TEST_F(ComponentPanel, LabelOfBlanksShowsItsValueAlone) {
  Add({{u"   ", u"alone"}, {u" \n", u"too", OBV_INFO_SIDE_LIST}, {u"", u"empty"}});
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\nalone" + kLineEnd + "empty" + kLineEnd);
  EXPECT_EQ(PanelList(), "too" + kLineEnd);
}

TEST_F(ComponentPanel, LabelsAndValuesAreTrimmedInTheHostsRecord) {
  Add({{u" label \n", u" value\n \n"}, {u"l ", u"v ", OBV_INFO_SIDE_LIST}, {u"k ", u"v ", 5}});
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\n" + Line(" label", " value"));
  EXPECT_EQ(LabelOf(0) + "|" + ValueOf(0), " label| value");
  EXPECT_EQ(LabelOf(1) + "|" + ValueOf(1), "l|v");
  EXPECT_EQ(LabelOf(2) + "|" + ValueOf(2), "k|v");
}

TEST_F(ComponentPanel, OnlySideListLinesLeaveTwoEmptyLinesWithTheListTenPixelsBelow) {
  Add({{u"Port", u"Keyboard", OBV_INFO_SIDE_LIST}, {u"Port", u"Mouse", OBV_INFO_SIDE_LIST}});
  Build();
  FillComponentPanel(0);
  EXPECT_EQ(PanelText(), "\n\n");
  lv_obj_update_layout(Screen());
  Place info = PlaceOf(gView.InfoText);
  Place side = PlaceOf(gView.SideList);
  EXPECT_EQ(side.X, info.X);
  EXPECT_EQ(side.Y, info.Y + lv_obj_get_self_height(gView.InfoText) + 10);
  EXPECT_EQ(info.Y, 162);
}

TEST_F(ComponentPanel, SideListStandsBelowTheNewInfoTextAndNotTheOld) {
  Add({{u"a", u"b"}, {u"c", u"d", OBV_INFO_SIDE_LIST}});
  Host.AddComponent(u"Y", OBV_TYPE_USB, 1, 500, 500);
  Host.Answers[u"Y"].Lines = {{u"1", u""}, {u"2", u""}, {u"3", u""}, {u"4", u"", 1}};
  Build();
  for (UINTN index : {0, 1, 0}) {
    FillComponentPanel(index);
    lv_obj_update_layout(Screen());
    EXPECT_EQ(PlaceOf(gView.SideList).Y,
              PlaceOf(gView.InfoText).Y + lv_obj_get_self_height(gView.InfoText) + 10);
  }
}

TEST_F(ComponentPanel, WithoutSideListLinesTheOldListGoes) {
  Add({{u"a", u"b"}, {u"c", u"d", OBV_INFO_SIDE_LIST}});
  Build();
  FillComponentPanel(0);
  Component().InfoCount = 1;
  FillComponentPanel(0);
  EXPECT_EQ(PanelList(), "");
}

}  // namespace
