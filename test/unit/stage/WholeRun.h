/** @file
  On MachineStage: runs of the application from its entry to its return, on a setup screen.
**/

#pragma once

#include "test/unit/stage/MachineStage.h"
#include "test/unit/stage/SetupScreens.h"

#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "lvgl.h"

/// A run leaves no memory behind, however it ends.
class WholeRun : public MachineStage {
 protected:
  ~WholeRun() override { EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u); }

  /// An output whose first mode shows a setup screen.
  fake::GraphicsOutput &AddSetupScreen(const std::vector<fake::VideoMode> &modes) {
    return screens_.Add(modes);
  }
  bool SetupScreenIsBack(size_t index = 0) const {
    return screens_.ModeIsBack(index) && screens_.PictureIsBack(index);
  }

  /// Machine and host with everything in place; tests take away what they want missing.
  void Install(const std::vector<fake::VideoMode> &modes = {{1024, 768}}) {
    AddSetupScreen(modes);
    Machine.AddSimplePointer();
    Machine.AddAbsolutePointer();
    Host.Install();
  }

  fake::RunResult Run(const fake::RunOptions &options = {}) {
    return fake::RunApplication(Machine, options);
  }

  /// A run that ends after its first turn.
  static fake::RunOptions OneTurn() {
    fake::RunOptions options;
    options.At(1, [] { gRun.ExitRequested = true; });
    return options;
  }

  /// Ends the run in its first turn as a jump does.
  fake::RunOptions Jump() {
    fake::RunOptions options;
    options.At(1, [this] {
      Host.State.JumpRequested = 1;
      gRun.ExitRequested = true;
    });
    return options;
  }

  static fake::LogLine LeakReport(UINT64 blocks, UINT64 bytes) {
    return Error("There are a total of " + std::to_string(blocks) + " memory leaks, amounting to " +
                 std::to_string(bytes >> 10) + "KB in total, and it has been freed!\n");
  }

 private:
  SetupScreens screens_{Machine};
};
