#include "view/CloseButton.h"

#include "app/base/HostClient.h"
#include "app/base/LocalizedStrings.h"
#include "app/base/Run.h"
#include "view/FixedLook.h"
#include "view/InfoPanel.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

struct CloseButtonState {
  lv_color_t FocusColor;
  lv_style_t DefaultStyle;
  lv_style_t KeyFocusStyle;
};
CloseButtonState gCloseButton;

void InitializeStyles() {
  lv_style_t *normal = &gCloseButton.DefaultStyle;
  lv_style_init(normal);
  lv_style_set_radius(normal, kCloseRadius);
  lv_style_set_bg_opa(normal, LV_OPA_TRANSP);
  lv_style_set_text_color(normal, lv_color_hex(kCloseColor));
  lv_style_set_border_color(normal, lv_color_hex(kCloseColor));
  lv_style_set_border_opa(normal, kBorderOpacity);
  lv_style_set_border_width(normal, kCloseBorderWidth);
  lv_style_set_text_font(normal, FontOf(Look().CalloutFont));

  lv_style_t *focused = &gCloseButton.KeyFocusStyle;
  lv_style_init(focused);
  lv_style_set_radius(focused, kCloseRadius);
  lv_style_set_bg_opa(focused, LV_OPA_COVER);
  lv_style_set_bg_color(focused, gCloseButton.FocusColor);
  lv_style_set_text_color(focused, lv_color_hex(kCloseFocusTextColor));
  lv_style_set_text_font(focused, FontOf(Look().CloseFocusFont));
}

}  // namespace

void InitializeCloseFocusColor() {
  gCloseButton.FocusColor = ColorOf(gHost.SharedState->ViewColorText);
}

void BuildCloseButtonAndInfoText() {
  InitializeStyles();
  lv_obj_t *button = lv_btn_create(Screen());
  RemoveThemeStyles(button);
  lv_obj_add_style(button, &gCloseButton.DefaultStyle, kMainPart);
  lv_obj_add_style(button, &gCloseButton.KeyFocusStyle, LV_STATE_FOCUS_KEY);
  lv_obj_add_event_cb(button, CloseButtonHandler, LV_EVENT_ALL, nullptr);
  lv_obj_add_flag(button, LV_OBJ_FLAG_CLICK_FOCUSABLE);
  lv_obj_set_pos(button, Pixels(gGeometry.ViewWidth - SideMargin() - ScaledX(kCloseWidth)),
                 Pixels(PictureTop() * 0.5 + kCloseTopGap));
  lv_obj_t *label = lv_label_create(button);
  lv_label_set_text(label, "X");
  lv_obj_align(label, LV_ALIGN_CENTER, 0, 0);
  lv_obj_set_size(button, Pixels(ScaledX(kCloseWidth)), Pixels(ScaledY(kCloseHeight)));
  gView.CloseButton = button;
  SetInfoText(LocalizedText(TextId::CloseHint));
}

void CloseButtonHandler(lv_event_t *event) {
  switch (lv_event_get_code(event)) {
    case LV_EVENT_CLICKED:
      gRun.ExitRequested = true;
      break;
    case LV_EVENT_FOCUSED:
      SetInfoText(LocalizedText(TextId::CloseHint));
      break;
    case LV_EVENT_DEFOCUSED:
      SetInfoText(" ");
      break;
    default:
      break;
  }
}
