// Saving the setup screen and putting it back.

#include "test/unit/stage/OutputStage.h"

#include "app/base/Run.h"

namespace {

using fake::Service;
class ScreenBackup : public OutputStage {};

TEST_F(ScreenBackup, ABackupHoldsTheWholeScreenInPackedRows) {
  auto &output = Machine.AddOutput({{5, 3, PixelBlueGreenRedReserved8BitPerColor, 8}});
  output.Paint([](UINT32 x, UINT32 y) { return 0x102030 + x + y * 256; });
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer = nullptr;
  EXPECT_EQ(BackupScreenShots(output.Protocol(), &buffer), EFI_SUCCESS);
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(Machine.Pool.SizeOf(reinterpret_cast<UINT8 *>(buffer) - 24), UINTN{24 + 5 * 3 * 4});
  for (UINT32 y = 0; y < 3; y++) {
    for (UINT32 x = 0; x < 5; x++) {
      const EFI_GRAPHICS_OUTPUT_BLT_PIXEL &pixel = buffer[y * 5 + x];
      EXPECT_EQ(pixel.Red << 16 | pixel.Green << 8 | pixel.Blue, output.Pixel(x, y));
    }
  }
  EXPECT_EQ(Calls(), Lines{"Gop.Blt(gop0, VideoToBltBuffer, 0, 0, 0, 0, 5, 3, 0) = Success"});
}

TEST_F(ScreenBackup, ABackupWithoutOutputOrAddressIsRefusedSilently) {
  auto &output = Machine.AddOutput({{5, 3}});
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer = nullptr;
  EXPECT_EQ(BackupScreenShots(nullptr, &buffer), EFI_INVALID_PARAMETER);
  EXPECT_EQ(BackupScreenShots(output.Protocol(), nullptr), EFI_INVALID_PARAMETER);
  EXPECT_EQ(Log(), LogLines{});
  EXPECT_EQ(Calls(), Lines{});
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
}

TEST_F(ScreenBackup, ABackupReusesAnExistingBuffer) {
  auto &output = Machine.AddOutput({{5, 3}});
  output.Paint([](UINT32, UINT32) { return 0xABCDEF; });
  std::vector<EFI_GRAPHICS_OUTPUT_BLT_PIXEL> pixels(15);
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer = pixels.data();
  EXPECT_EQ(BackupScreenShots(output.Protocol(), &buffer), EFI_SUCCESS);
  EXPECT_EQ(buffer, pixels.data());
  EXPECT_EQ(pixels[14].Red, 0xAB);
  EXPECT_EQ(Machine.Calls.CountOf(Service::AllocatePool), 0u);
}

TEST_F(ScreenBackup, AFailedBackupIsLoggedAndReturned) {
  auto &output = Machine.AddOutput({{5, 3}});
  Machine.FailCall(Service::GopBlt, 1, EFI_DEVICE_ERROR);
  std::vector<UINT32> held(15, 0x00778899);
  auto *buffer = reinterpret_cast<EFI_GRAPHICS_OUTPUT_BLT_PIXEL *>(held.data());
  EXPECT_EQ(BackupScreenShots(output.Protocol(), &buffer), EFI_DEVICE_ERROR);
  EXPECT_EQ(Log(), LogLines{Error(Occurs("BackupScreenShots", "Device Error"))});
  EXPECT_EQ(static_cast<VOID *>(buffer), held.data());
  EXPECT_EQ(held, std::vector<UINT32>(15, 0x00778899));
}

TEST_F(ScreenBackup, AFailedBackupKeepsTheBlockThatItAllocated) {
  auto &output = Machine.AddOutput({{5, 3}});
  Machine.FailCall(Service::GopBlt, 1, EFI_DEVICE_ERROR);
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer = nullptr;
  EXPECT_EQ(BackupScreenShots(output.Protocol(), &buffer), EFI_DEVICE_ERROR);
  EXPECT_EQ(Log(), LogLines{Error(Occurs("BackupScreenShots", "Device Error"))});
  ASSERT_NE(buffer, nullptr);
  EXPECT_EQ(Machine.Pool.SizeOf(reinterpret_cast<UINT8 *>(buffer) - 24), UINTN{24 + 5 * 3 * 4});
}

// An output that does not test its buffer would write to address 0.
TEST_F(ScreenBackup, WithoutMemoryForABackupTheOutputIsNotAsked) {
  auto &output = Machine.AddOutput({{5, 3}});
  Machine.FailCall(Service::AllocatePool, 1, EFI_OUT_OF_RESOURCES);
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer = nullptr;
  EXPECT_EQ(BackupScreenShots(output.Protocol(), &buffer), EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(buffer, nullptr);
  EXPECT_EQ(Calls(), std::vector<std::string>{});
  EXPECT_EQ(Log(), (LogLines{Error("ERROR malloc: AllocatePool returned Out of Resources\n"),
                             Error(Occurs("BackupScreenShots", "Out of Resources"))}));
}

TEST_F(ScreenBackup, TheSetupScreenGoesBackToTheOutputInUseAlone) {
  auto &first = Machine.AddOutput({{8, 8}});
  auto &second = Machine.AddOutput({{8, 8}});
  gHost.Gop = second.Protocol();
  SaveScreen(8, 8, 0x445566);
  EXPECT_EQ(RecoverScreenContent(1, 1), EFI_SUCCESS);
  EXPECT_TRUE(IsAll(first, 0));
  EXPECT_TRUE(IsAll(second, 0x445566));
}

TEST_F(ScreenBackup, EitherFlagOfTheHostRestoresAllOutputs) {
  gHost.Gop = Machine.AddOutput({{8, 8}}).Protocol();
  Machine.AddOutput({{8, 8}});
  for (UINT8 *flag : {&Host.State.RestoreAllOutputsA, &Host.State.RestoreAllOutputsB}) {
    SaveScreen(8, 8, flag == &Host.State.RestoreAllOutputsA ? 0x111111 : 0x222222);
    *flag = 2;
    EXPECT_EQ(RecoverScreenContent(8, 8), EFI_SUCCESS);
    EXPECT_TRUE(IsAll(Machine.Output(0), saved_[0]));
    EXPECT_TRUE(IsAll(Machine.Output(1), saved_[0]));
    *flag = 0;
  }
}

TEST_F(ScreenBackup, AnOutputInUseThatIsGoneIsNotWrittenTo) {
  Machine.AddOutput({{8, 8}});
  auto &gone = Machine.AddOutput({{8, 8}});
  gHost.Gop = gone.Protocol();
  Machine.RemoveOutput(gone);
  SaveScreen(8, 8, 0x445566);
  EXPECT_EQ(RecoverScreenContent(8, 8), EFI_SUCCESS);
  EXPECT_EQ(Calls(), Lines{});
}

TEST_F(ScreenBackup, AnOutputInUseOnTwoHandlesIsWrittenToOnce) {
  auto &output = Machine.AddOutput({{8, 8}});
  EFI_HANDLE second = Machine.Install(fake::kGraphicsOutputGuid, output.Protocol());
  gHost.Gop = output.Protocol();
  SaveScreen(8, 8, 0x445566);
  EXPECT_EQ(RecoverScreenContent(8, 8), EFI_SUCCESS);
  EXPECT_EQ(Calls(), Lines{"Gop.Blt(gop0, BufferToVideo, 0, 0, 0, 0, 8, 8, 0) = Success"});
  Machine.Uninstall(second, fake::kGraphicsOutputGuid, output.Protocol());
}

TEST_F(ScreenBackup, Of257OutputsTheFirst256AreWrittenTo) {
  for (int i = 0; i < 257; i++) {
    Machine.AddOutput({{1, 1}});
  }
  gHost.Gop = Machine.Output(0).Protocol();
  Host.State.RestoreAllOutputsA = 1;
  SaveScreen(1, 1, 0x445566);
  EXPECT_EQ(RecoverScreenContent(1, 1), EFI_SUCCESS);
  EXPECT_TRUE(IsAll(Machine.Output(255), 0x445566));
  EXPECT_TRUE(IsAll(Machine.Output(256), 0));
}

TEST_F(ScreenBackup, TheSetupScreensSizeIsThatOfTheSetup) {
  gHost.Gop = Machine.AddOutput({{16, 12}}).Protocol();
  SaveScreen(8, 4, 0x445566);
  EXPECT_EQ(RecoverScreenContent(12, 16), EFI_SUCCESS);
  EXPECT_EQ(Calls(), Lines{"Gop.Blt(gop0, BufferToVideo, 0, 0, 0, 0, 8, 4, 0) = Success"});
}

TEST_F(ScreenBackup, AFailedRestoreDoesNotStopTheOthers) {
  gHost.Gop = Machine.AddOutput({{8, 8}}).Protocol();
  auto &second = Machine.AddOutput({{8, 8}});
  Host.State.RestoreAllOutputsA = 1;
  SaveScreen(8, 8, 0x445566);
  Machine.FailCall(Service::GopBlt, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(RecoverScreenContent(8, 8), EFI_SUCCESS);
  EXPECT_TRUE(IsAll(second, 0x445566));
}

TEST_F(ScreenBackup, WithoutABackupNothingIsWritten) {
  gHost.Gop = Machine.AddOutput({{8, 8}}).Protocol();
  gRun.ScreenBackup = nullptr;
  EXPECT_EQ(RecoverScreenContent(8, 8), EFI_SUCCESS);
  EXPECT_EQ(Calls(), Lines{});
}

}  // namespace
