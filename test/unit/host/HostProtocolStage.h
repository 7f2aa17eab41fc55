/** @file
  A host of the tests, reached through its protocol.
**/

#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "test/unit/host/HostBoardBytes.h"

#include "host/portable/Host.h"
#include "host/portable/HostLog.h"
#include "host/portable/HostSlots.h"
#include "host/portable/Texts.h"

namespace obv_host {

/// A host on services in memory, reached through its protocol alone.
class HostProtocol : public testing::Test {
 protected:
  void SetUp() override {
    const HostServices services = {
        .Context = this,
        .ReadClock = ReadClock,
        .WriteLog = WriteLog,
        .FindGop = FindGop,
        .Allocate = Allocate,
        .Free = Free,
    };
    const FontFile fonts[kFaceCount] = {{"first", 5}, {nullptr, 0}, {"third", 6}};
    InitializeHost(&TheHost, services, fonts);
    Protocol = &TheHost.Protocol;
    Shared = Protocol->SharedState;
  }

  void TearDown() override {
    ReleaseHost(&TheHost);
    EXPECT_TRUE(blocks_.empty()) << "memory that the host kept";
  }

  EFI_STATUS Use(const std::vector<UINT8> &bytes) {
    return UseBoard(&TheHost, "test board", bytes.data(), bytes.size());
  }

  EFI_STATUS Parse(OBV_COMPONENT **components) {
    return Protocol->ParseComponents(Protocol, components, 180, 320, 1080, 1920, 0.75, 1.0, 1.0);
  }

  Host TheHost;
  OBV_PROTOCOL *Protocol = nullptr;
  OBV_SHARED_STATE *Shared = nullptr;
  UINT64 Now = 0;
  std::string Log;
  int AllocationsLeft = 1000;
  EFI_GRAPHICS_OUTPUT_PROTOCOL Gop = {};

 private:
  static HostProtocol *Self(void *context) { return static_cast<HostProtocol *>(context); }
  static UINT64 ReadClock(void *context) { return Self(context)->Now; }
  static void WriteLog(void *context, const CHAR8 *line, UINTN size) {
    Self(context)->Log.append(line, size);
  }
  static EFI_STATUS FindGop(void *context, EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
    *gop = &Self(context)->Gop;
    return EFI_SUCCESS;
  }
  static void *Allocate(void *context, UINTN size) {
    if (Self(context)->AllocationsLeft-- <= 0) {
      return nullptr;
    }
    auto block = std::make_unique<std::vector<UINT8>>(size, 0xCC);
    void *address = block->data();
    Self(context)->blocks_[address] = std::move(block);
    return address;
  }
  static void Free(void *context, void *memory) {
    EXPECT_EQ(Self(context)->blocks_.erase(memory), 1U);
  }

  std::map<void *, std::unique_ptr<std::vector<UINT8>>> blocks_;
};

}  // namespace obv_host
