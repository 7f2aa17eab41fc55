// F12: the screen as a PNG file on a USB volume of the user's choice.

#include "test/unit/stage/ScreenshotStage.h"

#include "capture/MessageBox.h"

#include "platform/Pointer.h"

namespace {

using fake::Service;

class Screenshot : public ScreenshotStage {};

TEST_F(Screenshot, SavedPictureIsTheScreenAtF12) {
  fake::Volume &stick = AddStick();
  ThenFocus(0);
  ThenSave();
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(RanToTheEnd());
  ASSERT_EQ(stick.RootNames(), std::vector<std::u16string>{kName});
  ExpectPictureOfF12(*stick.Read(kName));
  EXPECT_EQ(stick.OpenCount(), 0u);
  // Not a picture of nothing.
  EXPECT_GT(std::set<UINT32>(AtF12.begin(), AtF12.end()).size(), 100u);
}

TEST_F(Screenshot, OutcomeNamesVolumeAndFile) {
  AddStick();
  ThenSave();
  Run();
  EXPECT_EQ(Box,
            (SeenBox{"Saved", "FS0:\\ [USB STICK 64MB] holds 2023-07-04-13-05-09.png", {"OK"}}));
  EXPECT_EQ(LogFrom("FS0"),
            (std::vector<fake::LogLine>{{0x40, "FS0:\\ [USB STICK 64MB]\n"},
                                        {0x40, "0 Button FS0:\\ [USB STICK 64MB] was clicked\n"},
                                        {0x40, "F12ScreenShots Success\n"}}));
}

TEST_F(Screenshot, OutcomesColours) {
  LeaveFontsOut();
  AddStick();
  ThenF12();
  ThenEnter();
  Then([] {
    EXPECT_EQ(Rgb(lv_obj_get_style_text_color(lv_msgbox_get_title(gMessageBox.Box), LV_PART_MAIN)),
              0xFFFFFFu);
    EXPECT_EQ(Rgb(lv_obj_get_style_text_color(lv_msgbox_get_text(gMessageBox.Box), LV_PART_MAIN)),
              0xD0D0D0u);
  });
  ThenEnter();
  Run();
  EXPECT_TRUE(RanToTheEnd());
}

TEST_F(Screenshot, At1024By768) {
  fake::Volume &stick = AddStick();
  ThenSave();
  Run(1024, 768);
  ExpectPictureOfF12(*stick.Read(kName));
}

TEST_F(Screenshot, OfAnOutputWithAnotherPixelFormatAndPaddedRows) {
  Machine.AddOutput({{1920, 1080, PixelRedGreenBlueReserved8BitPerColor, 2048}});
  fake::Volume &stick = AddStick();
  ThenSave();
  Run();
  ExpectPictureOfF12(*stick.Read(kName));
}

TEST_F(Screenshot, AfterAMoveToAnotherOutputShowsThatOne) {
  LeaveFontsOut();
  fake::Volume &stick = AddStick();
  Machine.AddOutput({{1920, 1080}});
  Then([this] {
    Machine.Output(0).SetModes({{800, 600}});
    Machine.AddOutput({{1920, 1080}});
  });
  std::vector<UINT32> onTheNewOne;
  Then([&] {
    ASSERT_EQ(gHost.Gop, Machine.Output(1).Protocol());
    onTheNewOne = Machine.Output(1).Picture();
    Machine.Keyboard.Scan(SCAN_F12);
  });
  ThenEnter();
  ThenEnter();
  Run();
  Picture picture = Decode(*stick.Read(kName));
  EXPECT_TRUE(picture.Pixels == onTheNewOne);
  EXPECT_GT(std::set<UINT32>(onTheNewOne.begin(), onTheNewOne.end()).size(), 100u);
}

class ScreenshotOfAnotherSize : public ScreenshotStage,
                                public testing::WithParamInterface<fake::VideoMode> {};

TEST_P(ScreenshotOfAnotherSize, IsRefused) {
  LeaveFontsOut();
  AddStick();
  // The output refuses the view's mode and stays in its own.
  Machine.AddOutput({GetParam(), {.Width = 1024, .Height = 768, .SetStatus = EFI_DEVICE_ERROR}});
  ThenScan(SCAN_F12);
  Then([] { EXPECT_FALSE(BoxIsOpen()); });
  Run();
  EXPECT_TRUE(Host.Logged("[F12ScreenShots] Error occurs: Unsupported\n"));
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 0u);
}

