#include "view/Callouts.h"

#include "app/HostClient.h"
#include "app/LowBytes.h"
#include "app/MemoryPool.h"
#include "platform/ColorText.h"
#include "resources/ComponentIntake.h"
#include "view/BoardView.h"
#include "view/CalloutPlacement.h"
#include "view/Jump.h"
#include "view/Layout.h"
#include "view/Look.h"

namespace {

constexpr UINTN kRecolorCommandSize = 20;
constexpr UINT16 kLabelMargin = 4;

struct CalloutState {
  lv_style_t DefaultStyles[kMaxViewComponents];
  lv_style_t FocusStyles[kMaxViewComponents];
  /// 0, 1, 2, ...: the callouts' handlers keep pointers into it.
  UINT32 *Indices;
};
CalloutState gCallouts;

/// For a record whose host forgot its style.
constexpr OBV_COMPONENT_STYLE kNoStyle = {};

const OBV_COMPONENT_STYLE &StyleOf(const OBV_COMPONENT_STYLE *style) {
  return style != nullptr ? *style : kNoStyle;
}

void InitializeStyle(lv_style_t *style, const OBV_COMPONENT_STYLE &look) {
  InitializeButtonStyle(style, {look.TextColor, look.BackgroundColor, look.BorderColor,
                                look.BorderWidth, look.CornerRadius, FontOf(Look().CalloutFont)});
}

void AppendRecolorCommand(CHAR8 *text, const CHAR8 *colorText) {
  CHAR8 command[kRecolorCommandSize];
  AsciiSPrint(command, sizeof(command), "#%.6x ", ParseColorText(colorText));
  (void)AsciiStrCatS(text, kCalloutTextSize, command);
}

/// Marks that do not fit the name are left out whole.
void AppendMark(UINTN index, const CHAR8 *mark) {
  (void)AsciiStrCatS(gView.Names[index], kNameSize, mark);
  (void)AsciiStrCatS(gView.DefaultTexts[index], kCalloutTextSize, mark);
  (void)AsciiStrCatS(gView.FocusTexts[index], kCalloutTextSize, mark);
}

void AppendMarks(UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  AppendRecolorCommand(gView.DefaultTexts[index], StyleOf(component.DefaultStyle).MarkColor);
  AppendRecolorCommand(gView.FocusTexts[index], StyleOf(component.FocusStyle).MarkColor);
  if (component.NotReady != 0) {
    AppendMark(index, " *");
  }
  if (component.SearchTokenId == 0) {
    AppendMark(index, " **");
  }
  (void)AsciiStrCatS(gView.DefaultTexts[index], kCalloutTextSize, "#");
  (void)AsciiStrCatS(gView.FocusTexts[index], kCalloutTextSize, "#");
}

void ComposeTexts(UINTN index) {
  const OBV_COMPONENT &component = ComponentAt(index);
  // A name that is too long is refused whole and leaves the callout empty.
  CopyLowBytes(component.Name, gView.Names[index], kNameSize);
  (void)AsciiStrCpyS(gView.DefaultTexts[index], kCalloutTextSize, gView.Names[index]);
  (void)AsciiStrCpyS(gView.FocusTexts[index], kCalloutTextSize, gView.Names[index]);
  if (HasMarks(component)) {
    AppendMarks(index);
  }
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
  if (gCallouts.Indices != nullptr) {
    gCallouts.Indices[index] = static_cast<UINT32>(index);
  }
  lv_obj_t *callout = lv_btn_create(Screen());
  gView.Callouts[index] = callout;
  RemoveThemeStyles(callout);
  lv_obj_add_style(callout, &gCallouts.DefaultStyles[index], kMainPart);
  lv_obj_add_style(callout, &gCallouts.FocusStyles[index], LV_STATE_FOCUSED);
  lv_obj_add_flag(callout, LV_OBJ_FLAG_CLICK_FOCUSABLE);
  lv_obj_add_flag(callout, LV_OBJ_FLAG_CLICKABLE);
  lv_obj_set_pos(callout, component.CalloutX, component.CalloutY);
  lv_obj_set_size(callout, static_cast<lv_coord_t>(component.CalloutWidth),
                  static_cast<lv_coord_t>(component.CalloutHeight));

  ComposeTexts(index);
  lv_obj_t *label = lv_label_create(callout);
  lv_label_set_recolor(label, true);
  lv_label_set_text(label, gView.DefaultTexts[index]);
  AlignLabel(label, component.TextAlign);
  ConnectHandler(callout, index);
}

void PlaceCallout(UINTN index) {
  OBV_COMPONENT &component = ComponentAt(index);
  lv_obj_t *callout = gView.Callouts[index];
  lv_obj_t *label = lv_obj_get_child(callout, 0);
  // Deliberately replaces the record's alignment.
  lv_obj_set_align(label, LV_ALIGN_CENTER);
  lv_obj_update_layout(label);
  component.CalloutWidth = static_cast<UINT16>(lv_obj_get_width(label) + kLabelMargin);
  component.CalloutHeight = static_cast<UINT16>(lv_obj_get_height(label) + kLabelMargin);
  lv_obj_set_size(callout, static_cast<lv_coord_t>(component.CalloutWidth),
                  static_cast<lv_coord_t>(component.CalloutHeight));

  UINT16 points = MIN(component.LeaderPointCount, OBV_LEADER_POINT_CAPACITY);
  if (points > 0) {
    OBV_POINT corner = {component.CalloutX, component.CalloutY};
    corner = PlaceAtAnchor(component.CalloutSide, component.LeaderPoints[points - 1],
                           component.CalloutWidth, component.CalloutHeight, corner);
    component.CalloutX = corner.X;
    component.CalloutY = corner.Y;
  }
  lv_obj_set_pos(callout, component.CalloutX, component.CalloutY);
}

}  // namespace

void InitializeCalloutStyles() {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    InitializeStyle(&gCallouts.DefaultStyles[i], StyleOf(ComponentAt(i).DefaultStyle));
    InitializeStyle(&gCallouts.FocusStyles[i], StyleOf(ComponentAt(i).FocusStyle));
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
