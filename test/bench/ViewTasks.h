// What a measured run does to the view, turn by turn.

#pragma once

#include <deque>
#include <functional>
#include <string>

#include "test/bench/ViewRun.h"
#include "test/firmware/TestHost.h"

namespace bench {

/// What happens before a main-loop turn. The measure of its kind is the time that the turns until
/// the next task take together: in the idle ones among them next to nothing.
struct Task {
  std::string Kind;  ///< Empty for a task that is not measured.
  std::function<void()> Prepare;
  int Turns;  ///< Until the next task; at least 1.
};

using Tasks = std::deque<Task>;

/// F12, and the choice of the volume, which saves the screenshot.
inline constexpr char kVolumeBoxKind[] = "volumeBox";
inline constexpr char kScreenshotKind[] = "screenshot";

/// The furnished view at rest, the pointer's moves, filter clicks, keys, status refreshes,
/// a full panel and screenshots. Firmware and host must outlive the tasks.
Tasks PlanTasks(fake::Firmware &firmware, fake::TestHost &host, const Resolution &resolution);

}  // namespace bench
