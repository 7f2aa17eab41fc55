// Whole runs in which the firmware's pool has nothing to give at one allocation, or from one
// allocation on: they end by themselves, with nothing left behind.

#include <gtest/gtest.h>

#include "test/unit/run/FailureRun.h"

namespace {

using fake::FailureLoop;
using fake::kForever;
using fake::Service;

// A run has some 1,300 allocations. Each is tried, a share of them by each test.
constexpr uint64_t kShare = 150;
constexpr int kShares = 10;
// When all further ones fail, late ones are tried by sampling: a run that is out of memory soon
// ends.
constexpr uint64_t kStep = 13;

fake::FailureLoopResult Loop(const FailureLoop &loop) {
  fake::FailureLoopResult result = RunFailureLoop(loop, [&](fake::Firmware &machine) {
    FailureRun run(machine);
    if (loop.FreezesPool) {
      run.DemandScreen();
    }
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

class AllocationFailures : public testing::TestWithParam<int> {
 protected:
  static fake::FailureLoop Share() {
    auto share = static_cast<uint64_t>(GetParam());
    return {
        .What = Service::AllocatePool, .First = share * kShare + 1, .Last = (share + 1) * kShare};
  }
  /// The last share must reach the end of the run, so that no allocation is left out.
  static bool IsLast() { return GetParam() == kShares - 1; }
};

TEST_P(AllocationFailures, AreSurvivedOneByOne) {
  fake::FailureLoopResult result = Loop(Share());
  EXPECT_EQ(result.Text(), "");
  EXPECT_TRUE(result.Ended || (result.Runs == kShare && !IsLast())) << result.Runs;
}

TEST_P(AllocationFailures, AreSurvivedWhenNoneSucceedsAnyMore) {
  fake::FailureLoop loop = Share();
  loop.Count = kForever;
  loop.Step = GetParam() == 0 ? 1 : kStep;
  fake::FailureLoopResult result = Loop(loop);
  EXPECT_EQ(result.Text(), "");
  EXPECT_TRUE(result.Ended || (result.Runs >= kShare / loop.Step && !IsLast())) << result.Runs;
}

// The firmware allocates on the way back, too, to list its outputs and modes.
TEST_P(AllocationFailures, GiveTheSetupScreenBackWhenThePoolIsFull) {
  fake::FailureLoop loop = Share();
  loop.FreezesPool = true;
  fake::FailureLoopResult result = Loop(loop);
  EXPECT_EQ(result.Text(), "");
  EXPECT_TRUE(result.Ended || (result.Runs == kShare && !IsLast())) << result.Runs;
}

INSTANTIATE_TEST_SUITE_P(, AllocationFailures, testing::Range(0, kShares));

TEST(AllocationFailure, WithoutAFailureTheRunSucceeds) {
  fake::Firmware machine;
  FailureRun run(machine);
  EXPECT_EQ(run.Run(), 0);
  EXPECT_EQ(run.Status(), EFI_SUCCESS);
  EXPECT_EQ(machine.Leftovers(), "");
}

}  // namespace
