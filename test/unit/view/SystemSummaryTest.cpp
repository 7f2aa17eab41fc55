// The summary of processor, memory, graphics and first boot entry.

#include "test/unit/stage/PanelStage.h"
#include "test/unit/stage/WholeRun.h"

namespace {

class SystemSummary : public ViewStage {
 protected:
  SystemSummary() { LeaveFontsOut(); }

  static std::string Line(const std::string &label, const std::string &value) {
    return InfoLineText(label, value);
  }
  static std::string Text() { return gSystemSummary.Text; }

  /// Leaves only the first boot entry, for tests that look at one other row.
  void OnlyFirstBoot() {
    Host.ClearComponents();
    SetText(2, u"");
  }
  /// Text 1 to 7 of the host.
  void SetText(int number, std::u16string_view text) {
    fake::CopyText(Host.State.SystemInfo[number - 1], text);
  }
  OBV_COMPONENT &Add(std::u16string_view name, UINT32 type,
                     std::vector<fake::TestHost::InfoLine> lines) {
    Host.Answers[std::u16string(name)].Lines = std::move(lines);
    return Host.AddComponent(name, type, 1, 100, 100);
  }
  OBV_COMPONENT &AddProcessor(std::vector<fake::TestHost::InfoLine> lines) {
    return Add(u"P", OBV_TYPE_PROCESSOR, std::move(lines));
  }
};

const std::string kFirstBoot = "#B4B4B4 First Boot: #Disk 0\r\n";

TEST_F(SystemSummary, HasOneLineEachOfProcessorMemoryGraphicsAndFirstBoot) {
  Build();
  EXPECT_EQ(Text(), Line("CPU", "Processor P5 4.2 GHz") + Line("DIMM_A1", "16384 MB 3200 MHz") +
                        Line("GPU", "Graphics X1") + Line("First Boot", "Disk 0"));
}

TEST_F(SystemSummary, TakesItsLabelColourFromTheInformationLabels) {
  OnlyFirstBoot();
  fake::CopyText(Host.Config.InfoLabel.Color, "1,2,3");
  Build();
  EXPECT_EQ(Text(), "#010203 First Boot: #Disk 0\r\n");
}

TEST_F(SystemSummary, WithoutAProcessorItsRowIsMissing) {
  OnlyFirstBoot();
  Add(u"M", OBV_TYPE_MEMORY, {{u"Total Memory", u"8 GB"}});
  Build();
  EXPECT_EQ(Text(), Line("M", "8 GB") + kFirstBoot);
}

TEST_F(SystemSummary, WithoutAProcessorItsReplacementTextIsSkippedForWantOfALabel) {
  OnlyFirstBoot();
  SetText(4, u"Another processor");
  SetText(5, u"Other memory");
  Build();
  EXPECT_EQ(Text(), kFirstBoot);
}

TEST_F(SystemSummary, SpeedListedBeforeBrandComesFirst) {
  OnlyFirstBoot();
  AddProcessor({{u"Speed", u"3 GHz"}, {u"Brand", u"Core"}});
  Build();
  EXPECT_EQ(Text(), Line("P", "3 GHz Core") + kFirstBoot);
}

TEST_F(SystemSummary, MemoryValuesStandInTheHostsOrder) {
  OnlyFirstBoot();
  Add(u"M", OBV_TYPE_MEMORY, {{u"Frequency", u"5600"}, {u"Slots", u"2"}, {u"Total Memory", u"8"}});
  Build();
  EXPECT_EQ(Text(), Line("M", "5600 8") + kFirstBoot);
}

TEST_F(SystemSummary, LabelWithATrailingBlankDoesNotMatch) {
  OnlyFirstBoot();
  AddProcessor({{u"Brand ", u"Core"}, {u"brand", u"core"}, {u"Speed", u"3 GHz"}});
  Build();
  EXPECT_EQ(Text(), Line("P", "3 GHz") + kFirstBoot);
}

TEST_F(SystemSummary, ProcessorLinesDoNotCountForTheMemory) {
  OnlyFirstBoot();
  Add(u"M", OBV_TYPE_MEMORY, {{u"Brand", u"Core"}, {u"Total Memory", u"8"}});
  AddProcessor({{u"Total Memory", u"9"}, {u"Speed", u"3"}});
  Build();
  EXPECT_EQ(Text(), Line("P", "3") + Line("M", "8") + kFirstBoot);
}

TEST_F(SystemSummary, LinesBeyondTheCountDoNotCount) {
  OnlyFirstBoot();
  AddProcessor({});
  Host.OnQueryComponentStatus = [](CHAR16 *, UINT32, UINTN, UINT64 *count,
                                   OBV_COMPONENT_INFO *info) {
    fake::CopyText(info[0].Label, u"Speed");
    fake::CopyText(info[0].Value, u"3 GHz");
    fake::CopyText(info[1].Label, u"Brand");
    fake::CopyText(info[1].Value, u"Core");
    *count = 1;
    return EFI_SUCCESS;
  };
  Build();
  EXPECT_EQ(Text(), Line("P", "3 GHz") + kFirstBoot);
}

TEST_F(SystemSummary, TrailingBlanksAndLineFeedsOfEachValueGo) {
  OnlyFirstBoot();
  AddProcessor({{u"Brand", u"Core \n \n"}, {u"Speed", u"\n 3 GHz  "}});
  Build();
  EXPECT_EQ(Text(), Line("P", "Core \n 3 GHz") + kFirstBoot);
}

TEST_F(SystemSummary, LaterProcessorRenamesTheRowAndAppendsItsValues) {
  OnlyFirstBoot();
  AddProcessor({{u"Brand", u"Core"}});
  Add(u"SECOND", OBV_TYPE_PROCESSOR, {{u"Brand", u"Other"}, {u"Speed", u"2 GHz"}});
  Build();
  EXPECT_EQ(Text(), Line("SECOND", "Core Other 2 GHz") + kFirstBoot);
}

TEST_F(SystemSummary, ProcessorWithoutMatchingLinesIsSkipped) {
  OnlyFirstBoot();
  AddProcessor({{u"Cores", u"8"}});
  Build();
  EXPECT_EQ(Text(), kFirstBoot);
}

TEST_F(SystemSummary, EmptyGraphicsTextLeavesTheRowOut) {
  SetText(2, u"");
  Build();
  EXPECT_EQ(Text(), Line("CPU", "Processor P5 4.2 GHz") + Line("DIMM_A1", "16384 MB 3200 MHz") +
                        Line("First Boot", "Disk 0"));
}

TEST_F(SystemSummary, TextOfOneCharacterIsShown) {
  OnlyFirstBoot();
  SetText(1, u"D");
  Build();
  EXPECT_EQ(Text(), Line("First Boot", "D"));
}

TEST_F(SystemSummary, EmptyFirstBootTextLeavesTheRowOut) {
  OnlyFirstBoot();
  SetText(1, u"");
  Build();
  EXPECT_EQ(Text(), "");
}

TEST_F(SystemSummary, TextsFourToSevenReplaceTheRowsValues) {
  SetText(4, u"four");
  SetText(5, u"five");
  SetText(6, u"six");
  SetText(7, u"seven");
  Build();
  EXPECT_EQ(Text(), Line("CPU", "four") + Line("DIMM_A1", "five") + Line("GPU", "six") +
                        Line("First Boot", "seven"));
}

TEST_F(SystemSummary, TextSixFillsAnEmptyGraphicsRow) {
  OnlyFirstBoot();
  SetText(6, u"six");
  Build();
  EXPECT_EQ(Text(), Line("GPU", "six") + kFirstBoot);
}

TEST_F(SystemSummary, ValueOfBlanksStaysAsAnEmptyLineWithItsLabel) {
  OnlyFirstBoot();
  SetText(2, u"  \n");
  Build();
  EXPECT_EQ(Text(), Line("GPU", "") + kFirstBoot);
}

TEST_F(SystemSummary, BlankLabelShowsTheValueAlone) {
  OnlyFirstBoot();
  Add(u"  ", OBV_TYPE_PROCESSOR, {{u"Brand", u"Core"}});
  Build();
  EXPECT_EQ(Text(), "Core\r\n" + kFirstBoot);
}

TEST_F(SystemSummary, NameOf31CharactersFitsTheLabelAndOneMoreIsRefused) {
  OnlyFirstBoot();
  std::u16string name(31, u'n');
  Add(name, OBV_TYPE_PROCESSOR, {{u"Brand", u"Core"}});
  Add(std::u16string(32, u'm'), OBV_TYPE_MEMORY, {{u"Total Memory", u"8 GB"}});
  Build();
  EXPECT_EQ(Text(), Line(std::string(31, 'n'), "Core") + kFirstBoot);
}

// The value has room for 255 characters. Each further one is refused as a whole.
TEST_F(SystemSummary, ValueFillsItsRoomAndRefusesWhatNoLongerFits) {
  OnlyFirstBoot();
  AddProcessor({{u"Brand", std::u16string(250, u'b')}, {u"Speed", u"1234"}, {u"Speed", u"x"}});
  Add(u"M", OBV_TYPE_MEMORY,
      {{u"Total Memory", std::u16string(250, u'm')}, {u"Frequency", u"12345"}});
  Build();
  // 250 + " " + 4 is full: there is no room for the last blank, nor for "x".
  EXPECT_EQ(Text(), Line("P", std::string(250, 'b') + " 1234") + Line("M", std::string(250, 'm')) +
                        kFirstBoot);
}

TEST_F(SystemSummary, LineIsCutAt289Characters) {
  OnlyFirstBoot();
  // "#B4B4B4 " and ": #" and the line's end are 13 characters; 255 of the value leave 21.
  Add(std::u16string(21, u'n'), OBV_TYPE_PROCESSOR, {{u"Brand", std::u16string(255, u'b')}});
  Add(std::u16string(22, u'm'), OBV_TYPE_MEMORY, {{u"Frequency", std::u16string(255, u'f')}});
  Build();
  std::string memory = Line(std::string(22, 'm'), std::string(255, 'f'));
  memory.pop_back();
  EXPECT_EQ(Text(), Line(std::string(21, 'n'), std::string(255, 'b')) + memory + kFirstBoot);
}

TEST_F(SystemSummary, IsShownByTheLastLabelOfTheScreen) {
  fake::CopyText(Host.Config.InfoText.Color, "4,5,6");
  Build();
  lv_obj_t *label = Objects().back();
  ASSERT_TRUE(lv_obj_check_type(label, &lv_label_class));
  EXPECT_EQ(LabelText(label), Text());
  EXPECT_TRUE(lv_label_get_recolor(label));
  EXPECT_EQ(TextColorOf(label), 0x040506u);
  EXPECT_EQ(PlaceOf(label), (Place{1440, 822, 345, 190}));
  EXPECT_EQ(PlaceOf(gView.FilterButtons[0]), (Place{1795, 822, 95, 25}));
}

TEST_F(SystemSummary, StandsLeftOfTheFilterButtonsOnASmallScreenToo) {
  Build(1024, 768);
  Place button = PlaceOf(gView.FilterButtons[0]);
  EXPECT_EQ(PlaceOf(Objects().back()), (Place{768, button.Y, 158, 149}));
  EXPECT_EQ(button.X, 936);
}

class SystemSummaryRun : public WholeRun {};

TEST_F(SystemSummaryRun, FailedIntakeLeavesNoSummary) {
  fake::CopyText(Host.State.SystemInfo[2], u"for the host");
  Host.OnFinishParse = [] { return EFI_DEVICE_ERROR; };
  Install();
  EXPECT_EQ(Run().Status, EFI_DEVICE_ERROR);
  EXPECT_EQ(std::string(gSystemSummary.Text), "");
  EXPECT_EQ(Host.State.InfoBuffer, nullptr);
}

class SummaryWithFonts : public ViewStage {};

TEST_F(SummaryWithFonts, HasTheFontOfTheInfoText) {
  fake::CopyText(Host.Config.InfoLabel.Font.Name, "DejaVuSansBold");
  Host.Config.InfoLabel.Font.Size = 33;
  Build();
  EXPECT_EQ(FontOf(Objects().back()), "DejaVuSansBold 33");
}

class InfoBuffer : public SystemSummary {};

TEST_F(InfoBuffer, EmptyTextThreePublishesNothing) {
  Build();
  EXPECT_EQ(Host.State.InfoBuffer, nullptr);
}

TEST_F(InfoBuffer, TextThreeIsPublishedAsAscii) {
  SetText(3, u"Serial 1234");
  Build();
  EXPECT_STREQ(Host.State.InfoBuffer, "Serial 1234");
}

TEST_F(InfoBuffer, TextsUpTo49CharactersArePublishedWhole) {
  SetText(3, std::u16string(49, u'x'));
  Build();
  EXPECT_EQ(std::string(Host.State.InfoBuffer), std::string(49, 'x'));
}

TEST_F(InfoBuffer, LongerTextIsPublishedCutToItsFirst49Characters) {
  SetText(3, std::u16string(48, u'x') + u"yz");
  Build();
  EXPECT_EQ(std::string(Host.State.InfoBuffer), std::string(48, 'x') + "y");
}

TEST_F(InfoBuffer, PercentSignIsAFormatDirective) {
  SetText(3, u"100%% sure");
  Build();
  EXPECT_STREQ(Host.State.InfoBuffer, "100% sure");
}

TEST_F(InfoBuffer, DirectivesWithoutArgumentsReadNothingForeign) {
  SetText(3, u"a%db%xc%dd");
  Build();
  EXPECT_STREQ(Host.State.InfoBuffer, "a0b0c0d");
}

}  // namespace
