/** @file
  The one message box that may stand over the view and takes the keys.
**/

#pragma once

#include "app/Firmware.h"
#include "lvgl.h"

struct ModalBoxState {
  /// Set while the box is open: keys go to it and hover focus is off.
  UINT8 ModalMessageBoxOpen;
  lv_obj_t *Box;
  /// What had the focus before the box opened.
  lv_obj_t *PreviousFocus;
};

extern ModalBoxState gModalBox;
