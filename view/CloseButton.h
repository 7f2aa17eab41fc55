/** @file
  The button that leaves the view without a jump.
**/

#pragma once

#include "lvgl.h"

/// Leaves on a click; explains itself in the info text while it has the focus.
void CloseButtonHandler(lv_event_t *event);
