/** @file
  The keyboard: LVGL keys, the application's own keys, and the message box's.
**/

#pragma once

#include "app/Firmware.h"
#include "lvgl.h"

struct KeypadState {
  /// Clear until 200 ms after the start: keys typed before are thrown away.
  UINT8 KeysArmed;
};

extern KeypadState gKeypad;

/// Registers the keyboard with LVGL, in the port's input group.
void StartKeypad();

/// LVGL's read callback. Esc leaves, Insert steps the category filter, F12
/// takes a screenshot; an open message box gets the keys first.
void KeypadRead(lv_indev_drv_t *driver, lv_indev_data_t *data);

/// The LVGL key of a firmware key; the character itself when it has none.
[[nodiscard]] UINT32 TranslateEfiKey(EFI_INPUT_KEY key);
