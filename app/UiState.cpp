#include "app/UiState.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "lvgl.h"
#include "platform/LvglPort.h"
#include "platform/Pointer.h"
#include "resources/ComponentIntake.h"
#include "view/CategoryFilter.h"
#include "view/ViewState.h"

namespace {

// Encoding of OBV_SHARED_STATE.FocusIndex.
constexpr UINT16 kFocusNone = 0;
constexpr UINT16 kFocusFirstCallout = 1;
constexpr UINT16 kFocusCalloutEnd = 100;
constexpr UINT16 kFocusFirstButton = 101;

/// Names this place in the log.
constexpr UINT32 kReadSelectionLocation = 1552;

UINT16 EncodeFocus(const lv_obj_t *focused) {
  if (focused == nullptr) {
    return kFocusNone;
  }
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    if (gView.Components[i].Callout == focused) {
      return static_cast<UINT16>(i + kFocusFirstCallout);
    }
  }
  for (UINT16 i = 0; i < kCategoryCount; ++i) {
    if (gView.FilterButtons[i] == focused) {
      return static_cast<UINT16>(i + kFocusFirstButton);
    }
  }
  return kFocusNone;
}

/// The object of a saved focus; NULL when this view has no such object.
lv_obj_t *DecodeFocus(UINT16 focus) {
  if (focus == kFocusNone) {
    // The one object of the group that "none" can stand for: callouts and filter buttons have
    // numbers of their own, so what was saved comes back.
    return gView.CloseButton;
  }
  if (focus < kFocusCalloutEnd) {
    return gView.Components[focus - kFocusFirstCallout].Callout;
  }
  UINTN button = static_cast<UINTN>(focus) - kFocusFirstButton;
  return button < kCategoryCount ? gView.FilterButtons[button] : nullptr;
}

void FocusNamedComponent(const CHAR16 *name) {
  for (UINTN i = 0; i < ViewComponentCount(); ++i) {
    const OBV_COMPONENT &component = ComponentAt(i);
    if (FilterFinds(gView.CategoryFilter, component) && StrCmp(component.Name, name) == 0) {
      lv_group_focus_obj(gView.Components[i].Callout);
      return;
    }
  }
}

/// True when the setup keeps a selection of the expected form.
bool ReadSelection(VELT_SELECTION *selection) {
  VOID *interface = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&gVeltSetupEventHandlerProtocolGuid, nullptr, &interface);
  if (EFI_ERROR(status) || interface == nullptr) {
    LogInfo("LocateProtocol gVeltSetupEventHandlerProtocolGuid Status = %r\n", status);
    return false;
  }
  auto *handler = static_cast<VELT_SETUP_EVENT_HANDLER_PROTOCOL *>(interface);

  CHAR8 key[VELT_EVENT_KEY_SIZE] = VELT_SELECTION_KEY;
  UINT8 reserved[VELT_EVENT_KEY_SIZE] = {};
  UINT32 type = 0;
  UINT32 dataSize = 0;
  UINT8 data[VELT_EVENT_DATA_SIZE] = {};
  status = handler->GetEventData(key, reserved, &type, &dataSize, data);
  if (EFI_ERROR(status)) {
    LogInfo("%a %d %r\n", "ReStoreUIState", kReadSelectionLocation, status);
    return false;
  }
  (void)handler->EndEventData();
  if (type != VELT_SELECTION_TYPE || dataSize != VELT_SELECTION_DATA_SIZE) {
    return false;
  }
  CopyMem(selection, data, sizeof(*selection));
  return true;
}

void RestoreSelection(const VELT_SELECTION &selection) {
  gView.CategoryFilter = selection.Category;
  if (!ClickCategoryButton(selection.Category)) {
    ShowOnlyCategory(selection.Category);
  }
  // The record's name may fill its field; component names always end in theirs.
  CHAR16 name[ARRAY_SIZE(selection.ComponentName) + 1] = {};
  CopyMem(name, selection.ComponentName, sizeof(selection.ComponentName));
  if (name[0] != 0) {
    FocusNamedComponent(name);
  }
}

/// A view coordinate in the setup's screen.
UINT16 ToPrevious(UINT16 position, UINT16 previousSize, UINT16 viewSize) {
  return static_cast<UINT16>(static_cast<INT32>(position) * previousSize / viewSize);
}

}  // namespace

void SaveUiState() {
  OBV_SHARED_STATE *shared = gHost.SharedState;
  shared->FocusIndex = EncodeFocus(lv_group_get_focused(gLvglPort.Group));

  shared->SelectedCategory = kCategories[0].Code;
  for (const Category &category : kCategories) {
    if (category.Code == gView.CategoryFilter) {
      shared->SelectedCategory = gView.CategoryFilter;
    }
  }

  UINT16 x = 0;
  UINT16 y = 0;
  PointerGetPosition(&x, &y);
  shared->PointerX = ToPrevious(x, gGeometry.PreviousWidth, gGeometry.ViewWidth);
  shared->PointerY = ToPrevious(y, gGeometry.PreviousHeight, gGeometry.ViewHeight);
  shared->UiStateSaved = 1;
}

void ReStoreUIState() {
  ClickCategoryButton(gHost.SharedState->SelectedCategory);
  lv_group_focus_obj(DecodeFocus(gHost.SharedState->FocusIndex));
  VELT_SELECTION selection;
  if (ReadSelection(&selection)) {
    RestoreSelection(selection);
  }
}
