/** @file
  The board view: its objects on the screen and what other rooms need of them.
**/

#pragma once

#include "app/Firmware.h"
#include "lvgl.h"

inline constexpr UINTN kMaxViewComponents = 100;
inline constexpr UINTN kCategoryCount = 6;
inline constexpr UINTN kNameSize = 20;
inline constexpr UINTN kCalloutTextSize = 40;

/// The view's objects are built once and never deleted. Tables are indexed by
/// component; entries beyond the component count are NULL.
struct BoardViewState {
  lv_obj_t *CloseButton;
  lv_obj_t *FilterButtons[kCategoryCount];

  /// Created at their first use.
  lv_obj_t *Heading;
  lv_obj_t *InfoText;
  lv_obj_t *SideList;

  lv_obj_t *Hotspots[kMaxViewComponents];
  lv_obj_t *Callouts[kMaxViewComponents];
  lv_obj_t *Leaders[kMaxViewComponents];
  /// Shown while the callout has the focus.
  lv_obj_t *FocusLeaders[kMaxViewComponents];
  /// Shown while the component is available, or reports an error.
  lv_obj_t *FirstMarkers[kMaxViewComponents];
  lv_obj_t *SecondMarkers[kMaxViewComponents];

  /// The name with its marks, and the callout's texts with coloured marks.
  CHAR8 Names[kMaxViewComponents][kNameSize];
  CHAR8 DefaultTexts[kMaxViewComponents][kCalloutTextSize];
  CHAR8 FocusTexts[kMaxViewComponents][kCalloutTextSize];

  /// 0 for all, 254 for the special group, else the component type shown.
  UINT32 CategoryFilter;
};

extern BoardViewState gView;

/// Builds the whole view on the active screen. Called once, inside
/// RunGuardedFromLvgl, after the components are there.
void BuildBoardView();

/// Components that the view shows: the host's count, cut to the view's tables.
UINTN ViewComponentCount();

/// Whether the component's callout carries marks: it is not ready, or it has
/// no setup option.
bool HasMarks(const OBV_COMPONENT &component);
