#include "platform/Keypad.h"

#include "app/HostClient.h"
#include "app/Lifecycle.h"
#include "capture/Screenshot.h"
#include "platform/LvglPort.h"
#include "platform/ModalBox.h"
#include "view/CategoryFilter.h"

KeypadState gKeypad;

namespace {

constexpr UINT64 kArmingTime = 200;  // ms

struct KeyTranslation {
  UINT16 ScanCode;
  UINT32 LvglKey;
};

constexpr KeyTranslation kKeyTable[] = {
    {SCAN_UP, LV_KEY_UP},      {SCAN_DOWN, LV_KEY_DOWN},    {SCAN_RIGHT, LV_KEY_RIGHT},
    {SCAN_LEFT, LV_KEY_LEFT},  {SCAN_HOME, LV_KEY_HOME},    {SCAN_END, LV_KEY_END},
    {SCAN_DELETE, LV_KEY_DEL}, {SCAN_PAGE_UP, LV_KEY_PREV}, {SCAN_PAGE_DOWN, LV_KEY_NEXT},
    {SCAN_ESC, LV_KEY_ESC},
};

void ReportPressed(UINT32 key, lv_indev_data_t *data) {
  data->key = key;
  data->state = LV_INDEV_STATE_PRESSED;
}

void HandleViewKey(UINT32 key, UINT16 scanCode, lv_indev_data_t *data) {
  ReportPressed(key, data);
  if (key == LV_KEY_ESC) {
    gApp.ExitRequested = 1;
  } else if (scanCode == SCAN_INSERT) {
    SelectNextCategory();
  } else if (scanCode == SCAN_F12) {
    // Reported to the user in a message box, to the log by the operation.
    (void)F12ScreenShots();
  }
}

void HandleBoxKey(UINT32 key, lv_indev_data_t *data) {
  lv_obj_t *buttons = lv_msgbox_get_btns(gModalBox.Box);
  UINT16 selected = lv_btnmatrix_get_selected_btn(buttons);
  switch (key) {
    case LV_KEY_ESC:
      gModalBox.ModalMessageBoxOpen = 0;
      lv_msgbox_close(gModalBox.Box);
      break;
    case LV_KEY_DOWN:
    case LV_KEY_RIGHT:
    case LV_KEY_NEXT:
      // From "none" this wraps to the first; LVGL ignores one past the last.
      lv_btnmatrix_set_selected_btn(buttons, static_cast<UINT16>(selected + 1));
      break;
    case LV_KEY_PREV:
    case LV_KEY_UP:
    case LV_KEY_LEFT:
      if (selected != 0) {
        lv_btnmatrix_set_selected_btn(buttons, static_cast<UINT16>(selected - 1));
      }
      break;
    default:
      ReportPressed(key, data);
      break;
  }
}

}  // namespace

void StartKeypad() {
  lv_indev_drv_init(&gLvglPort.KeypadDriver);
  gLvglPort.KeypadDriver.type = LV_INDEV_TYPE_KEYPAD;
  gLvglPort.KeypadDriver.read_cb = KeypadRead;
  lv_indev_t *device = lv_indev_drv_register(&gLvglPort.KeypadDriver);
  lv_indev_set_group(device, gLvglPort.Group);
}

void KeypadRead(lv_indev_drv_t *, lv_indev_data_t *data) {
  data->state = LV_INDEV_STATE_RELEASED;
  EFI_INPUT_KEY pressed = {};
  EFI_STATUS status = gST->ConIn->ReadKeyStroke(gST->ConIn, &pressed);
  if (gKeypad.KeysArmed == 0) {
    // The key of this call is dropped, too.
    gKeypad.KeysArmed = gApp.LastTime - gApp.StartTime > kArmingTime;
    return;
  }
  if (EFI_ERROR(status)) {
    return;
  }
  UINT32 key = TranslateEfiKey(pressed);
  if (gModalBox.ModalMessageBoxOpen == 0) {
    HandleViewKey(key, pressed.ScanCode, data);
  } else {
    HandleBoxKey(key, data);
  }
}

UINT32 TranslateEfiKey(EFI_INPUT_KEY key) {
  for (const KeyTranslation &row : kKeyTable) {
    if (row.ScanCode == key.ScanCode) {
      return row.LvglKey;
    }
  }
  if (key.ScanCode == SCAN_NULL && key.UnicodeChar == CHAR_CARRIAGE_RETURN) {
    return LV_KEY_ENTER;
  }
  return key.UnicodeChar;
}
