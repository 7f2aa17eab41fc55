/** @file
  The board view's state: its objects on the screen, one record a component.
**/

#pragma once

#include "app/base/Types.h"
#include "lvgl.h"
#include "view/Categories.h"

inline constexpr UINTN kMaxViewComponents = 100;
inline constexpr UINTN kNameSize = 20;
inline constexpr UINTN kCalloutTextSize = 40;

/// What stands on the screen for one component. Objects are built once and never deleted.
struct ComponentWidgets {
  lv_obj_t *Hotspot;
  lv_obj_t *Callout;
  lv_obj_t *Leader;
  /// Shown while the callout has the focus.
  lv_obj_t *FocusLeader;
  /// Shown while the component is available, or reports an error.
  lv_obj_t *FirstMarker;
  lv_obj_t *SecondMarker;
  lv_style_t DefaultStyle;
  lv_style_t FocusStyle;
  /// The name with its marks, and the callout's texts with coloured marks.
  CHAR8 Name[kNameSize];
  CHAR8 DefaultText[kCalloutTextSize];
  CHAR8 FocusText[kCalloutTextSize];
};

struct ViewState {
  lv_obj_t *CloseButton;
  lv_obj_t *FilterButtons[kCategoryCount];
  /// Created at their first use.
  lv_obj_t *Heading;
  lv_obj_t *InfoText;
  lv_obj_t *SideList;
  /// By component index; objects beyond the component count are NULL.
  ComponentWidgets Components[kMaxViewComponents];
  /// 0 for all, 254 for the special group, else the component type shown.
  UINT32 CategoryFilter;
};

extern ViewState gView;

/// Components that the view shows: the host's count, cut to the view's table.
UINTN ViewComponentCount();