INSTANTIATE_TEST_SUITE_P(, ScreenshotOfAnotherSize,
                         testing::Values(fake::VideoMode{1280, 1024}, fake::VideoMode{1024, 600}),
                         [](const auto &info) {
                           return "Of" + std::to_string(info.param.Width) + "x" +
                                  std::to_string(info.param.Height);
                         });

TEST_F(Screenshot, WithThePointerOnAComponentShowsBoth) {
  AddTablet();
  fake::Volume &stick = AddStick();
  ThenPoint(520, 310);
  size_t inTheArrow = 0;
  Then([&] {
    EXPECT_FALSE(IsHidden(gView.Components[0].Hotspot));
    inTheArrow = (gPointer.Y + 4u) * gGeometry.ViewWidth + gPointer.X + 1u;
  });
  ThenSave();
  Run();
  ExpectPictureOfF12(*stick.Read(kName));
  EXPECT_EQ(AtF12[inTheArrow], 0xFFFFFFu);
  EXPECT_EQ(AtF12[inTheArrow - 1], 0u);
}

TEST_F(Screenshot, FileIsNamedAfterTheClock) {
  LeaveFontsOut();
  fake::Volume &stick = AddStick();
  Machine.Clock.Date = {1999, 12, 31, 23, 59, 58, 0, 0, EFI_UNSPECIFIED_TIMEZONE, 0, 0};
  ThenSave();
  Run();
  EXPECT_EQ(stick.RootNames(), std::vector<std::u16string>{u"1999-12-31-23-59-58.png"});
}

TEST_F(Screenshot, WithoutAClockItIsSavedAllTheSame) {
  LeaveFontsOut();
  fake::Volume &stick = AddStick();
  Machine.FailCall(Service::RtGetTime, 1, EFI_DEVICE_ERROR);
  ThenSave();
  Run();
  EXPECT_EQ(stick.RootNames(), std::vector<std::u16string>{u"0000-00-00-00-00-00.png"});
}

TEST_F(Screenshot, FileIsOpenedToBeCreatedReadAndWritten) {
  LeaveFontsOut();
  AddStick();
  ThenSave();
  Run();
  std::vector<fake::CallRecord> files =
      Machine.Calls.Of({Service::FileOpen, Service::FileWrite, Service::FileFlush});
  ASSERT_EQ(files.size(), 3u);
  EXPECT_EQ(files[0].What, Service::FileOpen);
  // Create, read and write; no attributes.
  EXPECT_EQ(files[0].Args,
            "2023-07-04-13-05-09.png, " + fake::ArgText(UINT64{0x8000000000000003}) + ", 0");
  EXPECT_EQ(files[1].What, Service::FileWrite);
  EXPECT_EQ(files[2].What, Service::FileFlush);
}

TEST_F(Screenshot, SecondVolumeOfThreeAloneGetsTheFile) {
  LeaveFontsOut();
  std::vector<fake::Volume *> sticks = {&AddStick(), &AddStick(), &AddStick()};
  ThenF12();
  ThenScan(SCAN_DOWN);
  ThenEnter();
  ThenLook();
  ThenEnter();
  Run();
  EXPECT_EQ(Box.Text, "FS1:\\ [USB STICK 64MB] holds 2023-07-04-13-05-09.png");
  EXPECT_EQ(sticks[0]->RootNames().size(), 0u);
  EXPECT_EQ(sticks[2]->RootNames().size(), 0u);
  ExpectPictureOfF12(*sticks[1]->Read(kName));
  for (fake::Volume *stick : sticks) {
    EXPECT_EQ(stick->OpenCount(), 0u);
  }
}

