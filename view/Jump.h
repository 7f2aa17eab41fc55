/** @file
  From a callout to the component's setup option.
**/

#pragma once

#include "lvgl.h"

/// Handler of the callouts; the user data is the address of the component's
/// index. A click hands the component over and ends the view; focus highlights
/// the component and shows its panel.
void CalloutHandler(lv_event_t *event);
