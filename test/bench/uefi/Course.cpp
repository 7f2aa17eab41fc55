#include "Course.h"

#include "Hands.h"
#include "HostStandIn.h"
#include "Tasks.h"

namespace {

/// A frame is finished when so many turns have drawn nothing more.
constexpr UINTN kQuietTurns = 8;
/// Far more than anything takes.
constexpr UINTN kMostTurns = 400;

struct Name {
  const CHAR8 *Ticks, *Pixels;  ///< The second one only where it is told.
};

/// Indexed by Measure.
constexpr Name kNames[] = {{"", nullptr},
                           {"idle", nullptr},
                           {"idleAtOnce", nullptr},
                           {"crossing", "crossingPixels"},
                           {"filterOne", "filterOnePixels"},
                           {"filterAll", nullptr},
                           {"volumeBox", nullptr},
                           {"outcome", nullptr}};
static_assert(ARRAY_SIZE(kNames) == kMeasures);

struct Use {
  UINT64 Ticks, Pixels;
};

struct Sum {
  Use Whole;
  UINT64 Count;
};

struct Course {
  TaskList Tasks;
  UINTN Current;
  UINTN Turns;  ///< Of the current task.
  UINTN Quiet;  ///< Turns since the current task began or drew.
  Use Now;      ///< By the current task.
  Use Drawn;    ///< By the current task until it drew last.
  Sum Sums[kMeasures];
  const CHAR8 *Fault;
};
Course gCourse;

const Task &CurrentTask() { return gCourse.Tasks.Tasks[gCourse.Current]; }

bool IsOver() { return gCourse.Current == gCourse.Tasks.Count || gCourse.Fault != nullptr; }

void BeginTask() {
  gCourse.Turns = 0;
  gCourse.Quiet = 0;
  gCourse.Now = {};
  gCourse.Drawn = {};
  if (!IsOver()) {
    CurrentTask().Act(CurrentTask().Argument);
  }
}

bool LastsUntilFinished() { return CurrentTask().Turns == 0; }

bool IsDone() {
  if (LastsUntilFinished()) {
    return gCourse.Quiet >= kQuietTurns;
  }
  return gCourse.Turns == CurrentTask().Turns;
}

void RecordTask() {
  const Use &use = LastsUntilFinished() ? gCourse.Drawn : gCourse.Now;
  Sum &sum = gCourse.Sums[static_cast<UINTN>(CurrentTask().What)];
  sum.Whole.Ticks += use.Ticks;
  sum.Whole.Pixels += use.Pixels;
  sum.Count++;
  if (LastsUntilFinished() && CurrentTask().What != Measure::None && use.Pixels == 0) {
    gCourse.Fault = "what should have drawn something drew nothing";
  }
}

void AddTurn(UINT64 ticks, UINT64 pixels) {
  gCourse.Turns++;
  gCourse.Quiet++;
  gCourse.Now.Ticks += ticks;
  gCourse.Now.Pixels += pixels;
  if (pixels > 0) {
    gCourse.Quiet = 0;
    gCourse.Drawn = gCourse.Now;
  }
}

bool IsEveryMeasureTaken() {
  for (UINTN i = 1; i < kMeasures; i++) {
    if (gCourse.Sums[i].Count == 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

void BeginCourse() {
  if (!PlanTasks(&gCourse.Tasks)) {
    gCourse.Fault = "no component belongs to a filter button";
  }
  BeginTask();
}

void EndTurn(UINT64 ticks, UINT64 pixels) {
  if (IsOver()) {
    // More than one is needed when a box is open.
    PressKey({SCAN_ESC, CHAR_NULL});
    return;
  }
  AddTurn(ticks, pixels);
  if (IsDone()) {
    RecordTask();
    gCourse.Current++;
    BeginTask();
  } else if (gCourse.Turns == kMostTurns) {
    gCourse.Fault = "the screen does not come to rest";
  }
}

UINT64 ClockStep() { return !IsOver() && CurrentTask().What == Measure::IdleAtOnce ? 0 : 1; }

const CHAR8 *FaultOfCourse(const OBV_SHARED_STATE &shared) {
  if (gCourse.Fault != nullptr) {
    return gCourse.Fault;
  }
  if (gCourse.Tasks.Count == 0 || gCourse.Current < gCourse.Tasks.Count) {
    return "the application ended too early";
  }
  if (!IsEveryMeasureTaken()) {
    return "the host has too few components";
  }
  if (shared.SelectedCategory != gCourse.Tasks.LastCategory) {
    return "a click on a filter button did not reach it";
  }
  if (shared.FocusIndex != gCourse.Tasks.LastFocus) {
    return "the pointer did not reach a component";
  }
  return nullptr;
}

void LogCourse() {
  for (UINTN i = 1; i < kMeasures; i++) {
    const Sum &sum = gCourse.Sums[i];
    LogFigure(kNames[i].Ticks, sum.Whole.Ticks / sum.Count);
    if (kNames[i].Pixels != nullptr) {
      LogFigure(kNames[i].Pixels, sum.Whole.Pixels / sum.Count);
    }
  }
}
