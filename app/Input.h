/** @file
  What keys and the pointer's movements do.
**/

#pragma once

#include "app/base/Types.h"

/// Has the input drivers call the two functions below. To be called before they are started.
void ConnectInput();

/// Esc leaves, Insert steps the category filter, F12 takes a screenshot; an open message box gets
/// the keys instead. Takes an LVGL key and the firmware's scan code; whether LVGL is told, too.
bool HandleKey(UINT32 key, UINT16 scanCode);

/// Focuses the callout of the first component under a view pixel, unless a message box is open.
/// The button plays no part.
void UpdateHoverFocus(UINT16 x, UINT16 y, bool pressed);
