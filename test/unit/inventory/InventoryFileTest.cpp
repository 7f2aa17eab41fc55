// The inventory's file on the volume that the program came from.

#include <gtest/gtest.h>

#include "test/firmware/Run.h"

#include "host/inventory/InventoryFile.h"

extern "C" {
#include <Protocol/LoadedImage.h>
}

namespace obv_host {
namespace {

class InventoryFile : public testing::Test {
 protected:
  InventoryFile() {
    fake::RunLibraryConstructors(Machine);
    image_.DeviceHandle = Volume.Handle;
    Machine.Install(gEfiLoadedImageProtocolGuid, &image_, Machine.ImageHandle);
  }
  ~InventoryFile() override {
    Machine.Uninstall(Machine.ImageHandle, gEfiLoadedImageProtocolGuid, &image_);
    EXPECT_EQ(Machine.Leftovers(), "");
  }

  EFI_STATUS Write() { return WriteInventoryFile(Machine.ImageHandle); }

  std::string Written() const {
    std::vector<uint8_t> file = Volume.Read(kPath).value_or(std::vector<uint8_t>{});
    return {file.begin(), file.end()};
  }

  static constexpr char16_t kPath[] = u"inventory.yaml";
  fake::Firmware Machine;
  fake::Volume &Volume = Machine.AddVolume();

 private:
  EFI_LOADED_IMAGE_PROTOCOL image_ = {};
};

TEST_F(InventoryFile, IsWrittenToTheVolumeOfTheProgram) {
  EXPECT_EQ(Write(), EFI_SUCCESS);
  EXPECT_NE(Written().find("hardware:\n"), std::string::npos);
}

TEST_F(InventoryFile, ReplacesALongerOne) {
  Volume.Write(kPath, std::vector<uint8_t>(100'000, '~'));
  EXPECT_EQ(Write(), EFI_SUCCESS);
  EXPECT_NE(Written().find("hardware:\n"), std::string::npos);
  EXPECT_EQ(Written().find('~'), std::string::npos);
}

TEST_F(InventoryFile, AFailingWriteIsTold) {
  Machine.FailCall(fake::Service::FileWrite, 1, EFI_VOLUME_FULL);
  EXPECT_EQ(Write(), EFI_VOLUME_FULL);
}

TEST_F(InventoryFile, WithoutMemoryNothingIsWritten) {
  for (uint64_t n : {1, 2}) {
    Machine.Calls.Clear();
    Machine.FailCall(fake::Service::AllocatePool, n, EFI_OUT_OF_RESOURCES);
    EXPECT_EQ(Write(), EFI_OUT_OF_RESOURCES);
    EXPECT_FALSE(Volume.Read(kPath).has_value());
  }
}

}  // namespace
}  // namespace obv_host
