/** @file
  Runs of the application from its entry to its return, on a small screen with a setup picture.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "lvgl.h"

using LogLines = std::vector<fake::LogLine>;

class WholeRun : public testing::Test {
 protected:
  ~WholeRun() override {
    EXPECT_EQ(Machine.ProblemsText(), "");
    EXPECT_EQ(Machine.Pool.LiveBlocks(), 0u);
  }

  /// An output whose first mode shows a setup screen.
  fake::GraphicsOutput &AddSetupScreen(const std::vector<fake::VideoMode> &modes) {
    fake::GraphicsOutput &output = Machine.AddOutput(modes);
    auto shift = static_cast<UINT32>(Machine.OutputCount());
    output.Paint([=](UINT32 x, UINT32 y) { return (x * 77 + y * 1311 + shift) & 0xFFFFFF; });
    setups_.push_back({output.ModeNumber(), output.Picture()});
    return output;
  }

  /// Machine and host with everything in place; tests take away what they want missing.
  void Install(const std::vector<fake::VideoMode> &modes = {{1024, 768}}) {
    AddSetupScreen(modes);
    Machine.AddSimplePointer();
    Machine.AddAbsolutePointer();
    Host.Install();
  }

  /// For tests that look at no text: loading all faces takes most of a run.
  void LeaveFontsOut() {
    for (fake::TestHost::Font &font : Host.Fonts) {
      font.File.clear();
    }
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

  bool SetupScreenIsBack(size_t index = 0) {
    fake::GraphicsOutput &output = Machine.Output(index);
    return output.ModeNumber() == setups_[index].Mode && output.Picture() == setups_[index].Picture;
  }

  static fake::LogLine Info(std::string text) { return {OBV_LOG_INFO, std::move(text)}; }
  static fake::LogLine Error(std::string text) { return {OBV_LOG_ERROR, std::move(text)}; }
  static fake::LogLine LeakReport(UINT64 blocks, UINT64 bytes) {
    return Error("There are a total of " + std::to_string(blocks) + " memory leaks, amounting to " +
                 std::to_string(bytes >> 10) + "KB in total, and it has been freed!\n");
  }

  fake::Firmware Machine;
  fake::TestHost Host{Machine};

 private:
  struct SetupScreen {
    UINT32 Mode;
    std::vector<UINT32> Picture;
  };
  std::vector<SetupScreen> setups_;
};
