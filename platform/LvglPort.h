/** @file
  LVGL on the firmware: memory, display, input group and fonts.
**/

#pragma once

#include "app/base/Firmware.h"
#include "lvgl.h"

/// LVGL keeps references to these for the whole run.
struct LvglPortState {
  lv_disp_draw_buf_t DrawBuffer;
  lv_disp_drv_t DisplayDriver;
  /// The input group of keypad and hover focus.
  lv_group_t *Group;
};

extern LvglPortState gLvglPort;

/// Starts LVGL on the pool, registers display and input devices and loads the
/// fonts. Called once, inside RunGuardedFromLvgl, in the view's display mode.
void InitializeLvglPort();

/// LVGL's flush callback: one transfer to the output in use, completed before
/// it returns. Nothing is transferred while there is no output.
void DisplayFlush(lv_disp_drv_t *driver, const lv_area_t *area, lv_color_t *pixels);
