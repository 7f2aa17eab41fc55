/** @file
  On WholeRun: runs that follow a script of steps, in which a user does something.
**/

#pragma once

#include "test/unit/stage/ObjectLooks.h"
#include "test/unit/stage/WholeRun.h"

#include "platform/LvglPort.h"
#include "view/ViewState.h"

/// A test changes Host and Machine, plans its steps in order, then calls Run. Each step happens
/// between two main-loop turns; then the application gets turns to answer it.
class RunScript : public WholeRun {
 protected:
  RunScript() { Options.EscapeAtTurn = 0; }

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
  /// Moves the tip to the middle of a place; for use within a step, when it is there.
  void PointAt(const Place &place, bool pressed) {
    Machine.Tablet()->MoveTo(static_cast<UINT64>(place.X + place.Width / 2),
                             static_cast<UINT64>(place.Y + place.Height / 2), pressed ? 1 : 0);
  }
  void ThenClick(UINT32 x, UINT32 y) {
    ThenClick([x, y] { return Place{static_cast<int>(x), static_cast<int>(y), 1, 1}; });
  }
  /// A click on a place that is asked for when the tip goes there.
  void ThenClick(const std::function<Place()> &where) {
    for (bool pressed : {false, true, false}) {
      Then([this, where, pressed] { PointAt(where(), pressed); });
    }
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
    fake::RunResult result = WholeRun::Run(Options);
    ended_ = result.Turns;
    return result;
  }
  /// Whether the run lasted until the script's final Esc.
  bool RanToTheEnd() const { return ended_ > lastTurn_; }

  fake::RunOptions Options;

 private:
  // The application drops keys of its first 200 ms.
  int next_ = 30;
  int lastTurn_ = 0;
  int ended_ = 0;
};
