// The inventory's file when there is no volume, or not enough of it.

#include "test/unit/sources/SmbiosStage.h"

#include "host/inventory/InventoryFile.h"

extern "C" {
#include <Protocol/LoadedImage.h>
#include <Protocol/SimpleFileSystem.h>
}

namespace obv_host {
namespace {

class InventoryFailure : public SmbiosStage {
 protected:
  InventoryFailure() {
    image_.DeviceHandle = Stick.Handle;
    Machine.Install(gEfiLoadedImageProtocolGuid, &image_, Machine.ImageHandle);
  }
  ~InventoryFailure() override {
    Machine.Uninstall(Machine.ImageHandle, gEfiLoadedImageProtocolGuid, &image_);
  }

  EFI_STATUS Write() { return WriteInventoryFile(Machine.ImageHandle); }

  void LoadFrom(EFI_HANDLE device) { image_.DeviceHandle = device; }

  std::string Written() const {
    std::vector<uint8_t> file = Stick.Read(u"inventory.yaml").value_or(std::vector<uint8_t>{});
    return {file.begin(), file.end()};
  }

  fake::Volume &Stick = Machine.AddVolume();

 private:
  EFI_LOADED_IMAGE_PROTOCOL image_ = {};
};

TEST_F(InventoryFailure, ImageThatNobodyLoadedHasNoVolume) {
  EFI_HANDLE nobody = Machine.Install(fake::kDevicePathGuid, nullptr);
  EXPECT_EQ(WriteInventoryFile(nobody), EFI_UNSUPPORTED);
  EXPECT_EQ(Written(), "");
}

TEST_F(InventoryFailure, ImageFromADeviceWithoutFilesHasNoVolume) {
  LoadFrom(Machine.Install(fake::kDevicePathGuid, nullptr));
  EXPECT_EQ(Write(), EFI_UNSUPPORTED);
  EXPECT_EQ(Written(), "");
}

TEST_F(InventoryFailure, VolumeThatCannotBeOpenedIsTold) {
  Machine.FailCall(fake::Service::FsOpenVolume, 1, EFI_VOLUME_CORRUPTED);
  EXPECT_EQ(Write(), EFI_VOLUME_CORRUPTED);
}

TEST_F(InventoryFailure, FileThatCannotBeMadeIsTold) {
  // The first opening looks for a file from earlier.
  Machine.FailCall(fake::Service::FileOpen, 2, EFI_WRITE_PROTECTED);
  EXPECT_EQ(Write(), EFI_WRITE_PROTECTED);
  EXPECT_EQ(Written(), "");
}

TEST_F(InventoryFailure, FileThatCannotBeClosedIsTold) {
  Machine.FailCall(fake::Service::FileClose, 1, EFI_DEVICE_ERROR);
  EXPECT_EQ(Write(), EFI_DEVICE_ERROR);
}

// Names of quotes take twice their length.
TEST_F(InventoryFailure, MoreHardwareThanThereIsRoomForIsToldAndTheFirstOfItKept) {
  constexpr int kSlots = 600;
  for (int i = 0; i < kSlots; i++) {
    SMBIOS_TABLE_TYPE17 slot = {};
    slot.DeviceLocator = 1;
    Table.Add(17, slot, {std::to_string(i) + std::string(120, '"')});
  }
  Table.Install(Machine);
  EXPECT_EQ(Write(), EFI_BUFFER_TOO_SMALL);
  std::string written = Written();
  EXPECT_NE(written.find("\n  - memory: \"0\\\""), std::string::npos);
  EXPECT_EQ(written.find("\n  - memory: \"599\\\""), std::string::npos);
  EXPECT_EQ(written.back(), '\n');
}

/// A volume whose driver takes a part of what is written and calls it a success.
class ShortVolume {
 public:
  ShortVolume() {
    fileSystem_.OpenVolume = OpenVolume;
    file_.Open = Open;
    file_.Close = Close;
    file_.Write = WriteLess;
    current_ = this;
  }

  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *Protocol() { return &fileSystem_; }
  int OpenFiles() const { return open_; }

 private:
  static EFI_STATUS EFIAPI OpenVolume(EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *, EFI_FILE_PROTOCOL **root) {
    current_->open_++;
    *root = &current_->file_;
    return EFI_SUCCESS;
  }

  static EFI_STATUS EFIAPI Open(EFI_FILE_PROTOCOL *self, EFI_FILE_PROTOCOL **file, CHAR16 *,
                                UINT64 mode, UINT64) {
    if ((mode & EFI_FILE_MODE_CREATE) == 0) {
      return EFI_NOT_FOUND;
    }
    current_->open_++;
    *file = self;
    return EFI_SUCCESS;
  }

  static EFI_STATUS EFIAPI Close(EFI_FILE_PROTOCOL *) {
    current_->open_--;
    return EFI_SUCCESS;
  }

  static EFI_STATUS EFIAPI WriteLess(EFI_FILE_PROTOCOL *, UINTN *size, VOID *) {
    *size /= 2;
    return EFI_SUCCESS;
  }

  static inline ShortVolume *current_ = nullptr;
  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL fileSystem_ = {};
  EFI_FILE_PROTOCOL file_ = {};
  int open_ = 0;
};

TEST_F(InventoryFailure, FileThatIsShorterThanItsTextIsTold) {
  ShortVolume volume;
  LoadFrom(Machine.Install(gEfiSimpleFileSystemProtocolGuid, volume.Protocol()));
  EXPECT_EQ(Write(), EFI_VOLUME_FULL);
  EXPECT_EQ(volume.OpenFiles(), 0);
}

}  // namespace
}  // namespace obv_host
