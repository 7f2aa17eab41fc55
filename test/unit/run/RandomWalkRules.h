/** @file
  What must hold in the board view at any moment between two main-loop turns.
**/

#pragma once

#include "test/unit/stage/ViewStage.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "capture/MessageBox.h"

/// Each rule answers an empty text, or says what is wrong.
namespace rules {

inline std::string About(size_t component, const char *what) {
  return "component " + std::to_string(component) + ": " + what;
}

/// The focused callout alone has its hotspot and its second leader line shown.
inline std::string Highlights(const std::vector<OBV_COMPONENT> &components) {
  const lv_obj_t *focused = lv_group_get_focused(lv_group_get_default());
  for (size_t i = 0; i < components.size(); i++) {
    bool expected = gView.Components[i].Callout == focused && components[i].NotSelectable == 0;
    if (IsHidden(gView.Components[i].Hotspot) == expected) {
      return About(i, expected ? "focused without a hotspot" : "hotspot without the focus");
    }
    if (IsHidden(gView.Components[i].FocusLeader) == expected) {
      return About(i, "the second leader line differs from the hotspot");
    }
  }
  return "";
}

/// The filter hides callouts, first leader lines and dots of all others.
inline std::string Filter(const std::vector<OBV_COMPONENT> &components) {
  for (size_t i = 0; i < components.size(); i++) {
    const OBV_COMPONENT &component = components[i];
    bool passes = gView.CategoryFilter == 0 || gView.CategoryFilter == component.Type;
    bool dots = passes && component.Type != OBV_TYPE_UNCATEGORISED;
    if (IsHidden(gView.Components[i].Callout) == passes ||
        IsHidden(gView.Components[i].Leader) == passes) {
      return About(i, passes ? "hidden by a foreign filter" : "shown though the filter hides it");
    }
    if (IsHidden(gView.Components[i].FirstMarker) == (dots && component.Available != 0)) {
      return About(i, "wrong first dot");
    }
    if (IsHidden(gView.Components[i].SecondMarker) == (dots && component.DeviceError != 0)) {
      return About(i, "wrong second dot");
    }
  }
  return "";
}

/// A box is there exactly while it is said to be open, and then it has the focus.
inline std::string Box() {
  bool open = gMessageBox.ModalMessageBoxOpen;
  if (lv_obj_get_child_cnt(lv_layer_top()) != (open ? 1u : 0u)) {
    return open ? "the open box is not on the screen" : "a box stays behind";
  }
  if (open && lv_group_get_focused(lv_group_get_default()) != lv_msgbox_get_btns(gMessageBox.Box)) {
    return "the open box does not have the focus";
  }
  return "";
}

/// Whether the view takes a key for Esc. A character is an LVGL key as it stands, and 27 is LVGL's
/// Esc.
inline bool IsEsc(const EFI_INPUT_KEY &key) {
  constexpr CHAR16 kEscCharacter = 27;
  return key.ScanCode == SCAN_ESC ||
         (key.ScanCode == SCAN_NULL && key.UnicodeChar == kEscCharacter);
}

/// The output that the view must be drawn on after an arrival: the one in use while it can show
/// the view, else the last that can.
inline EFI_GRAPHICS_OUTPUT_PROTOCOL *OutputAfterArrival(
    const std::vector<fake::GraphicsOutput *> &outputs, EFI_GRAPHICS_OUTPUT_PROTOCOL *inUse) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *chosen = nullptr;
  for (fake::GraphicsOutput *output : outputs) {
    bool usable = std::any_of(
        output->Modes().begin(), output->Modes().end(), [](const fake::VideoMode &mode) {
          return mode.Width == gGeometry.ViewWidth && mode.Height == gGeometry.ViewHeight;
        });
    if (usable && output->Protocol() == inUse) {
      return inUse;
    }
    chosen = usable ? output->Protocol() : chosen;
  }
  return chosen;
}

}  // namespace rules
