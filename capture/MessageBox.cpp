#include "capture/MessageBox.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/LocalizedStrings.h"
#include "platform/LvglPort.h"
#include "view/Layout.h"
#include "view/Look.h"

MessageBoxState gMessageBox;

namespace {

constexpr UINT32 kBackgroundColor = 0x2C2C2C;
constexpr UINT8 kTitleFontSize = 20;
constexpr UINT8 kTextFontSize = 18;

void StyleBox(lv_obj_t *box) {
  lv_coord_t padding = static_cast<lv_coord_t>(gGeometry.ViewWidth / 4);
  lv_obj_set_size(box, static_cast<lv_coord_t>(gGeometry.ViewWidth),
                  static_cast<lv_coord_t>(gGeometry.ViewHeight / 2));
  lv_obj_align(box, LV_ALIGN_CENTER, 0, 0);
  lv_obj_set_style_bg_color(box, lv_color_hex(kBackgroundColor), kMainPart);
  lv_obj_set_style_radius(box, 0, kMainPart);
  lv_obj_set_style_border_width(box, 0, kMainPart);
  lv_obj_set_style_pad_left(box, padding, kMainPart);
  lv_obj_set_style_pad_right(box, padding, kMainPart);
}

void StyleText(lv_obj_t *label, UINT8 size, UINT32 color) {
  // A box without a title has no label for it.
  if (label != nullptr) {
    lv_obj_set_style_text_font(label, StandardFont(size), kMainPart);
    lv_obj_set_style_text_color(label, lv_color_hex(color), kMainPart);
  }
}

/// A button of the view that is held down must not act when it is let go under
/// the box.
void DropHeldPress() {
  lv_indev_t *device = lv_indev_get_next(nullptr);
  for (; device != nullptr; device = lv_indev_get_next(device)) {
    if (lv_indev_get_type(device) == LV_INDEV_TYPE_POINTER) {
      lv_indev_wait_release(device);
    }
  }
}

void CloseHandler(lv_event_t *event) { CloseMessageBox(event); }

}  // namespace

const lv_font_t *BoxTextFont() { return StandardFont(kTextFontSize); }

void OpenMessageBox(const CHAR8 *title, const CHAR8 *text, const CHAR8 **buttons, UINT32 titleColor,
                    UINT32 textColor, lv_event_cb_t handler, void *userData) {
  gMessageBox.ModalMessageBoxOpen = true;
  gMessageBox.PreviousFocus = lv_group_get_focused(gLvglPort.Group);
  DropHeldPress();
  lv_obj_t *box = lv_msgbox_create(nullptr, title, text, buttons, false);
  gMessageBox.Box = box;
  lv_obj_add_event_cb(box, handler, LV_EVENT_VALUE_CHANGED, userData);
  StyleBox(box);
  StyleText(lv_msgbox_get_title(box), kTitleFontSize, titleColor);
  StyleText(lv_msgbox_get_text(box), kTextFontSize, textColor);
}

void ArrangeBoxButtons(lv_coord_t width, lv_coord_t height) {
  lv_obj_t *buttons = lv_msgbox_get_btns(gMessageBox.Box);
  lv_obj_set_style_text_font(buttons, BoxTextFont(), kMainPart);
  lv_obj_set_size(buttons, width, height);
  lv_obj_align(buttons, LV_ALIGN_CENTER, 0, 0);
  lv_group_focus_obj(buttons);
  if (reinterpret_cast<lv_btnmatrix_t *>(buttons)->btn_cnt > 0) {
    lv_btnmatrix_set_selected_btn(buttons, 0);
  }
  // Without its place, which it would get with the next frame, the box would let
  // a press of this very turn through to the view.
  lv_obj_update_layout(gMessageBox.Box);
}

bool HandleMessageBoxKey(UINT32 key) {
  lv_obj_t *buttons = lv_msgbox_get_btns(gMessageBox.Box);
  UINT16 selected = lv_btnmatrix_get_selected_btn(buttons);
  switch (key) {
    case LV_KEY_ESC:
      gMessageBox.ModalMessageBoxOpen = false;
      lv_msgbox_close(gMessageBox.Box);
      return false;
    case LV_KEY_DOWN:
    case LV_KEY_RIGHT:
    case LV_KEY_NEXT:
      // From "none" this wraps to the first; LVGL ignores one past the last.
      lv_btnmatrix_set_selected_btn(buttons, static_cast<UINT16>(selected + 1));
      return false;
    case LV_KEY_PREV:
    case LV_KEY_UP:
    case LV_KEY_LEFT:
      if (selected != 0) {
        lv_btnmatrix_set_selected_btn(buttons, static_cast<UINT16>(selected - 1));
      }
      return false;
    default:
      return true;
  }
}

void CloseMessageBox(lv_event_t *event) {
  lv_obj_t *box = lv_event_get_current_target(event);
  LogInfo("%d Button %a was clicked\n", lv_msgbox_get_active_btn(box),
          lv_msgbox_get_active_btn_text(box));
  gMessageBox.ModalMessageBoxOpen = false;
  lv_msgbox_close(box);
  lv_group_focus_obj(gMessageBox.PreviousFocus);
}

void ShowResultBox(const CHAR8 *title, const CHAR8 *text, UINT32 titleColor, UINT32 textColor) {
  gMessageBox.ResultButtons[0] = LocalizedText(TextId::ConfirmButton);
  OpenMessageBox(title, text, gMessageBox.ResultButtons, titleColor, textColor, CloseHandler,
                 nullptr);
  ArrangeBoxButtons(Pixels(gGeometry.ScaleX * 100), Pixels(gGeometry.ScaleY * 30));
}
