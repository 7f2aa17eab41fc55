#include "view/StatusRefresh.h"

#include "platform/LvglPort.h"
#include "resources/ComponentIntake.h"
#include "view/BoardView.h"
#include "view/CategoryFilter.h"
#include "view/ComponentPanel.h"

namespace {

// Sets of categories, one bit each: those under whose filter the refresh runs,
// and those that are polled. All others keep the status read at the start.
constexpr UINT32 kRefreshedFilters = 0x323;
constexpr UINT32 kPolledTypes = 0x322;
constexpr UINT32 kCategoryLimit = 10;

bool InSet(UINT32 category, UINT32 set) {
  return category < kCategoryLimit && (set >> category & 1) != 0;
}

}  // namespace

void RefreshStatusTimer(lv_timer_t *) {
  UINT32 filter = gView.CategoryFilter;
  if (!InSet(filter, kRefreshedFilters)) {
    return;
  }
  const lv_obj_t *focused = lv_group_get_focused(gLvglPort.Group);
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    UINT32 type = ComponentAt(i).Type;
    if (!InSet(type, kPolledTypes) || (filter != 0 && filter != type)) {
      continue;
    }
    RefreshComponentStatus(i);
    ShowMarkers(i);
    if (gView.Callouts[i] == focused) {
      FillComponentPanel(i);
    }
  }
}
