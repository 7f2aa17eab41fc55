/** @file
  The reference host's driver as firmware loads it, on the fake firmware.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/firmware/FakeFirmware.h"
#include "test/firmware/Run.h"
#include "test/unit/host/HostBoardBytes.h"
#include "test/unit/host/HostPorts.h"

#include "host/uefi/Driver.h"

namespace obv_host {

inline constexpr const char16_t *kBoardPath = u"\\EFI\\Boardscope\\board.bin";

class HostDriverStage : public testing::Test {
 protected:
  HostDriverStage() {
    gPorts = Ports();
    fake::RunLibraryConstructors(Machine);
  }

  ~HostDriverStage() override {
    if (FindHost() == &gDriver.Contract.Protocol) {
      EXPECT_EQ(ObvHostUnload(Machine.ImageHandle), EFI_SUCCESS);
    }
    if (image_.DeviceHandle != nullptr) {
      Machine.Uninstall(Machine.ImageHandle, gEfiLoadedImageProtocolGuid, &image_);
    }
    EXPECT_EQ(Machine.Hii.ListCount(), 0U);
    EXPECT_EQ(Machine.ProblemsText(), "");
  }

  EFI_STATUS Load() { return ObvHostEntryPoint(Machine.ImageHandle, &Machine.SystemTable); }

  /// The volume that the driver is loaded from; without it, the driver comes from no volume.
  fake::Volume &AddOwnVolume() {
    fake::Volume &volume = Machine.AddVolume();
    image_.DeviceHandle = volume.Handle;
    Machine.Install(gEfiLoadedImageProtocolGuid, &image_, Machine.ImageHandle);
    return volume;
  }

  OBV_PROTOCOL *FindHost() {
    EFI_GUID guid = OBV_PROTOCOL_GUID;
    VOID *found = nullptr;
    EFI_STATUS status = Machine.Handles.LocateProtocol(&guid, nullptr, &found);
    return EFI_ERROR(status) ? nullptr : static_cast<OBV_PROTOCOL *>(found);
  }

  /// Title of the board in use, by the line that every run logs.
  std::string BoardInUse() {
    gPorts.DebugOutput.clear();
    OBV_PROTOCOL *host = FindHost();
    EXPECT_EQ(host->FinishParse(host), EFI_SUCCESS);
    std::string line = gPorts.DebugOutput;
    return line.substr(line.find('"') + 1, line.rfind('"') - line.find('"') - 1);
  }

  static std::vector<uint8_t> OwnBoard(const std::u16string &title) {
    BoardParts parts = BoardParts::Sound();
    PutText(parts.Header.Title, title);
    return parts.Bytes();
  }

  fake::Firmware Machine;

 private:
  EFI_LOADED_IMAGE_PROTOCOL image_ = {};
};

}  // namespace obv_host
