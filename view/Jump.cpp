#include "view/Jump.h"

#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "resources/ComponentIntake.h"
#include "view/CalloutTexts.h"
#include "view/ComponentPanel.h"
#include "view/InfoPanel.h"
#include "view/Look.h"
#include "view/ViewState.h"

namespace {

/// A component that is not ready, or reports an error, has its option still.
bool CanJump(const OBV_COMPONENT &component) {
  return component.SearchTokenId != 0 && component.NoMapping == 0;
}

void RequestJump(UINT32 index) {
  OBV_COMPONENT &component = ComponentAt(index);
  if (!CanJump(component)) {
    return;
  }
  OBV_SHARED_STATE *shared = gHost.SharedState;
  shared->JumpComponentType = component.Type;
  shared->JumpSearchTokenId = component.SearchTokenId;
  shared->JumpComponentIndex = static_cast<UINT16>(index);
  LogInfo("[OBV] Ready to jump: Name %S SearchTokenID 0x%X\n", component.Name,
          component.SearchTokenId);
  LogInfo("[OBV] Use VeltSetupEventHandler to jump, ExitApp = TRUE.\n");
  shared->JumpRequested = 1;
  gRun.ExitRequested = true;
}

void SetHighlighted(UINT32 index, bool highlighted) {
  SetVisible(gView.Components[index].Hotspot, highlighted);
  SetVisible(gView.Components[index].FocusLeader, highlighted);
}

/// Only texts with marks differ between the two states.
void SetCalloutText(lv_obj_t *callout, UINT32 index, const CHAR8 *text) {
  if (HasMarks(ComponentAt(index))) {
    lv_label_set_text(lv_obj_get_child(callout, 0), text);
  }
}

void EnterFocus(lv_obj_t *callout, UINT32 index) {
  lv_obj_add_state(callout, LV_STATE_FOCUSED);
  SetHighlighted(index, true);
  SetCalloutText(callout, index, gView.Components[index].FocusText);
  if (ComponentAt(index).Type != OBV_TYPE_UNCATEGORISED) {
    FillComponentPanel(index);
  }
}

/// The side list keeps its text until the next component fills it.
void LeaveFocus(lv_obj_t *callout, UINT32 index) {
  lv_obj_clear_state(callout, LV_STATE_FOCUSED);
  SetHighlighted(index, false);
  SetCalloutText(callout, index, gView.Components[index].DefaultText);
  SetInfoText(" ");
}

}  // namespace

void CalloutHandler(lv_event_t *event) {
  lv_obj_t *callout = lv_event_get_target(event);
  UINT32 index = *static_cast<const UINT32 *>(lv_event_get_user_data(event));
  switch (lv_event_get_code(event)) {
    case LV_EVENT_CLICKED:
      RequestJump(index);
      break;
    case LV_EVENT_FOCUSED:
      EnterFocus(callout, index);
      break;
    case LV_EVENT_DEFOCUSED:
      LeaveFocus(callout, index);
      break;
    default:
      break;
  }
}
