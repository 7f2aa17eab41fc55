// Times inside the application. The linker puts these probes in front of the application's own
// functions (see the list of wrapped symbols in cmake/Bench.cmake), which run unchanged.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "test/bench/Timing.h"

namespace bench {

enum class Step { Intake, Decode, Resample, Hotspots, Fonts, View, Count };

/// One pass through the main loop's lv_timer_handler.
struct Turn {
  double Seconds = 0;   ///< Without the transfers to the screen.
  uint64_t Pixels = 0;  ///< Transferred to the screen.
};

struct ProbeState {
  std::array<double, static_cast<std::size_t>(Step::Count)> Steps{};
  /// Runs from the application's start on.
  Stopwatch Whole;
  /// From the start to the main loop's first turn, without the transfers to the screen.
  double LoopStart = 0;
  std::vector<Turn> Turns;
  /// What the transfer hook counted in the current turn, and before the first one.
  double TransferSeconds = 0;
  uint64_t TransferPixels = 0;
};

extern ProbeState gProbes;

double StepSeconds(Step step);

}  // namespace bench
