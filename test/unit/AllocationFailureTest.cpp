// Whole runs in which the firmware's pool has nothing to give at one allocation, or from one
// allocation on: they end by themselves, with nothing left behind.

#include "test/unit/FailureRun.h"

namespace {

using fake::FailureLoop;
using fake::kForever;
using fake::Service;

// Each of these is tried; later ones, which are mostly LVGL's, by sampling.
constexpr uint64_t kEach = 150;
constexpr uint64_t kStep = 37;

fake::FailureLoopResult Loop(const FailureLoop &loop) {
  fake::FailureLoopResult result = RunFailureLoop(loop, [](fake::Firmware &machine) {
    FailureRun run(machine);
    int code = run.Run();
    EFI_STATUS status = run.Status();
    if (status != EFI_SUCCESS && status != EFI_NOT_FOUND && status != EFI_OUT_OF_RESOURCES) {
      std::printf("status %llx\n", static_cast<unsigned long long>(status));
      return 1;
    }
    return code;
  });
  std::printf("allocations %llu, %llu, ... up to %llu: %llu runs\n",
              static_cast<unsigned long long>(loop.First),
              static_cast<unsigned long long>(loop.First + loop.Step),
              static_cast<unsigned long long>(loop.First + (result.Runs - 1) * loop.Step),
              static_cast<unsigned long long>(result.Runs));
  return result;
}

void ExpectEachSurvived(uint64_t first, uint64_t last, uint64_t count) {
  fake::FailureLoopResult result =
      Loop({.What = Service::AllocatePool, .Count = count, .First = first, .Last = last});
  EXPECT_EQ(result.Text(), "");
  EXPECT_EQ(result.Runs, last - first + 1);
}

TEST(AllocationFailure, EachAllocationOfTheStartFailsOnce) { ExpectEachSurvived(1, kEach / 2, 1); }

TEST(AllocationFailure, EachAllocationAfterTheStartFailsOnce) {
  ExpectEachSurvived(kEach / 2 + 1, kEach, 1);
}

TEST(AllocationFailure, FromEachAllocationOfTheStartOnAllFail) {
  ExpectEachSurvived(1, kEach / 2, kForever);
}

TEST(AllocationFailure, FromEachAllocationAfterTheStartOnAllFail) {
  ExpectEachSurvived(kEach / 2 + 1, kEach, kForever);
}

TEST(AllocationFailure, LaterAllocationsFailOnce) {
  fake::FailureLoopResult result =
      Loop({.What = Service::AllocatePool, .First = kEach + 1, .Step = kStep});
  EXPECT_EQ(result.Text(), "");
  EXPECT_TRUE(result.Ended);
  EXPECT_GT(result.Runs, 5u);
}

TEST(AllocationFailure, FromLaterAllocationsOnAllFail) {
  fake::FailureLoopResult result =
      Loop({.What = Service::AllocatePool, .Count = kForever, .First = kEach + 1, .Step = kStep});
  EXPECT_EQ(result.Text(), "");
  EXPECT_TRUE(result.Ended);
  EXPECT_GT(result.Runs, 5u);
}

TEST(AllocationFailure, WithoutAFailureTheRunSucceeds) {
  fake::Firmware machine;
  FailureRun run(machine);
  EXPECT_EQ(run.Run(), 0);
  EXPECT_EQ(run.Status(), EFI_SUCCESS);
  EXPECT_EQ(machine.Leftovers(), "");
}

}  // namespace
