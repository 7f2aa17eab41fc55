// What the host is told at the end of a run: the option search and the two hooks.

#include "test/unit/stage/WholeRun.h"

namespace {

using fake::Service;

class LifecycleHooks : public WholeRun {
 protected:
  LifecycleHooks() { LeaveFontsOut(); }
};

TEST_F(LifecycleHooks, TheResolutionHookIsForThatEndingAlone) {
  Install();
  Run(OneTurn());
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostAfterAppLife), 1u);
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostUnsupportedResolution), 0u);
}

TEST_F(LifecycleHooks, TheResolutionHookComesAfterTheOtherAndBeforeTheLeakReport) {
  Install({{800, 600}});
  Host.State.JumpRequested = 1;
  UINT8 jump = 9;
  LogLines log;
  UINT64 blocks = 0;
  Host.OnUnsupportedResolution = [&] {
    jump = Host.State.JumpRequested;
    log = Host.Log;
    blocks = Machine.Pool.LiveBlocks();
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_EQ(Machine.Calls.Lines({Service::HostAfterAppLife, Service::HostUnsupportedResolution}),
            (std::vector<std::string>{"Host.AfterAppLife(1) = Success",
                                      "Host.UnsupportedResolution() = Success"}));
  EXPECT_EQ(jump, 0);
  ASSERT_FALSE(log.empty());
  EXPECT_EQ(log.back(), Error("[VeltBoardscopeAppEntryPoint] AfterAppLife cost: 10ms\n"));
  EXPECT_GT(blocks, 0u);
  ASSERT_GT(Host.Log.size(), log.size());
  EXPECT_TRUE(Host.Log[log.size()].Text.starts_with("There are a total of " +
                                                    std::to_string(blocks) + " memory leaks"));
}

TEST_F(LifecycleHooks, ErrorsOfTheHooksAreIgnored) {
  Install({{800, 600}});
  Host.OnAfterAppLife = [] { return EFI_ABORTED; };
  Host.OnUnsupportedResolution = [] { return EFI_ABORTED; };
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
}

TEST_F(LifecycleHooks, HooksMayBeMissingWhenNoModeIsUsable) {
  Install({{800, 600}});
  Host.Protocol().AfterAppLife = nullptr;
  Host.Protocol().UnsupportedResolution = nullptr;
  EXPECT_EQ(Run().Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged("[VeltBoardscopeAppEntryPoint] AfterAppLife cost: 10ms\n"));
}

TEST_F(LifecycleHooks, WithoutAnOptionSearchAJumpEndsTheRunSuccessfully) {
  Install();
  Host.Protocol().FindBiosOption = nullptr;
  Host.Protocol().AfterAppLife = nullptr;
  EXPECT_EQ(Run(Jump()).Status, EFI_SUCCESS);
  EXPECT_EQ(Host.State.JumpRequested, 0);
  EXPECT_FALSE(Host.Logged("[VeltBoardscopeAppEntryPoint] Find BIOS option cost: 10ms\n"));
}

TEST_F(LifecycleHooks, NoOptionIsSearchedWithoutAJump) {
  Install();
  Run(OneTurn());
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostFindBiosOption), 0u);
}

TEST_F(LifecycleHooks, AnEarlyEndingSearchesNoOption) {
  Install();
  Host.State.JumpRequested = 1;
  Host.OnFinishParse = [] { return EFI_DEVICE_ERROR; };
  Run();
  EXPECT_EQ(Machine.Calls.CountOf(Service::HostFindBiosOption), 0u);
  EXPECT_EQ(Host.State.JumpRequested, 0);
}

TEST_F(LifecycleHooks, TheHostSeesTheJumpUntilItsHookReturns) {
  Install();
  UINT8 inSearch = 0, inHook = 0;
  Host.OnFindBiosOption = [&] {
    inSearch = Host.State.JumpRequested;
    return EFI_SUCCESS;
  };
  Host.OnAfterAppLife = [&] {
    inHook = Host.State.JumpRequested;
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Run(Jump()).Status, EFI_SUCCESS);
  EXPECT_EQ(inSearch, 1);
  EXPECT_EQ(inHook, 1);
  EXPECT_EQ(Host.State.JumpRequested, 0);
}

TEST_F(LifecycleHooks, AFailedSearchWithdrawsTheJumpBeforeTheHook) {
  Install();
  Host.OnFindBiosOption = [] { return EFI_NOT_FOUND; };
  UINT8 inHook = 9;
  Host.OnAfterAppLife = [&] {
    inHook = Host.State.JumpRequested;
    return EFI_SUCCESS;
  };
  EXPECT_EQ(Run(Jump()).Status, EFI_NOT_FOUND);
  EXPECT_EQ(inHook, 0);
  EXPECT_TRUE(SetupScreenIsBack());
}

TEST_F(LifecycleHooks, TheUiStateIsSavedBeforeTheOptionIsSearched) {
  Install();
  UINT8 saved = 0;
  Host.OnFindBiosOption = [&] {
    saved = Host.State.UiStateSaved;
    return EFI_SUCCESS;
  };
  Run(Jump());
  EXPECT_EQ(saved, 1);
}

}  // namespace
