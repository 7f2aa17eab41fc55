#include "app/Input.h"

#include "app/base/Firmware.h"
#include "app/base/Run.h"
#include "capture/MessageBox.h"
#include "capture/Screenshot.h"
#include "lvgl.h"
#include "platform/Keypad.h"
#include "platform/Pointer.h"
#include "view/CategoryFilter.h"
#include "view/HoverFocus.h"

void ConnectInput() {
  gKeypad.OnKey = HandleKey;
  gPointer.OnMovement = UpdateHoverFocus;
}

bool HandleKey(UINT32 key, UINT16 scanCode) {
  if (gMessageBox.ModalMessageBoxOpen) {
    return HandleMessageBoxKey(key);
  }
  if (key == LV_KEY_ESC) {
    gRun.ExitRequested = true;
  } else if (scanCode == SCAN_INSERT) {
    SelectNextCategory();
  } else if (scanCode == SCAN_F12) {
    // Its outcome is told in a message box; a screen that cannot be copied, to the log alone.
    (void)F12ScreenShots();
  }
  return true;
}

void UpdateHoverFocus(UINT16 x, UINT16 y, bool) {
  if (!gMessageBox.ModalMessageBoxOpen) {
    FocusComponentAt(x, y);
  }
}
