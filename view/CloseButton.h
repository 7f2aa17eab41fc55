/** @file
  The button that leaves the view without a jump.
**/

#pragma once

#include "lvgl.h"

/// Reads the background that the close button shows with keyboard focus.
void InitializeCloseFocusColor();

/// The close button and the info text that explains it.
void BuildCloseButtonAndInfoText();

/// Leaves on a click; explains itself in the info text while it has the focus.
void CloseButtonHandler(lv_event_t *event);
