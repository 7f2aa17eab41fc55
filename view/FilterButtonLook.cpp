#include "view/FilterButtonLook.h"

#include "view/FixedLook.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

struct FilterStyleState {
  lv_style_t Default;
  lv_style_t Active;  ///< With the focus.
  lv_style_t Selected;
};
FilterStyleState gFilterStyles;

void InitializeStyle(lv_style_t *style, const OBV_FILTER_BUTTON_LOOK &look) {
  InitializeButtonStyle(style, {.TextColor = look.TextColor,
                                .BackgroundColor = look.BackgroundColor,
                                .BorderColor = look.BorderColor,
                                .BorderWidth = look.BorderWidth,
                                .CornerRadius = look.CornerRadius,
                                .Font = FontOf(look.Font)});
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

}  // namespace

void InitializeFilterStyles() {
  InitializeStyle(&gFilterStyles.Default, Look().Filter);
  InitializeStyle(&gFilterStyles.Active, Look().FocusFilter);
  InitializeSelectedStyle();
}

void AddFilterStyles(lv_obj_t *button) {
  lv_obj_add_style(button, &gFilterStyles.Default, kMainPart);
  lv_obj_add_style(button, &gFilterStyles.Active, LV_STATE_FOCUS_KEY);
  lv_obj_add_style(button, &gFilterStyles.Active, LV_STATE_FOCUSED);
}

void MarkSelectedFilterButton(lv_obj_t *selected) {
  for (lv_obj_t *button : gView.FilterButtons) {
    RemoveFilterStyles(button);
    AddFilterStyles(button);
  }
  if (selected != nullptr) {
    ReplaceDefaultBySelected(selected);
  }
}
