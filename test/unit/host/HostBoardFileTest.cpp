// The board that a user brings along on a disk.

#include "test/unit/host/HostDriverStage.h"

#include "host/uefi/BoardFile.h"

namespace obv_host {
namespace {

using fake::Service;

class HostBoardFile : public HostDriverStage {
 protected:
  /// Reads with the builder's leave to look at any volume; the file's bytes, if there is one.
  EFI_STATUS ReadFromAny(std::vector<uint8_t> *bytes) {
    VOID *data = nullptr;
    UINTN size = 0;
    EFI_STATUS status = ReadBoardFile(Machine.ImageHandle, true, &data, &size);
    if (!EFI_ERROR(status)) {
      bytes->assign(static_cast<uint8_t *>(data), static_cast<uint8_t *>(data) + size);
      FreePool(data);
    }
    return status;
  }

  void SetSecureBoot(UINT8 value, UINTN size = 1) {
    const UINT8 bytes[2] = {value, 0};
    const UINT32 attributes = EFI_VARIABLE_BOOTSERVICE_ACCESS | EFI_VARIABLE_RUNTIME_ACCESS;
    ASSERT_EQ(Machine.Variables.Set(Ucs2(u"SecureBoot"), &gEfiGlobalVariableGuid, attributes, size,
                                    bytes),
              EFI_SUCCESS);
  }
};

TEST_F(HostBoardFile, OwnVolumesBoardIsUsed) {
  Machine.AddVolume().Write(kBoardPath, OwnBoard(u"Other"));
  AddOwnVolume().Write(kBoardPath, OwnBoard(u"Own"));
  SetSecureBoot(1);
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(BoardInUse(), "Own");
}

TEST_F(HostBoardFile, OtherVolumesAreNotEvenOpened) {
  Machine.AddVolume().Write(kBoardPath, OwnBoard(u"Other"));
  AddOwnVolume();
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(BoardInUse(), "Boardscope reference board");
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 1U);
}

TEST_F(HostBoardFile, DriverOfAFirmwareVolumeReadsNoVolume) {
  Machine.AddVolume().Write(kBoardPath, OwnBoard(u"Other"));
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(BoardInUse(), "Boardscope reference board");
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 0U);
}

TEST_F(HostBoardFile, BuilderMayAskForAnyVolume) {
  AddOwnVolume();
  Machine.AddVolume().Write(kBoardPath, {1, 2, 3});
  std::vector<uint8_t> bytes;
  ASSERT_EQ(ReadFromAny(&bytes), EFI_SUCCESS);
  EXPECT_EQ(bytes, (std::vector<uint8_t>{1, 2, 3}));
  SetSecureBoot(0);
  EXPECT_EQ(ReadFromAny(&bytes), EFI_SUCCESS);
}

TEST_F(HostBoardFile, OwnVolumeComesFirst) {
  Machine.AddVolume().Write(kBoardPath, {1});
  AddOwnVolume().Write(kBoardPath, {2});
  std::vector<uint8_t> bytes;
  ASSERT_EQ(ReadFromAny(&bytes), EFI_SUCCESS);
  EXPECT_EQ(bytes, std::vector<uint8_t>{2});
}

TEST_F(HostBoardFile, SecureBootForbidsOtherVolumes) {
  Machine.AddVolume().Write(kBoardPath, {1});
  SetSecureBoot(1);
  std::vector<uint8_t> bytes;
  EXPECT_EQ(ReadFromAny(&bytes), EFI_NOT_FOUND);
  EXPECT_EQ(Machine.Calls.CountOf(Service::FsOpenVolume), 0U);
}

TEST_F(HostBoardFile, UnreadableSecureBootVariableForbidsThemToo) {
  Machine.AddVolume().Write(kBoardPath, {1});
  std::vector<uint8_t> bytes;
  Machine.FailCall(Service::RtGetVariable, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(ReadFromAny(&bytes), EFI_NOT_FOUND);
  Machine.Faults.Clear();
  SetSecureBoot(0, 2);
  EXPECT_EQ(ReadFromAny(&bytes), EFI_NOT_FOUND);
}

TEST_F(HostBoardFile, NoListOfVolumesIsNoFile) {
  Machine.AddVolume().Write(kBoardPath, {1});
  std::vector<uint8_t> bytes;
  Machine.FailCall(Service::LocateHandleBuffer, 1, EFI_OUT_OF_RESOURCES);
  EXPECT_EQ(ReadFromAny(&bytes), EFI_NOT_FOUND);
  Machine.Faults.Clear();
  EXPECT_EQ(ReadFromAny(&bytes), EFI_SUCCESS);
}

TEST_F(HostBoardFile, SpoiltBoardFileIsRefusedInOneLineForTheDefault) {
  fake::Volume &volume = AddOwnVolume();
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
  fake::Volume &folder = AddOwnVolume();
  folder.MakeDirectory(kBoardPath);
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] board.bin cannot be read: Unsupported\n[Host] Ready\n");
  EXPECT_EQ(folder.OpenCount(), 0U);
}

TEST_F(HostBoardFile, EmptyBoardFileIsReported) {
  AddOwnVolume().Write(kBoardPath, {});
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] board.bin cannot be read: Bad Buffer Size\n[Host] Ready\n");
}

TEST_F(HostBoardFile, UnreadableBoardFileIsReported) {
  fake::Volume &volume = AddOwnVolume();
  volume.Write(kBoardPath, OwnBoard(u"Unreadable"));
  Machine.FailCall(Service::FileRead, 1, EFI_DEVICE_ERROR);
  ASSERT_EQ(Load(), EFI_SUCCESS);
  EXPECT_EQ(gPorts.Sent(0x3E8), "[Host] board.bin cannot be read: Device Error\n[Host] Ready\n");
  EXPECT_EQ(volume.OpenCount(), 0U);
}

}  // namespace
}  // namespace obv_host
