#include "view/Leaders.h"

#include "resources/ComponentIntake.h"
#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

static_assert(sizeof(OBV_POINT) == sizeof(lv_point_t) &&
                  OFFSET_OF(OBV_POINT, Y) == OFFSET_OF(lv_point_t, y),
              "LVGL draws the host's points where they are");

namespace {

lv_obj_t *BuildLeader(const OBV_COMPONENT &component, const CHAR8 *colorText) {
  lv_obj_t *line = lv_line_create(Screen());
  UINT16 points = MIN(component.LeaderPointCount, OBV_LEADER_POINT_CAPACITY);
  lv_line_set_points(line, reinterpret_cast<const lv_point_t *>(component.LeaderPoints), points);
  lv_obj_set_style_line_width(line, kLeaderWidth, kMainPart);
  lv_obj_set_style_line_color(line, ColorOf(colorText), kMainPart);
  lv_obj_add_flag(line, LV_OBJ_FLAG_HIDDEN);
  return line;
}

}  // namespace

void BuildLeaderLines() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    gView.Components[i].Leader = BuildLeader(ComponentAt(i), Look().LeaderColor);
  }
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    gView.Components[i].FocusLeader = BuildLeader(ComponentAt(i), Look().FocusLeaderColor);
  }
}
