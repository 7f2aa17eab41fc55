// F12 where something goes wrong: what is logged, shown, and left open.

#include "test/unit/stage/ScreenshotStage.h"
#include "test/unit/stage/ViewStage.h"

#include "capture/MessageBox.h"

namespace {

using fake::Service;

const SeenBox kWriteProtectedBox{"Not saved", "Write protected", {"OK"}};
const SeenBox kFailureBox{"Not saved", "Cannot write", {"OK"}};
const SeenBox kNoVolumeBox{"Not saved", "No volume found", {"OK"}};

class ScreenshotFailure : public ScreenshotStage {
 protected:
  ScreenshotFailure() { LeaveFontsOut(); }
  /// Log lines of a failed save to the first stick.
  static std::vector<fake::LogLine> LinesOf(int location, const std::string &status) {
    return {{0x40, "0 Button FS0:\\ [USB STICK 64MB] was clicked\n"},
            {0x80000000, "UserSelectedPartitionMessageBoxHandler " + std::to_string(location) +
                             " " + status + "\n"},
            {0x40, "F12ScreenShots Failed " + status + "\n"}};
  }
  void ExpectFailure(int location, const std::string &status, const SeenBox &box) {
    Run();
    EXPECT_TRUE(RanToTheEnd());
    EXPECT_EQ(LogFrom("0 Button"), LinesOf(location, status));
    EXPECT_EQ(Box, box);
    EXPECT_FALSE(Host.Logged("F12ScreenShots Success\n"));
  }
};

TEST_F(ScreenshotFailure, WriteProtectedVolume) {
  fake::VolumeOptions options;
  options.WriteProtected = true;
  fake::Volume &stick = AddStick(options);
  ThenSave();
  ExpectFailure(1183, "Write Protected", kWriteProtectedBox);
  EXPECT_EQ(stick.RootNames().size(), 0u);
  EXPECT_EQ(stick.OpenCount(), 0u);
}

TEST_F(ScreenshotFailure, OpenFails) {
  fake::Volume &stick = AddStick();
  Machine.FailCall(Service::FileOpen, 1, EFI_ACCESS_DENIED);
  ThenSave();
  ExpectFailure(1183, "Access Denied", kFailureBox);
  EXPECT_EQ(stick.OpenCount(), 0u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FileWrite), 0u);
}

// What a failed save leaves behind stays; the next one leaves nothing more.
class LeftBehind : public ScreenshotFailure {
 protected:
  /// Blocks and open files after a good, a failed and another good save.
  void SaveThrice(Service failing) {
    fake::Volume &stick = AddStick();
    for (int round = 0; round < 3; round++) {
      Then([this, failing, round] {
        if (round == 1) {
          Machine.FailCall(failing, 1, EFI_DEVICE_ERROR);
        }
      });
      ThenSave();
      Then([&] {
        Blocks.push_back(Machine.Pool.LiveBlocks());
        Files.push_back(stick.OpenCount());
      });
    }
    Run();
    EXPECT_EQ(stick.OpenCount(), Files.back());
  }
  std::vector<uint64_t> Blocks;
  std::vector<size_t> Files;
};

TEST_F(LeftBehind, FailedOpenLeavesNothing) {
  SaveThrice(Service::FileOpen);
  EXPECT_EQ(Files, (std::vector<size_t>{0, 0, 0}));
  EXPECT_EQ(Blocks, (std::vector<uint64_t>{Blocks[0], Blocks[0], Blocks[0]}));
}

TEST_F(LeftBehind, FailedWriteLeavesTheFileAndThePng) {
  SaveThrice(Service::FileWrite);
  EXPECT_EQ(Files, (std::vector<size_t>{0, 1, 1}));
  EXPECT_EQ(Blocks, (std::vector<uint64_t>{Blocks[0], Blocks[0] + 1, Blocks[0] + 1}));
}

