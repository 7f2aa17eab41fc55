/** @file
  The keyboard: firmware keys as LVGL keys.
**/

#pragma once

#include "app/base/Firmware.h"
#include "lvgl.h"

/// What a key does, given its LVGL key and the firmware's scan code; whether LVGL is told of it.
using KeyHandler = bool (*)(UINT32 key, UINT16 scanCode);

struct KeypadState {
  /// Called for each key; set before the keypad is started. NULL tells LVGL of every key.
  KeyHandler OnKey;
  /// Clear until 200 ms after the start: keys typed before are thrown away.
  bool KeysArmed;
  /// LVGL keeps a reference to it for the whole run.
  lv_indev_drv_t Driver;
};

extern KeypadState gKeypad;

/// Registers the keyboard with LVGL, in an input group.
void StartKeypad(lv_group_t *group);

/// LVGL's read callback: one key a call.
void KeypadRead(lv_indev_drv_t *driver, lv_indev_data_t *data);

/// The LVGL key of a firmware key; the character itself when it has none.
[[nodiscard]] UINT32 TranslateEfiKey(EFI_INPUT_KEY key);
