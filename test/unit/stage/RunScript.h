/** @file
  Whole runs of the application that follow a script of steps.
**/

#pragma once

#include "test/unit/stage/ViewStage.h"

#include "capture/MessageBox.h"
#include "platform/LvglPort.h"

/// A test changes Host and Machine, plans its steps in order, then calls Run. Each step happens
/// between two main-loop turns; then the application gets turns to answer it.
class RunScript : public testing::Test {
 protected:
  RunScript() { Options.EscapeAtTurn = 0; }
  ~RunScript() override { EXPECT_EQ(Machine.ProblemsText(), ""); }

  /// Turns that key presses and redraws need.
  static constexpr int kTurnsPerStep = 6;

  void Then(std::function<void()> action, int turns = kTurnsPerStep) {
    Options.At(next_, std::move(action));
    next_ += turns;
  }
  void ThenScan(UINT16 scanCode, int turns = kTurnsPerStep) {
    Then([this, scanCode] { Machine.Keyboard.Scan(scanCode); }, turns);
  }
  void ThenCharacter(char16_t character, int turns = kTurnsPerStep) {
    Then([this, character] { Machine.Keyboard.Character(character); }, turns);
  }
  void ThenEnter() { ThenCharacter(u'\r'); }
  void ThenFocus(size_t component) {
    Then([component] { lv_group_focus_obj(gView.Components[component].Callout); });
  }
  /// The tablet's tip at a pixel of the view; needs AddTablet.
  void ThenPoint(UINT32 x, UINT32 y, bool pressed = false) {
    Then([this, x, y, pressed] { Machine.Tablet()->MoveTo(x, y, pressed ? 1 : 0); });
  }
  void ThenClick(UINT32 x, UINT32 y) {
    ThenPoint(x, y);
    ThenPoint(x, y, true);
    ThenPoint(x, y);
  }
  void AddTablet(UINT32 width = 1920, UINT32 height = 1080) {
    Machine.AddSimplePointer();
    Machine.AddAbsolutePointer({0, 0, width - 1, height - 1});
  }

  /// Runs the script and then, unless something else has ended the run, leaves with Esc.
  fake::RunResult Run(UINT32 width = 1920, UINT32 height = 1080) {
    if (Machine.OutputCount() == 0) {
      Machine.AddOutput({{width, height}});
    }
    Host.Install();
    lastTurn_ = next_;
    ThenScan(SCAN_ESC);
    Options.MostTurns = next_ + 20;
    fake::RunResult result = fake::RunApplication(Machine, Options);
    ended_ = result.Turns;
    return result;
  }
  /// Whether the run lasted until the script's final Esc.
  bool RanToTheEnd() const { return ended_ > lastTurn_; }

  static lv_obj_t *Focused() { return lv_group_get_focused(gLvglPort.Group); }
  static bool BoxIsOpen() { return gMessageBox.ModalMessageBoxOpen; }
  void LeaveFontsOut() {
    for (fake::TestHost::Font &font : Host.Fonts) {
      font.File.clear();
    }
  }

  fake::Firmware Machine;
  fake::TestHost Host{Machine};
  fake::RunOptions Options;

 private:
  // The application drops keys of its first 200 ms.
  int next_ = 30;
  int lastTurn_ = 0;
  int ended_ = 0;
};