TEST_F(LeftBehind, FailedFlushLeavesTheFileAndThePng) {
  SaveThrice(Service::FileFlush);
  EXPECT_EQ(Files, (std::vector<size_t>{0, 1, 1}));
  EXPECT_EQ(Blocks, (std::vector<uint64_t>{Blocks[0], Blocks[0] + 1, Blocks[0] + 1}));
}

TEST_F(ScreenshotFailure, WriteFails) {
  AddStick();
  Machine.FailCall(Service::FileWrite, 1, EFI_DEVICE_ERROR);
  ThenSave();
  ExpectFailure(1209, "Device Error", kFailureBox);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FileFlush), 0u);
}

TEST_F(ScreenshotFailure, WriteFindsTheVolumeProtected) {
  AddStick();
  Machine.FailCall(Service::FileWrite, 1, EFI_WRITE_PROTECTED);
  ThenSave();
  ExpectFailure(1209, "Write Protected", kWriteProtectedBox);
}

TEST_F(ScreenshotFailure, FlushFails) {
  fake::Volume &stick = AddStick();
  Machine.FailCall(Service::FileFlush, 1, EFI_VOLUME_CORRUPTED);
  ThenSave();
  ExpectFailure(1215, "Volume Corrupt", kFailureBox);
  // The file was written before.
  ExpectPictureOfF12(*stick.Read(kName));
}

TEST_F(ScreenshotFailure, FlushFindsTheVolumeProtected) {
  AddStick();
  Machine.FailCall(Service::FileFlush, 1, EFI_WRITE_PROTECTED);
  ThenSave();
  ExpectFailure(1215, "Write Protected", kWriteProtectedBox);
}

TEST_F(ScreenshotFailure, VolumeWithoutAFreeByte) {
  fake::VolumeOptions options;
  fake::Volume &stick = AddStick(options);
  stick.Write(u"FULL", std::vector<uint8_t>(64 << 20));
  ThenSave();
  ExpectFailure(1183, "Volume Full", kFailureBox);
}

TEST_F(ScreenshotFailure, VolumeThatFillsUp) {
  fake::Volume &stick = AddStick();
  stick.Write(u"ALMOST", std::vector<uint8_t>((64 << 20) - 1000));
  ThenSave();
  ExpectFailure(1209, "Volume Full", kFailureBox);
  EXPECT_EQ(stick.OpenCount(), 1u);
}

TEST_F(ScreenshotFailure, VolumePulledOutWhileTheBoxIsOpen) {
  fake::Volume &stick = AddStick();
  ThenF12();
  Then([&] { Machine.RemoveVolume(stick); });
  ThenEnter();
  ThenLook();
  ThenEnter();
  ExpectFailure(1183, "No Media", kFailureBox);
  EXPECT_EQ(stick.OpenCount(), 0u);
}

TEST_F(ScreenshotFailure, OtherVolumeIsUsableWhenOneWasPulledOut) {
  fake::Volume &gone = AddStick();
  fake::Volume &stick = AddStick();
  ThenF12();
  Then([&] { Machine.RemoveVolume(gone); });
  ThenScan(SCAN_DOWN);
  ThenEnter();
  ThenLook();
  ThenEnter();
  Run();
  EXPECT_EQ(Box.Title, "Saved");
  ExpectPictureOfF12(*stick.Read(kName));
  EXPECT_EQ(gone.OpenCount() + stick.OpenCount(), 0u);
}

TEST_F(ScreenshotFailure, EncoderWithoutMemoryCountsAsAFailedWrite) {
  fake::Volume &stick = AddStick();
  // Memory is scarce from the file's opening to the first line about it.
  Machine.At(Service::FileOpen, 1, [this] { Machine.Pool.Capacity = Machine.Pool.LiveBytes(); });
  Machine.Faults.AtEvery(Service::HostDebugPrint,
                         [this] { Machine.Pool.Capacity = uint64_t{1} << 30; });
  ThenSave();
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_TRUE(Host.Logged("UserSelectedPartitionMessageBoxHandler 1209 Out of Resources\n"));
  EXPECT_TRUE(Host.Logged("F12ScreenShots Failed Out of Resources\n"));
  EXPECT_EQ(Box, kFailureBox);
  // No empty file is left.
  EXPECT_EQ(stick.OpenCount(), 0u);
  EXPECT_TRUE(stick.Root().Entries.empty());
}

