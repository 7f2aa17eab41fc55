/** @file
  The category filter: which components the view shows.
**/

#pragma once

#include "app/Firmware.h"
#include "lvgl.h"
#include "view/BoardView.h"

/// A filter button.
struct Category {
  const CHAR8 *Caption;
  UINT32 Code;
};

/// In button order. The buttons' handler keeps pointers to the codes.
inline constexpr Category kCategories[kCategoryCount] = {
    {"ALL", 0},           {"USB", OBV_TYPE_USB},   {"SATA", OBV_TYPE_SATA},
    {"M.2", OBV_TYPE_M2}, {"PCIE", OBV_TYPE_PCIE}, {"FAN", OBV_TYPE_FAN},
};

/// The filter value that shows the components of the special group.
inline constexpr UINT32 kSpecialGroupFilter = 254;

/// Handler of the filter buttons; the user data is the address of a code.
void CategoryFilterHandler(lv_event_t *event);

/// Clicks the button after that of the current filter; after the last comes
/// the first.
void SelectNextCategory();

/// Shows the status dots that the component's state calls for.
void ShowMarkers(UINTN index);
