// Outputs that go away while the view is up. Firmware announces arrivals alone, and the fake
// firmware takes each call of an output that is gone for a problem.

#include "test/unit/stage/WholeRun.h"

#include "app/base/Run.h"
#include "platform/HotPlug.h"

namespace {

using Lines = std::vector<std::string>;

constexpr char kGone[] = "[OBV] The output in use is gone.\n";

class LostOutput : public WholeRun {
 protected:
  LostOutput() { LeaveFontsOut(); }

  /// The output in use goes in turn 3; then something happens that shows on the screen, or not.
  fake::RunResult RunWithLoss(std::function<void()> afterwards) {
    fake::RunOptions options;
    options.EscapeAtTurn = 0;
    options.At(3, [this] { Machine.RemoveOutput(Machine.Output(0)); });
    options.At(30, std::move(afterwards));
    options.At(60, [] { gRun.ExitRequested = true; });
    return Run(options);
  }
  void MovePointer() { Machine.Tablet()->MoveTo(12000, 9000); }
};

TEST_F(LostOutput, TheViewMovesToAnotherOneThatCanShowIt) {
  Install();
  fake::GraphicsOutput &other = AddSetupScreen({{800, 600}, {1024, 768}});
  std::vector<UINT32> shown;
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.At(3, [&] {
    shown = Machine.Output(0).Picture();
    Machine.RemoveOutput(Machine.Output(0));
    lv_obj_invalidate(lv_disp_get_scr_act(nullptr));
  });
  options.At(10, [&] { EXPECT_EQ(other.Picture(), shown); });
  options.At(12, [] { gRun.ExitRequested = true; });
  EXPECT_EQ(Run(options).Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged(kGone));
  // Once: the view stays where it has gone.
  Lines errors = Host.LogTexts(OBV_LOG_ERROR);
  EXPECT_EQ(std::count(errors.begin(), errors.end(), kGone), 1);
}

TEST_F(LostOutput, WithoutAnotherOneTheApplicationEnds) {
  Install();
  AddSetupScreen({{800, 600}});
  fake::RunResult result = RunWithLoss([this] { MovePointer(); });
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_LT(result.Turns, 40);
  EXPECT_TRUE(Host.Logged(kGone));
  EXPECT_TRUE(Host.Logged("No Gop support current resolution!\nNow app exit...\n"));
}

TEST_F(LostOutput, WithoutAnotherOneForTheViewTheSetupScreenGoesToOneThatCanShowThat) {
  Install({{1280, 1024}, {1024, 768}});
  fake::GraphicsOutput &other = AddSetupScreen({{800, 600}, {1280, 1024}});
  std::vector<UINT32> setup = Machine.Output(0).Picture();
  fake::RunResult result = RunWithLoss([this] { MovePointer(); });
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged("No Gop support current resolution!\nNow app exit...\n"));
  EXPECT_EQ(other.Width(), 1280u);
  EXPECT_EQ(other.Picture(), setup);
  Lines errors = Host.LogTexts(OBV_LOG_ERROR);
  EXPECT_EQ(std::count(errors.begin(), errors.end(), kGone), 1);
}

TEST_F(LostOutput, WithNoneLeftTheApplicationEnds) {
  Install();
  fake::RunResult result = RunWithLoss([this] { MovePointer(); });
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_LT(result.Turns, 40);
  EXPECT_TRUE(Host.Logged("Get Gop Protocol failed!\n"));
}

TEST_F(LostOutput, AnotherOneThatGoesBeforeItIsDrawnOnIsNotCalledEither) {
  Install();
  fake::RunResult result = RunWithLoss([this] {
    fake::GraphicsOutput &other = Machine.AddOutput({{1024, 768}});
    Machine.RemoveOutput(other);
  });
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_LT(result.Turns, 40);
  EXPECT_TRUE(Host.Logged(kGone));
  EXPECT_TRUE(Host.Logged("Get Gop Protocol failed!\n"));
}

TEST_F(LostOutput, WhileNothingIsDrawnItIsMissedAtTheEnd) {
  Install();
  fake::GraphicsOutput &other = AddSetupScreen({{800, 600}, {1024, 768}});
  std::vector<UINT32> setup = Machine.Output(0).Picture();
  fake::RunResult result = RunWithLoss([] {});
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged(kGone));
  EXPECT_EQ(other.Width(), 1024u);
  EXPECT_EQ(other.Picture(), setup);
}

TEST_F(LostOutput, WithNoneLeftAtTheEndNothingIsGivenBack) {
  Install();
  fake::RunResult result = RunWithLoss([] {});
  EXPECT_EQ(result.Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged(kGone));
}

// A driver that starts anew often gets the memory back that it has just freed.
TEST_F(LostOutput, ThatComesBackAtItsOldAddressIsUsedOn) {
  Install();
  fake::GraphicsOutput &output = Machine.Output(0);
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.At(3, [&] {
    Machine.RemoveOutput(output);
    output.Removed = false;
    output.Handle = Machine.Install(fake::kDevicePathGuid, output.Path.Get());
    Machine.Install(fake::kGraphicsOutputGuid, output.Protocol(), output.Handle);
  });
  options.At(30, [this] { MovePointer(); });
  options.At(60, [] { gRun.ExitRequested = true; });
  EXPECT_EQ(Run(options).Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged("New monitor interface detected!\n"));
  EXPECT_FALSE(Host.Logged(kGone));
}

// Without a frame in between, in which the view would look for its handle.
TEST_F(LostOutput, IsMissedAlsoRightAfterTheViewHasMovedToIt) {
  Install();
  fake::GraphicsOutput *second = nullptr;
  fake::RunOptions options;
  options.EscapeAtTurn = 0;
  options.At(3, [&] {
    Machine.Output(0).SetModes({{800, 600}});
    second = &AddSetupScreen({{1024, 768}});
    Machine.Events.Dispatch();
    Machine.RemoveOutput(*second);
  });
  options.At(60, [] { gRun.ExitRequested = true; });
  EXPECT_EQ(Run(options).Status, EFI_SUCCESS);
  EXPECT_TRUE(Host.Logged(kGone));
}

TEST_F(LostOutput, IsNotAskedForAScreenshot) {
  Install();
  AddSetupScreen({{1024, 768}});
  Machine.AddVolume();
  RunWithLoss([this] { Machine.Keyboard.Scan(SCAN_F12); });
  EXPECT_TRUE(Host.Logged(kGone));
  EXPECT_TRUE(Host.Logged("[F12ScreenShots] Error occurs: Not Ready\n"));
}

}  // namespace
