// The box in which the user picks a USB volume.

#include "test/unit/stage/VolumeBoxStage.h"

namespace {

using fake::Service;

class VolumeBoxMap : public VolumeBox {
 protected:
  VolumeBoxMap() { LeaveFontsOut(); }
  void ExpectMap(int sticks, const std::vector<std::string> &map) {
    AddSticks(sticks);
    BuildAndOpen();
    EXPECT_EQ(ButtonMap(), map);
  }
  /// 32 volumes in sixteen rows, then cancel.
  static std::vector<std::string> FullMap() {
    std::vector<std::string> map;
    for (int row = 0; row < 16; row++) {
      map.insert(map.end(), {Stick(2 * row), Stick(2 * row + 1), "\n"});
    }
    map.push_back("Cancel");
    return map;
  }
};

const std::string kBreak = "\n";
const std::string kCancel = "Cancel";

TEST_F(VolumeBoxMap, OneVolumeStandsBesideCancel) { ExpectMap(1, {Stick(0), kCancel}); }

TEST_F(VolumeBoxMap, TwoVolumesStandInTheFirstRowAndCancelAloneInTheSecond) {
  ExpectMap(2, {Stick(0), Stick(1), kBreak, kCancel});
}

TEST_F(VolumeBoxMap, ThirdVolumeStandsBesideCancel) {
  ExpectMap(3, {Stick(0), Stick(1), kBreak, Stick(2), kCancel});
}

TEST_F(VolumeBoxMap, FourVolumes) {
  ExpectMap(4, {Stick(0), Stick(1), kBreak, Stick(2), Stick(3), kBreak, kCancel});
}

TEST_F(VolumeBoxMap, FiveVolumes) {
  ExpectMap(5, {Stick(0), Stick(1), kBreak, Stick(2), Stick(3), kBreak, Stick(4), kCancel});
}

TEST_F(VolumeBoxMap, ThirtyOneVolumesStandBesideCancel) {
  std::vector<std::string> map = FullMap();
  map.erase(map.end() - 3, map.end() - 1);
  ExpectMap(31, map);
}

TEST_F(VolumeBoxMap, ThirtyTwoVolumesFillTheTable) {
  ExpectMap(32, FullMap());
  EXPECT_EQ(OpenCount(), 32u);
}

TEST_F(VolumeBoxMap, OfThirtyThreeVolumesTheLastIsNotShown) {
  ExpectMap(33, FullMap());
  EXPECT_EQ(OpenCount(), 32u);
  EXPECT_EQ(gScreenshot.Volumes.Roots[32], nullptr);
}

TEST_F(VolumeBoxMap, OfNinetyNineVolumesThirtyTwoAreShown) {
  ExpectMap(99, FullMap());
  EXPECT_EQ(OpenCount(), 32u);
}

TEST_F(VolumeBoxMap, VolumesAreLoggedAsTheyAreNamed) {
  AddStick(u"WORK", UINT64{8} << 30);
  AddStick(u"", (UINT64{1} << 20) - 1);
  AddStick(u"OLD DISK", (UINT64{3} << 20) - 1);
  BuildAndOpen();
  EXPECT_EQ(ButtonTexts(),
            (std::vector<std::string>{"FS0:\\ [USB WORK 8192MB]", "FS1:\\ [USB  0MB]",
                                      "FS2:\\ [USB OLD DISK 2MB]", kCancel}));
  EXPECT_EQ(Host.Log, (std::vector<fake::LogLine>{{0x40, "FS0:\\ [USB WORK 8192MB]\n"},
                                                  {0x40, "FS1:\\ [USB  0MB]\n"},
                                                  {0x40, "FS2:\\ [USB OLD DISK 2MB]\n"}}));
}

// "FS0:\ [USB " and " 64MB]" take 17 of the 511 bytes.
TEST_F(VolumeBoxMap, ButtonTextOf511BytesIsWhole) {
  AddStick(std::u16string(494, u'L'));
  BuildAndOpen();
  EXPECT_EQ(ButtonTexts()[0], "FS0:\\ [USB " + std::string(494, 'L') + " 64MB]");
}

TEST_F(VolumeBoxMap, ButtonTextOf512BytesIsCutByOne) {
  AddStick(std::u16string(495, u'L'));
  BuildAndOpen();
  EXPECT_EQ(ButtonTexts()[0], "FS0:\\ [USB " + std::string(495, 'L') + " 64MB");
}

TEST_F(VolumeBoxMap, LabelOf511CharactersIsStillConverted) {
  AddStick(std::u16string(511, u'L'));
  BuildAndOpen();
  EXPECT_EQ(ButtonTexts()[0], "FS0:\\ [USB " + std::string(500, 'L'));
}

TEST_F(VolumeBoxMap, LongerLabelIsRefusedAsAWhole) {
  AddStick(std::u16string(512, u'L'));
  BuildAndOpen();
  EXPECT_EQ(ButtonTexts()[0], "FS0:\\ [USB  64MB]");
}

// Each character keeps its low byte; at one whose low byte is zero the text ends.
TEST_F(VolumeBoxMap, LabelBeyondAsciiKeepsItsLowBytes) {
  AddStick(u"GR\u00D6SSE");
  AddStick(u"\u4E3B\u677F");
  AddStick(u"A\u0100B");
  AddStick(u"A\u010AB");
  BuildAndOpen();
  EXPECT_EQ(ButtonTexts(),
            (std::vector<std::string>{"FS0:\\ [USB GR\xD6SSE 64MB]", "FS1:\\ [USB ;\x7F 64MB]",
                                      "FS2:\\ [USB A 64MB]", "FS3:\\ [USB A\nB 64MB]", kCancel}));
}

TEST_F(VolumeBoxMap, VolumeThatNoLongerTellsKeepsItsPlaceWithoutALabel) {
  AddSticks(2);
  Build();
  Machine.FailCall(Service::FileGetInfo, 3, EFI_NO_MEDIA);
  ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
  EXPECT_EQ(ButtonTexts(), (std::vector<std::string>{"FS0:\\ [USB  0MB]", Stick(1), kCancel}));
}

TEST_F(VolumeBoxMap, WithoutRoomForItsDescriptionAVolumeHasNoLabel) {
  // The allocator's header, the information, and the end of a label that fills it.
  const std::string kDescription = ", " + std::to_string(24 + 2088 + 2);
  AddSticks(2);
  Build();
  Machine.Calls.Record(Service::AllocatePool, true);
  int refused = 0;
  Machine.Faults.Choose = [&](Service service, const void *) -> std::optional<EFI_STATUS> {
    bool first = service == Service::AllocatePool && refused == 0 &&
                 Machine.Calls.All().back().Args.ends_with(kDescription);
    refused += first ? 1 : 0;
    return first ? std::optional<EFI_STATUS>(EFI_OUT_OF_RESOURCES) : std::nullopt;
  };
  ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
  Machine.Faults.Choose = nullptr;
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(ButtonTexts(), (std::vector<std::string>{"FS0:\\ [USB  0MB]", Stick(1), kCancel}));
}

TEST_F(VolumeBoxMap, WithoutAPressedButtonNothingIsSaved) {
  AddSticks(1);
  BuildAndOpen();
  lv_btnmatrix_set_selected_btn(BoxButtons(), LV_BTNMATRIX_BTN_NONE);
  lv_event_send(gMessageBox.Box, LV_EVENT_VALUE_CHANGED, nullptr);
  EXPECT_TRUE(Host.Logged("F12ScreenShots Canceled\n"));
  EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
  EXPECT_EQ(Sticks[0]->RootNames(), std::vector<std::u16string>{});
  EXPECT_EQ(OpenCount(), 0u);
}

TEST_F(VolumeBoxMap, TextsOfAnEarlierBoxDoNotShineThrough) {
  AddSticks(5);
  BuildAndOpen();
  lv_msgbox_close(gMessageBox.Box);
  for (int stick : {4, 3, 2, 1}) {
    Machine.RemoveVolume(*Sticks[static_cast<size_t>(stick)]);
  }
  ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
  EXPECT_EQ(ButtonMap(), (std::vector<std::string>{Stick(0), kCancel}));
}

TEST_F(VolumeBoxMap, WithoutMemoryForItsTextsNothingOpens) {
  AddSticks(2);
  Build();
  Host.Log.clear();
  // Screen copy and volume information come first.
  Machine.FailCall(Service::AllocatePool, 3, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(F12ScreenShots(), EFI_OUT_OF_RESOURCES);
  EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
  EXPECT_EQ(OpenCount(), 0u);
  EXPECT_TRUE(Host.Logged("[F12ScreenShots] Error occurs: Out of Resources\n"));
  ASSERT_EQ(F12ScreenShots(), EFI_SUCCESS);
  EXPECT_EQ(ButtonTexts().size(), 3u);
}

}  // namespace
