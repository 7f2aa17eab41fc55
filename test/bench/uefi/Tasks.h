/** @file
  What the user does with the view.
**/

#pragma once

#include "BenchFirmware.h"

enum class Measure {
  None,  ///< Only leads to what is measured next.
  Idle,
  IdleAtOnce,
  Crossing,
  FilterOne,
  FilterAll,
  VolumeBox,
  Outcome,
  Count,
};
inline constexpr UINTN kMeasures = static_cast<UINTN>(Measure::Count);

struct Task {
  Measure What;
  void (*Act)(UINTN argument);
  UINTN Argument;
  UINTN Turns;  ///< How many it lasts; 0 when it lasts until its frame is finished.
};

struct TaskList {
  static constexpr UINTN kCapacity = 300;
  Task Tasks[kCapacity];
  UINTN Count;
  /// What the application tells at its end when every place pointed at was right.
  UINT32 LastCategory;
  UINT16 LastFocus;
};

/// The view at rest, the pointer's moves, filter clicks, a screenshot; false when the host's
/// components do not allow it. The view must stand.
[[nodiscard]] bool PlanTasks(TaskList *list);
