#include "view/FilterButtons.h"

#include "view/CategoryFilter.h"
#include "view/FilterButtonLook.h"
#include "view/FixedLook.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

lv_obj_t *BuildFilterButton(UINTN row) {
  lv_obj_t *button = lv_btn_create(Screen());
  RemoveThemeStyles(button);
  AddFilterStyles(button);
  lv_obj_add_event_cb(button, CategoryFilterHandler, LV_EVENT_ALL,
                      const_cast<UINT32 *>(&kCategories[row].Code));
  lv_obj_add_flag(button, LV_OBJ_FLAG_CLICKABLE);
  lv_obj_add_flag(button, LV_OBJ_FLAG_CLICK_FOCUSABLE);
  lv_obj_set_pos(button, Pixels(FilterButtonLeft()),
                 Pixels(FirstFilterButtonY() + ScaledY(kFilterPitch) * static_cast<double>(row)));
  lv_obj_set_size(button, Pixels(FilterButtonWidth()), Pixels(ScaledY(kFilterHeight)));
  lv_obj_t *label = lv_label_create(button);
  lv_label_set_text(label, kCategories[row].Caption);
  lv_obj_align(label, LV_ALIGN_CENTER, 0, 0);
  return button;
}

}  // namespace

void BuildFilterButtons() {
  for (UINTN row = 0; row < kCategoryCount; ++row) {
    gView.FilterButtons[row] = BuildFilterButton(row);
  }
  MarkSelectedFilterButton(gView.FilterButtons[0]);
}
