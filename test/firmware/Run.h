// Runs the real application from its entry to its return.

#pragma once

#include "test/firmware/FakeFirmware.h"

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
  /// Types Esc in this turn; 0 for never. The application drops keys that it reads in its first
  /// 200 ms, so the default leaves it time with the default StepPerTurn.
  int EscapeAtTurn = 60;
  /// A run that lasts longer ends the process with exit code kRunawayExit and a message.
  int MostTurns = 20000;

  RunOptions &At(int turn, std::function<void()> action) {
    AtTurn[turn].push_back(std::move(action));
    return *this;
  }
};

inline constexpr int kRunawayExit = 86;

struct RunResult {
  EFI_STATUS Status = 0;
  int Turns = 0;  ///< Main-loop turns; 0 when the loop was not reached.
  /// Bytes of its stack that the run has used, actions of the test included (see Stack.h).
  size_t StackUsed = 0;
};

/// Runs the image from its entry point on, library constructors included, on a stack of the size
/// that firmware promises. Turns
/// are counted by the looks at the host's clock, so the host must read it from the firmware, as
/// TestHost does (see Firmware::LookAtClock). The application's state and LVGL's are one-shot:
/// once per process (Child.h has more processes).
RunResult RunApplication(Firmware &firmware, const RunOptions &options = {});

/// Ends the application that RunApplication runs, from wherever it is: what boot service Exit does.
/// A problem when none runs, and then it returns.
void LeaveApplication(EFI_STATUS status);

}  // namespace fake
