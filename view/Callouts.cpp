#include "view/Callouts.h"

#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "resources/ComponentIntake.h"
#include "view/CalloutPlacement.h"
#include "view/CalloutTexts.h"
#include "view/Jump.h"
#include "view/Layout.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

struct CalloutState {
  /// 0, 1, 2, ...: the callouts' handlers keep pointers into it.
  UINT32 *Indices;
};
CalloutState gCallouts;

void InitializeStyle(lv_style_t *style, const OBV_COMPONENT_STYLE &look) {
  InitializeButtonStyle(style, {.TextColor = look.TextColor,
                                .BackgroundColor = look.BackgroundColor,
                                .BorderColor = look.BorderColor,
                                .BorderWidth = look.BorderWidth,
                                .CornerRadius = look.CornerRadius,
                                .Font = FontOf(Look().CalloutFont)});
}

void AlignLabel(lv_obj_t *label, INT32 textAlign) {
  switch (textAlign) {
    case OBV_TEXT_LEFT:
      lv_obj_set_align(label, LV_ALIGN_LEFT_MID);
      break;
    case OBV_TEXT_CENTER:
      lv_obj_set_align(label, LV_ALIGN_CENTER);
      break;
    case OBV_TEXT_RIGHT:
      lv_obj_set_align(label, LV_ALIGN_RIGHT_MID);
      break;
    default:
      LogError("error: Unknown alignment\n");
      break;
  }
}

void ConnectHandler(lv_obj_t *callout, UINTN index) {
  if (ComponentAt(index).NotSelectable != 0) {
    lv_obj_add_state(callout, LV_STATE_DISABLED);
  } else if (gCallouts.Indices != nullptr) {
    lv_obj_add_event_cb(callout, CalloutHandler, LV_EVENT_ALL, &gCallouts.Indices[index]);
  }
}

void BuildCallout(UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  ComponentWidgets &widgets = gView.Components[index];
  if (gCallouts.Indices != nullptr) {
    gCallouts.Indices[index] = static_cast<UINT32>(index);
  }
  lv_obj_t *callout = lv_btn_create(Screen());
  widgets.Callout = callout;
  RemoveThemeStyles(callout);
  lv_obj_add_style(callout, &widgets.DefaultStyle, kMainPart);
  lv_obj_add_style(callout, &widgets.FocusStyle, LV_STATE_FOCUSED);
  lv_obj_add_flag(callout, LV_OBJ_FLAG_CLICK_FOCUSABLE);
  lv_obj_add_flag(callout, LV_OBJ_FLAG_CLICKABLE);
  lv_obj_set_pos(callout, component.CalloutX, component.CalloutY);
  lv_obj_set_size(callout, static_cast<lv_coord_t>(component.CalloutWidth),
                  static_cast<lv_coord_t>(component.CalloutHeight));

  ComposeCalloutTexts(index);
  lv_obj_t *label = lv_label_create(callout);
  lv_label_set_recolor(label, true);
  lv_label_set_text(label, widgets.DefaultText);
  AlignLabel(label, component.TextAlign);
  ConnectHandler(callout, index);
}

void PlaceCallout(UINTN index) {
  OBV_COMPONENT &component = ComponentAt(index);
  lv_obj_t *callout = gView.Components[index].Callout;
  lv_obj_t *label = lv_obj_get_child(callout, 0);
  // Deliberately replaces the record's alignment.
  lv_obj_set_align(label, LV_ALIGN_CENTER);
  lv_obj_update_layout(label);
  FitCallout(&component, lv_obj_get_width(label), lv_obj_get_height(label));
  lv_obj_set_size(callout, static_cast<lv_coord_t>(component.CalloutWidth),
                  static_cast<lv_coord_t>(component.CalloutHeight));
  lv_obj_set_pos(callout, component.CalloutX, component.CalloutY);
}

}  // namespace

void InitializeCalloutStyles() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    InitializeStyle(&gView.Components[i].DefaultStyle, CalloutStyleOf(ComponentAt(i).DefaultStyle));
    InitializeStyle(&gView.Components[i].FocusStyle, CalloutStyleOf(ComponentAt(i).FocusStyle));
  }
}

void BuildCallouts() {
  UINTN count = ViewComponentCount();
  gCallouts.Indices = static_cast<UINT32 *>(malloc(count * sizeof(UINT32)));
  for (UINTN i = 0; i < count; ++i) {
    BuildCallout(i);
  }
  for (UINTN i = 0; i < count; ++i) {
    PlaceCallout(i);
  }
}