TEST_F(Screenshot, LastShownOfNinetyNineVolumesGetsTheFile) {
  LeaveFontsOut();
  std::vector<fake::Volume *> sticks;
  for (int i = 0; i < 99; i++) {
    sticks.push_back(&AddStick());
  }
  ThenF12();
  Then([] { lv_btnmatrix_set_selected_btn(BoxButtons(), 31); });
  ThenEnter();
  ThenEnter();
  Run();
  for (size_t i = 0; i < sticks.size(); i++) {
    EXPECT_EQ(sticks[i]->RootNames().size(), i == 31 ? 1u : 0u) << i;
    EXPECT_EQ(sticks[i]->OpenCount(), 0u) << i;
  }
}

TEST_F(Screenshot, CancelOfThirtyThreeVolumesClosesAll) {
  LeaveFontsOut();
  std::vector<fake::Volume *> sticks;
  for (int i = 0; i < 33; i++) {
    sticks.push_back(&AddStick());
  }
  ThenF12();
  Then([] { lv_btnmatrix_set_selected_btn(BoxButtons(), 32); });
  ThenEnter();
  Then([&] {
    EXPECT_FALSE(BoxIsOpen());
    for (fake::Volume *stick : sticks) {
      EXPECT_EQ(stick->OpenCount(), 0u);
    }
  });
  Run();
  EXPECT_TRUE(Host.Logged("F12ScreenShots Canceled\n"));
  EXPECT_TRUE(Host.Logged("32 Button Cancel was clicked\n"));
}

TEST_F(Screenshot, CancelShowsNothingMore) {
  LeaveFontsOut();
  fake::Volume &stick = AddStick();
  ThenF12();
  ThenScan(SCAN_RIGHT);
  ThenEnter();
  Then([&] {
    EXPECT_FALSE(BoxIsOpen());
    EXPECT_EQ(stick.OpenCount(), 0u);
  });
  Run();
  EXPECT_EQ(Machine.Calls.CountOf(Service::FileOpen), 0u);
  std::vector<fake::LogLine> lines = LogFrom("1 Button");
  ASSERT_GE(lines.size(), 2u);
  EXPECT_EQ(lines[0], (fake::LogLine{0x40, "1 Button Cancel was clicked\n"}));
  EXPECT_EQ(lines[1], (fake::LogLine{0x40, "F12ScreenShots Canceled\n"}));
}

TEST_F(Screenshot, TwoSavesAreTwoPicturesOfTheirMoments) {
  fake::Volume &stick = AddStick();
  std::vector<UINT32> first;
  ThenSave();
  Then([&] {
    first = AtF12;
    Machine.Clock.Date.Second = 10;
  });
  ThenFocus(1);
  ThenSave();
  Run();
  ASSERT_EQ(stick.RootNames().size(), 2u);
  EXPECT_TRUE(Decode(*stick.Read(kName)).Pixels == first);
  EXPECT_TRUE(first != AtF12);
  ExpectPictureOfF12(*stick.Read(u"2023-07-04-13-05-10.png"));
}

TEST_F(Screenshot, SecondRoundNeedsNoMoreMemoryThanTheFirst) {
  LeaveFontsOut();
  AddStick();
  std::vector<uint64_t> bytes;
  for (int i = 0; i < 3; i++) {
    ThenSave();
    Then([&] { bytes.push_back(Machine.Pool.LiveBytes()); });
  }
  Run();
  EXPECT_EQ(bytes[1], bytes[0]);
  EXPECT_EQ(bytes[2], bytes[0]);
}

// "FS0:\ [USB STICK 64MB]" and the file's name are 22 and 23 bytes.
class OutcomeText : public ScreenshotStage {
 protected:
  std::string After(size_t letters) {
    LeaveFontsOut();
    Host.Strings["en-US"][10] = std::u16string(letters, u's') + u"%a%a";
    AddStick();
    ThenSave();
    Run();
    return Box.Text;
  }
  const std::string kRest = "FS0:\\ [USB STICK 64MB]2023-07-04-13-05-09.png";
};

TEST_F(OutcomeText, Of511BytesIsWhole) { EXPECT_EQ(After(466), std::string(466, 's') + kRest); }

TEST_F(OutcomeText, Of512BytesIsCutByOne) {
  EXPECT_EQ(After(467), std::string(467, 's') + kRest.substr(0, 44));
}

}  // namespace
