#include "view/StatusRefresh.h"

#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/ComponentPanel.h"
#include "view/Markers.h"
#include "view/ViewState.h"

void RefreshStatusTimer(lv_timer_t *) {
  UINT32 filter = gView.CategoryFilter;
  if (!IsRefreshedFilter(filter)) {
    return;
  }
  const lv_obj_t *focused = lv_group_get_focused(gLvglPort.Group);
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    if (!IsPolled(filter, ComponentAt(i))) {
      continue;
    }
    RefreshComponentStatus(i);
    ShowMarkers(i);
    if (gView.Components[i].Callout == focused) {
      FillComponentPanel(i);
    }
  }
}
