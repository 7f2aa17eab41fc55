#include "Tasks.h"

#include "Hands.h"
#include "HostStandIn.h"
#include "Places.h"

namespace {

// Keys are taken 200 turns after the start.
constexpr UINTN kWarmUpTurns = 250;
constexpr UINTN kIdleTurns = 100;
constexpr UINTN kFilterRounds = 2;
constexpr UINTN kMaxCrossings = 40;
constexpr UINTN kFirstFocus = 1;  // The number of component 0.

/// The categories of the filter buttons; the first one shows all.
constexpr UINT32 kFilters[] = {0,           OBV_TYPE_USB,  OBV_TYPE_SATA,
                               OBV_TYPE_M2, OBV_TYPE_PCIE, OBV_TYPE_FAN};
constexpr UINTN kFilterCount = ARRAY_SIZE(kFilters);

static_assert(1 + 2 * kIdleTurns + kMaxCrossings + 3 * (kFilterRounds * kFilterCount) + 3 + 4 <=
              TaskList::kCapacity);

void DoNothing(UINTN) {}

void PointAtComponent(UINTN index) { PointAt(OnCallout(ViewOfHost().Components[index]), false); }

void PointAtFilter(UINTN row) { PointAt(OnFilterButton(row), false); }

void PressFilter(UINTN row) { PointAt(OnFilterButton(row), true); }

void PressScanCode(UINTN code) { PressKey({static_cast<UINT16>(code), CHAR_NULL}); }

void PressEnter(UINTN) { PressKey({SCAN_NULL, CHAR_CARRIAGE_RETURN}); }

void Add(TaskList *list, const Task &task) {
  list->Tasks[list->Count] = task;
  list->Count++;
}

void PlanIdling(TaskList *list) {
  Add(list, {Measure::None, DoNothing, 0, kWarmUpTurns});
  for (UINTN i = 0; i < kIdleTurns; i++) {
    Add(list, {Measure::Idle, DoNothing, 0, 1});
  }
  for (UINTN i = 0; i < kIdleTurns; i++) {
    Add(list, {Measure::IdleAtOnce, DoNothing, 0, 1});
  }
}

void PlanCrossings(TaskList *list) {
  const HostedView &view = ViewOfHost();
  UINTN crossings = 0;
  for (UINTN i = 0; i < view.Count && crossings < kMaxCrossings; i++) {
    if (view.Components[i].NotSelectable == 0) {
      // The first one comes from nowhere.
      Add(list, {crossings == 0 ? Measure::None : Measure::Crossing, PointAtComponent, i, 0});
      crossings++;
    }
  }
}

void PlanClick(TaskList *list, Measure what, UINTN row) {
  Add(list, {Measure::None, PointAtFilter, row, 0});
  Add(list, {Measure::None, PressFilter, row, 0});
  Add(list, {what, PointAtFilter, row, 0});
}

void PlanFilters(TaskList *list) {
  // The last click is on the first button, which shows all components again.
  for (UINTN i = kFilterRounds * kFilterCount; i > 0; i--) {
    UINTN row = (i - 1) % kFilterCount;
    PlanClick(list, row == 0 ? Measure::FilterAll : Measure::FilterOne, row);
  }
}

void PlanScreenshot(TaskList *list) {
  Add(list, {Measure::VolumeBox, PressScanCode, SCAN_F12, 0});
  Add(list, {Measure::Outcome, PressEnter, 0, 0});
  Add(list, {Measure::None, PressEnter, 0, 0});
}

/// Filters, and points at a component: the application tells both at its end.
void PlanProof(TaskList *list, UINTN row, UINTN component) {
  PlanClick(list, Measure::None, row);
  Add(list, {Measure::None, PointAtComponent, component, 0});
  list->LastCategory = kFilters[row];
  list->LastFocus = static_cast<UINT16>(component + kFirstFocus);
}

bool PlanSomeProof(TaskList *list) {
  const HostedView &view = ViewOfHost();
  for (UINTN row = 1; row < kFilterCount; row++) {
    for (UINTN i = 0; i < view.Count; i++) {
      const OBV_COMPONENT &component = view.Components[i];
      if (component.Type == kFilters[row] && component.NotSelectable == 0) {
        PlanProof(list, row, i);
        return true;
      }
    }
  }
  return false;
}

}  // namespace

bool PlanTasks(TaskList *list) {
  PlanIdling(list);
  PlanCrossings(list);
  PlanFilters(list);
  PlanScreenshot(list);
  return PlanSomeProof(list);
}
