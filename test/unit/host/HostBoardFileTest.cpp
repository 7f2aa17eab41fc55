// The board that a user brings along on a disk.

#include "test/unit/host/HostDriverStage.h"

namespace obv_host {
namespace {

using fake::Service;

class HostBoardFile : public HostDriverStage {};

TEST_F(HostBoardFile, BoardFileOfAnyVolumeIsUsed) {
  Machine.AddVolume({.Label = u"EMPTY"});
  Machine.AddVolume({.Label = u"BOARD"}).Write(kBoardPath, OwnBoard(u"Brought along"));
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(BoardInUse(), "Brought along");
}

TEST_F(HostBoardFile, OwnVolumeComesFirst) {
  Machine.AddVolume().Write(kBoardPath, OwnBoard(u"Other"));
  fake::Volume &own = Machine.AddVolume();
  own.Write(kBoardPath, OwnBoard(u"Own"));
  EFI_LOADED_IMAGE_PROTOCOL image = {};
  image.DeviceHandle = own.Handle;
  Machine.Install(gEfiLoadedImageProtocolGuid, &image, Machine.ImageHandle);
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(BoardInUse(), "Own");
  Machine.Uninstall(Machine.ImageHandle, gEfiLoadedImageProtocolGuid, &image);
}

TEST_F(HostBoardFile, SpoiltBoardFileIsRefusedInOneLineForTheDefault) {
  fake::Volume &volume = Machine.AddVolume();
  std::vector<uint8_t> bytes = OwnBoard(u"Spoilt");
  bytes[2000] ^= 1;
  volume.Write(kBoardPath, bytes);
  uint64_t blocks = Machine.Pool.LiveBlocks();
  ASSERT_EQ(Load(), EFI_SUCCESS);
  std::string log = gPorts.Sent(0x3E8);
  EXPECT_EQ(log.find("[Host] board.bin refused: checksum"), 0U) << log;
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
  EXPECT_EQ(BoardInUse(), "Boardscope reference board");
  EXPECT_EQ(volume.OpenCount(), 0U);
  EXPECT_EQ(ObvHostUnload(Machine.ImageHandle), EFI_SUCCESS);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), blocks);
}

TEST_F(HostBoardFile, FolderOrEmptyFileInItsPlaceIsReported) {
  fake::Volume &folder = Machine.AddVolume();
  folder.MakeDirectory(kBoardPath);
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] board.bin cannot be read: Unsupported\n[Host] Ready\n");
  EXPECT_EQ(folder.OpenCount(), 0U);
}

TEST_F(HostBoardFile, EmptyBoardFileIsReported) {
  Machine.AddVolume().Write(kBoardPath, {});
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] board.bin cannot be read: Bad Buffer Size\n[Host] Ready\n");
}

TEST_F(HostBoardFile, UnreadableBoardFileIsReported) {
  fake::Volume &volume = Machine.AddVolume();
  volume.Write(kBoardPath, OwnBoard(u"Unreadable"));
  Machine.FailCall(Service::FileRead, 1, EFI_DEVICE_ERROR);
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] board.bin cannot be read: Device Error\n[Host] Ready\n");
  EXPECT_EQ(volume.OpenCount(), 0U);
}

}  // namespace
}  // namespace obv_host
