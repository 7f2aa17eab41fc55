#include "view/CategoryFilter.h"

#include "app/HostFormat.h"
#include "app/LocalizedStrings.h"
#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/ComponentPanel.h"
#include "view/FilterButtons.h"
#include "view/InfoPanel.h"
#include "view/Look.h"

namespace {

constexpr UINTN kHintSize = 100;

bool PassesFilter(const OBV_COMPONENT &component) {
  if (gView.CategoryFilter == kSpecialGroupFilter) {
    // A type of that number would pass, too.
    return component.InSpecialGroup != 0 || component.Type == kSpecialGroupFilter;
  }
  return gView.CategoryFilter == 0 || gView.CategoryFilter == component.Type;
}

/// Whether the filter hides the dots; unlike the callouts', a type of the
/// special group's number does not count.
bool FilterHidesMarkers(const OBV_COMPONENT &component) {
  if (gView.CategoryFilter == kSpecialGroupFilter) {
    return component.InSpecialGroup == 0;
  }
  return gView.CategoryFilter != 0 && gView.CategoryFilter != component.Type;
}

void FilterCallouts() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    bool visible = PassesFilter(ComponentAt(i));
    SetVisible(gView.Callouts[i], visible);
    SetVisible(gView.Leaders[i], visible);
  }
}

void FilterMarkers() {
  const lv_obj_t *focused = lv_group_get_focused(gLvglPort.Group);
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    const OBV_COMPONENT &component = ComponentAt(i);
    if (component.Type == OBV_TYPE_UNCATEGORISED || FilterHidesMarkers(component)) {
      SetVisible(gView.FirstMarkers[i], false);
      SetVisible(gView.SecondMarkers[i], false);
      continue;
    }
    ShowMarkers(i);
    if (gView.Callouts[i] == focused) {
      FillComponentPanel(i);
    }
  }
}

void ApplyFilter(lv_obj_t *button, UINT32 filter) {
  gView.CategoryFilter = filter;
  lv_group_focus_obj(button);
  FilterCallouts();
  MarkSelectedFilterButton(button);
  FilterMarkers();
}

void ShowHint(const lv_obj_t *button) {
  const lv_obj_t *label = lv_obj_get_child(button, 0);
  CHAR8 hint[kHintSize] = {};
  PrintHostFormat(hint, sizeof(hint), LocalizedText(TextId::FilterHint),
                  static_cast<const CHAR8 *>(lv_label_get_text(label)));
  SetInfoText(hint);
}

}  // namespace

void CategoryFilterHandler(lv_event_t *event) {
  lv_obj_t *button = lv_event_get_target(event);
  switch (lv_event_get_code(event)) {
    case LV_EVENT_CLICKED:
      ApplyFilter(button, *static_cast<const UINT32 *>(lv_event_get_user_data(event)));
      break;
    case LV_EVENT_FOCUSED:
      ShowHint(button);
      break;
    case LV_EVENT_DEFOCUSED:
      SetInfoText(" ");
      break;
    default:
      break;
  }
}

void SelectNextCategory() {
  UINTN current = 0;
  for (UINTN i = 0; i < kCategoryCount; ++i) {
    if (kCategories[i].Code == gView.CategoryFilter) {
      current = i;
    }
  }
  lv_event_send(gView.FilterButtons[(current + 1) % kCategoryCount], LV_EVENT_CLICKED, nullptr);
}

void ShowMarkers(UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  SetVisible(gView.FirstMarkers[index], component.Available != 0);
  SetVisible(gView.SecondMarkers[index], component.DeviceError != 0);
}
