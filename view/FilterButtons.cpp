#include "view/FilterButtons.h"

#include "view/BoardView.h"
#include "view/CategoryFilter.h"
#include "view/Layout.h"
#include "view/Look.h"

namespace {

constexpr lv_coord_t kSelectedRadius = 8;

struct FilterStyleState {
  lv_style_t Default;
  lv_style_t Active;  ///< With the focus.
  lv_style_t Selected;
};
FilterStyleState gFilterStyles;

void InitializeStyle(lv_style_t *style, const OBV_FILTER_BUTTON_LOOK &look) {
  InitializeButtonStyle(style, {look.TextColor, look.BackgroundColor, look.BorderColor,
                                look.BorderWidth, look.CornerRadius, FontOf(look.Font)});
}

/// Deliberately made of both others: the default border and font, and the
/// active background colour as the text's colour.
void InitializeSelectedStyle() {
  lv_style_t *style = &gFilterStyles.Selected;
  lv_style_init(style);
  lv_style_set_radius(style, kSelectedRadius);
  lv_style_set_bg_opa(style, LV_OPA_TRANSP);
  SetBorder(style, Look().Filter.BorderColor, Look().Filter.BorderWidth);
  lv_style_set_text_color(style, ColorOf(Look().FocusFilter.BackgroundColor));
  lv_style_set_text_font(style, FontOf(Look().Filter.Font));
}

void AddFilterStyles(lv_obj_t *button) {
  lv_obj_add_style(button, &gFilterStyles.Default, kMainPart);
  lv_obj_add_style(button, &gFilterStyles.Active, LV_STATE_FOCUS_KEY);
  lv_obj_add_style(button, &gFilterStyles.Active, LV_STATE_FOCUSED);
}

void RemoveFilterStyles(lv_obj_t *button) {
  lv_obj_remove_style(button, &gFilterStyles.Selected, kMainPart);
  lv_obj_remove_style(button, &gFilterStyles.Default, kMainPart);
  lv_obj_remove_style(button, &gFilterStyles.Active, LV_STATE_FOCUS_KEY);
  lv_obj_remove_style(button, &gFilterStyles.Active, LV_STATE_FOCUSED);
}

void ReplaceDefaultBySelected(lv_obj_t *button) {
  lv_obj_remove_style(button, &gFilterStyles.Default, kMainPart);
  lv_obj_add_style(button, &gFilterStyles.Selected, kMainPart);
}

lv_obj_t *BuildFilterButton(UINTN row) {
  lv_obj_t *button = lv_btn_create(Screen());
  RemoveThemeStyles(button);
  AddFilterStyles(button);
  lv_obj_add_event_cb(button, CategoryFilterHandler, LV_EVENT_ALL,
                      const_cast<UINT32 *>(&kCategories[row].Code));
  lv_obj_add_flag(button, LV_OBJ_FLAG_CLICKABLE);
  lv_obj_add_flag(button, LV_OBJ_FLAG_CLICK_FOCUSABLE);
  lv_obj_set_pos(button, Pixels(FilterButtonLeft()),
                 Pixels(FirstFilterButtonY() + 30 * gApp.ScaleY * static_cast<double>(row)));
  lv_obj_set_size(button, Pixels(FilterButtonWidth()), Pixels(25 * gApp.ScaleY));
  lv_obj_t *label = lv_label_create(button);
  lv_label_set_text(label, kCategories[row].Caption);
  lv_obj_align(label, LV_ALIGN_CENTER, 0, 0);
  return button;
}

}  // namespace

void InitializeFilterStyles() {
  InitializeStyle(&gFilterStyles.Default, Look().Filter);
  InitializeStyle(&gFilterStyles.Active, Look().FocusFilter);
  InitializeSelectedStyle();
}

void BuildFilterButtons() {
  for (UINTN row = 0; row < kCategoryCount; ++row) {
    gView.FilterButtons[row] = BuildFilterButton(row);
  }
  ReplaceDefaultBySelected(gView.FilterButtons[0]);
}

void MarkSelectedFilterButton(lv_obj_t *selected) {
  for (lv_obj_t *button : gView.FilterButtons) {
    RemoveFilterStyles(button);
    AddFilterStyles(button);
  }
  ReplaceDefaultBySelected(selected);
}
