/** @file
  The category filter: which components the view shows.
**/

#pragma once

#include "app/base/Types.h"
#include "lvgl.h"

/// Handler of the filter buttons; the user data is the address of a category's code.
void CategoryFilterHandler(lv_event_t *event);

/// Clicks the filter button of the category; false when none carries it.
bool ClickCategoryButton(UINT32 category);

/// Filters the callouts for a category that no button carries, hides all dots, and shows no button
/// as pressed.
void ShowOnlyCategory(UINT32 category);

/// Clicks the button after that of the current filter; after the last comes
/// the first.
void SelectNextCategory();
