#include <gtest/gtest.h>

#include "test/firmware/FailureLoop.h"

namespace fake {
namespace {

// Three allocations; gives back what it got, unless `leaks`.
int AllocateThree(Firmware &firmware, bool leaks) {
  std::vector<VOID *> blocks;
  for (int i = 0; i < 3; i++) {
    VOID *block = nullptr;
    if (firmware.BootServices.AllocatePool(EfiBootServicesData, 8, &block) == EFI_SUCCESS) {
      blocks.push_back(block);
    } else if (leaks) {
      return 0;
    }
  }
  for (VOID *block : blocks) {
    firmware.BootServices.FreePool(block);
  }
  return 0;
}

TEST(FakeFirmwareLoop, TriesEachCallUntilTheRunMeetsNoFailure) {
  FailureLoopResult result = RunFailureLoop({.What = Service::AllocatePool},
                                            [](Firmware &f) { return AllocateThree(f, false); });
  EXPECT_EQ(result.Runs, 3u);
  EXPECT_TRUE(result.Ended);
  EXPECT_EQ(result.Text(), "");
}

TEST(FakeFirmwareLoop, ReportsLeaksCrashesAndResults) {
  FailureLoopResult leaks = RunFailureLoop({.What = Service::AllocatePool},
                                           [](Firmware &f) { return AllocateThree(f, true); });
  ASSERT_EQ(leaks.Complaints.size(), 2u) << "calls 2 and 3 leave blocks behind";
  EXPECT_EQ(leaks.Complaints[0],
            "AllocatePool call 2: the child ended with 87\n1 pool blocks are still allocated\n");
  FailureLoopResult crash = RunFailureLoop(
      {.What = Service::Stall, .Status = EFI_DEVICE_ERROR, .Last = 1},
      [](Firmware &f) { return f.BootServices.Stall(1) == EFI_SUCCESS ? 0 : (std::abort(), 0); });
  ASSERT_EQ(crash.Complaints.size(), 1u);
  EXPECT_FALSE(crash.Ended);
  FailureLoopResult code =
      RunFailureLoop({.What = Service::Stall, .Last = 1}, [](Firmware &) { return 5; });
  EXPECT_NE(code.Text().find("ended with 5"), std::string::npos);
}

}  // namespace
}  // namespace fake
