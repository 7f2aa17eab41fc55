#include "platform/Keypad.h"

#include "app/base/Run.h"

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

}  // namespace

void StartKeypad(lv_group_t *group) {
  lv_indev_drv_init(&gKeypad.Driver);
  gKeypad.Driver.type = LV_INDEV_TYPE_KEYPAD;
  gKeypad.Driver.read_cb = KeypadRead;
  lv_indev_t *device = lv_indev_drv_register(&gKeypad.Driver);
  lv_indev_set_group(device, group);
}

void KeypadRead(lv_indev_drv_t *, lv_indev_data_t *data) {
  data->state = LV_INDEV_STATE_RELEASED;
  EFI_INPUT_KEY pressed = {};
  EFI_STATUS status = gST->ConIn->ReadKeyStroke(gST->ConIn, &pressed);
  if (!gKeypad.KeysArmed) {
    // The key of this call is dropped, too.
    gKeypad.KeysArmed = gRun.LastTime - gRun.StartTime > kArmingTime;
    return;
  }
  if (EFI_ERROR(status)) {
    return;
  }
  UINT32 key = TranslateEfiKey(pressed);
  if (gKeypad.OnKey == nullptr || gKeypad.OnKey(key, pressed.ScanCode)) {
    data->key = key;
    data->state = LV_INDEV_STATE_PRESSED;
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
