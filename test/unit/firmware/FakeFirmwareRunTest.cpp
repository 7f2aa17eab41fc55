// The run facility itself: turns, typed keys, the end, and what is left behind.

#include <gtest/gtest.h>

#include "test/firmware/Child.h"
#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

namespace fake {
namespace {

class FakeFirmwareRun : public testing::Test {
 protected:
  FakeFirmwareRun() {
    Output.Paint([](UINT32 x, UINT32 y) { return (x * 7 + y * 13) & 0xFFFFFF; });
    Machine.AddSimplePointer();
    Machine.AddAbsolutePointer();
    Host.LeaveFontsOut();
    Host.Install();
  }
  Firmware Machine;
  GraphicsOutput &Output = Machine.AddOutput({{1024, 768}});
  TestHost Host{Machine};
};

TEST_F(FakeFirmwareRun, EndsWithEscAndLeavesTheMachineAsItWas) {
  std::vector<UINT32> setup = Output.Picture();
  std::vector<UINT32> view;
  RunOptions options;
  options.At(50, [&] { view = Output.Picture(); });
  RunResult result = RunApplication(Machine, options);
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_GE(result.Turns, 60);
  EXPECT_LE(result.Turns, 65);
  EXPECT_NE(view, setup);
  EXPECT_EQ(Output.Picture(), setup);
  EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
  EXPECT_EQ(Machine.ProblemsText(), "");
  EXPECT_TRUE(Host.Logged("[VeltBoardscopeAppEntryPoint] User used APP for 0s\n"));
}

TEST_F(FakeFirmwareRun, TurnsAreTheMainLoops) {
  std::vector<std::string> order;
  std::vector<int> turns;
  RunOptions options;
  options.EveryTurn = [&](int turn) { turns.push_back(turn); };
  options.At(2, [&] { order.push_back("two"); }).At(2, [&] { order.push_back("again"); });
  options.At(1, [&] { order.push_back("one"); });
  options.At(
      1, [&] { EXPECT_TRUE(Host.Log.back().Text.find("Preparation cost") != std::string::npos); });
  RunResult result = RunApplication(Machine, options);
  EXPECT_EQ(order, (std::vector<std::string>{"one", "two", "again"}));
  ASSERT_EQ(turns.size(), static_cast<size_t>(result.Turns));
  EXPECT_EQ(turns.front(), 1);
  EXPECT_EQ(turns.back(), result.Turns);
}

TEST_F(FakeFirmwareRun, WithoutAHostThereIsNoTurn) {
  Host.Uninstall();
  RunResult result = RunApplication(Machine);
  EXPECT_EQ(result.Status, EFI_NOT_FOUND);
  EXPECT_EQ(result.Turns, 0);
}

TEST_F(FakeFirmwareRun, RunawayIsStopped) {
  ChildResult result = RunInChild([&](std::string *) {
    RunOptions options;
    options.EscapeAtTurn = 0;
    options.MostTurns = 100;
    RunApplication(Machine, options);
    return 0;
  });
  EXPECT_EQ(result.ExitCode, kRunawayExit);
  EXPECT_EQ(result.Output, "The application did not end within 100 turns\n");
}

}  // namespace
}  // namespace fake
