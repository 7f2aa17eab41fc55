// Runs the real application from its entry to its return.

#pragma once

#include "test/firmware/TestHost.h"

namespace fake {

/// Runs the library constructors in the order of the firmware image: gImageHandle, gST, gBS, gRT,
/// the HOB list and the HII protocols are then those of the fake.
void RunLibraryConstructors(Firmware &firmware);

struct RunOptions {
  /// Milliseconds of the host's clock per look at it: per main-loop turn.
  uint64_t StepPerTurn = 10;
  /// What happens in a turn, after its lv_timer_handler and before its clock is read. The first
  /// turn is 1.
  std::map<int, std::vector<std::function<void()>>> AtTurn;
  /// Called in every turn with its number, after AtTurn.
  std::function<void(int turn)> EveryTurn;
  /// Types Esc in this turn; 0 for never. Keys are read from 200 ms after the start on.
  int EscapeAtTurn = 60;
  /// A run that lasts longer is a problem; the process then ends with exit code 86.
  int MostTurns = 20000;

  RunOptions &At(int turn, std::function<void()> action) {
    AtTurn[turn].push_back(std::move(action));
    return *this;
  }
};

struct RunResult {
  EFI_STATUS Status = 0;
  int Turns = 0;
};

/// The application's state and LVGL's are one-shot: once per process (see Child.h).
RunResult RunApplication(Firmware &firmware, TestHost &host, const RunOptions &options = {});

}  // namespace fake
