#include "view/CategoryFilter.h"

#include "app/base/HostFormat.h"
#include "app/base/LocalizedStrings.h"
#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/ComponentPanel.h"
#include "view/FilterButtonLook.h"
#include "view/InfoPanel.h"
#include "view/Look.h"
#include "view/Markers.h"
#include "view/ViewState.h"

namespace {

constexpr UINTN kHintSize = 100;

void ShowCallout(UINTN index, bool visible) {
  SetVisible(gView.Components[index].Callout, visible);
  SetVisible(gView.Components[index].Leader, visible);
}

void FilterCallouts() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    ShowCallout(i, FilterShowsCallout(gView.CategoryFilter, ComponentAt(i)));
  }
}

void FilterMarkers() {
  const lv_obj_t *focused = lv_group_get_focused(gLvglPort.Group);
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    if (!FilterShowsMarkers(gView.CategoryFilter, ComponentAt(i))) {
      HideMarkers(i);
      continue;
    }
    ShowMarkers(i);
    if (gView.Components[i].Callout == focused) {
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

bool ClickCategoryButton(UINT32 category) {
  for (UINTN i = 0; i < kCategoryCount; ++i) {
    if (kCategories[i].Code == category) {
      lv_event_send(gView.FilterButtons[i], LV_EVENT_CLICKED, nullptr);
      return true;
    }
  }
  return false;
}

void ShowOnlyCategory(UINT32 category) {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    ShowCallout(i, ComponentAt(i).Type == category);
    HideMarkers(i);
  }
  MarkSelectedFilterButton(nullptr);
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
