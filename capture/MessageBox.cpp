#include "capture/MessageBox.h"

#include "app/HostClient.h"
#include "app/Lifecycle.h"
#include "app/LocalizedStrings.h"
#include "platform/LvglPort.h"
#include "platform/ModalBox.h"
#include "view/Layout.h"
#include "view/Look.h"

namespace {

constexpr UINT32 kBackgroundColor = 0x2C2C2C;
constexpr UINT8 kTitleFontSize = 20;
constexpr UINT8 kTextFontSize = 18;

struct ResultBoxState {
  const CHAR8 *Buttons[2];
};
ResultBoxState gResultBox;

void StyleBox(lv_obj_t *box) {
  lv_coord_t padding = static_cast<lv_coord_t>(gApp.ViewWidth / 4);
  lv_obj_set_size(box, static_cast<lv_coord_t>(gApp.ViewWidth),
                  static_cast<lv_coord_t>(gApp.ViewHeight / 2));
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
  gModalBox.ModalMessageBoxOpen = 1;
  gModalBox.PreviousFocus = lv_group_get_focused(gLvglPort.Group);
  DropHeldPress();
  lv_obj_t *box = lv_msgbox_create(nullptr, title, text, buttons, false);
  gModalBox.Box = box;
  lv_obj_add_event_cb(box, handler, LV_EVENT_VALUE_CHANGED, userData);
  StyleBox(box);
  StyleText(lv_msgbox_get_title(box), kTitleFontSize, titleColor);
  StyleText(lv_msgbox_get_text(box), kTextFontSize, textColor);
}

void ArrangeBoxButtons(lv_coord_t width, lv_coord_t height) {
  lv_obj_t *buttons = lv_msgbox_get_btns(gModalBox.Box);
  lv_obj_set_style_text_font(buttons, BoxTextFont(), kMainPart);
  lv_obj_set_size(buttons, width, height);
  lv_obj_align(buttons, LV_ALIGN_CENTER, 0, 0);
  lv_group_focus_obj(buttons);
  if (reinterpret_cast<lv_btnmatrix_t *>(buttons)->btn_cnt > 0) {
    lv_btnmatrix_set_selected_btn(buttons, 0);
  }
  // Without its place, which it would get with the next frame, the box would let
  // a press of this very turn through to the view.
  lv_obj_update_layout(gModalBox.Box);
}

void CloseMessageBox(lv_event_t *event) {
  lv_obj_t *box = lv_event_get_current_target(event);
  LogInfo("%d Button %a was clicked\n", lv_msgbox_get_active_btn(box),
          lv_msgbox_get_active_btn_text(box));
  gModalBox.ModalMessageBoxOpen = 0;
  lv_msgbox_close(box);
  lv_group_focus_obj(gModalBox.PreviousFocus);
}

void ShowResultBox(const CHAR8 *title, const CHAR8 *text, UINT32 titleColor, UINT32 textColor) {
  gResultBox.Buttons[0] = LocalizedText(TextId::ConfirmButton);
  OpenMessageBox(title, text, gResultBox.Buttons, titleColor, textColor, CloseHandler, nullptr);
  ArrangeBoxButtons(Pixels(gApp.ScaleX * 100), Pixels(gApp.ScaleY * 30));
}
