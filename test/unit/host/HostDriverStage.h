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
    EXPECT_EQ(Machine.Hii.ListCount(), 0U);
    EXPECT_EQ(Machine.ProblemsText(), "");
  }

  EFI_STATUS Load() { return ObvHostEntryPoint(Machine.ImageHandle, &Machine.SystemTable); }

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
};

}  // namespace obv_host
