/** @file
  The periodic refresh of component status.
**/

#pragma once

#include "lvgl.h"

/// LVGL timer callback: asks again for the components whose state can change
/// while the view is up, and redraws their dots and the panel.
void RefreshStatusTimer(lv_timer_t *timer);