class WithoutVolume : public ScreenshotFailure {};

TEST_F(WithoutVolume, IsSaidInABox) {
  ThenF12();
  ThenLook();
  ThenEnter();
  Run();
  EXPECT_TRUE(RanToTheEnd());
  EXPECT_EQ(Box, kNoVolumeBox);
}

// The line is a UCS-2 text of which an ASCII log shows the first character.
TEST_F(WithoutVolume, LogHasTheSearchAndTheFirstCharacterOfTheFailure) {
  ThenF12();
  ThenEnter();
  Run();
  EXPECT_EQ(LogFrom("[GetRoot"),
            (std::vector<fake::LogLine>{
                {0x80000000, "[GetRootDirectoryFileHandle] Error occurs: Not Found\n"},
                {0x80000000, "["}}));
}

TEST_F(WithoutVolume, VolumeThatDoesNotTellAboutItselfCountsAsNone) {
  fake::Volume &stick = AddStick();
  Machine.FailCall(Service::FileGetInfo, 1, EFI_DEVICE_ERROR);
  ThenF12();
  ThenLook();
  ThenEnter();
  Run();
  EXPECT_EQ(Box, kNoVolumeBox);
  EXPECT_EQ(stick.OpenCount(), 0u);
}

TEST_F(WithoutVolume, DiskOfAnotherKindCountsAsNone) {
  fake::VolumeOptions options;
  options.Path = fake::DevicePath().PciRoot().Pci(31).Sata(0);
  AddStick(options);
  ThenF12();
  ThenLook();
  ThenEnter();
  Run();
  EXPECT_EQ(Box, kNoVolumeBox);
}

TEST_F(WithoutVolume, OneThatArrivesLaterIsFound) {
  fake::Volume *stick = nullptr;
  ThenF12();
  ThenEnter();
  Then([&] { stick = &AddStick(); });
  ThenSave();
  Run();
  EXPECT_EQ(Box.Title, "Saved");
  ExpectPictureOfF12(*stick->Read(kName));
}

// The view is built, but its main loop does not run.
class ScreenCopy : public ViewStage {
 protected:
  ScreenCopy() {
    LeaveFontsOut();
    Machine.AddVolume();
  }
};

TEST_F(ScreenCopy, FailureIsLoggedReturnedAndNotShown) {
  Build();
  Host.Log.clear();
  Machine.FailCall(Service::GopBlt, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(F12ScreenShots(), EFI_DEVICE_ERROR);
  EXPECT_EQ(Host.Log.back(),
            (fake::LogLine{0x80000000, "[F12ScreenShots] Error occurs: Device Error\n"}));
  EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 0u);
}

TEST_F(ScreenCopy, WithoutAnOutputIsAnInvalidParameter) {
  Build();
  gHost.Gop = nullptr;
  EXPECT_EQ(F12ScreenShots(), EFI_INVALID_PARAMETER);
  EXPECT_TRUE(Host.Logged("[F12ScreenShots] Error occurs: Invalid Parameter\n"));
  EXPECT_FALSE(gMessageBox.ModalMessageBoxOpen);
}

TEST_F(ScreenCopy, WithAVolumeTheBoxOpens) {
  Build();
  EXPECT_EQ(F12ScreenShots(), EFI_SUCCESS);
  EXPECT_TRUE(gMessageBox.ModalMessageBoxOpen);
}

TEST_F(ScreenCopy, WithoutAVolumeThereIsNoMedia) {
  Build();
  // The first search is for the output's handle.
  Machine.FailCall(Service::LocateHandleBuffer, 2, EFI_NOT_FOUND);
  EXPECT_EQ(F12ScreenShots(), EFI_NO_MEDIA);
  EXPECT_TRUE(gMessageBox.ModalMessageBoxOpen);
}

}  // namespace
