#include "view/Look.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "platform/ColorText.h"
#include "platform/FontTable.h"
#include "view/FixedLook.h"

namespace {

// For a host that forgot its record.
constexpr OBV_CONFIG kNoLook = {};

}  // namespace

const OBV_CONFIG &Look() {
  const OBV_CONFIG *look = gHost.SharedState->Config;
  return look != nullptr ? *look : kNoLook;
}

lv_color_t ColorOf(const CHAR8 *colorText) { return lv_color_hex(ParseColorText(colorText)); }

INT16 ScaledFontSize(UINT8 size) { return static_cast<INT16>(size * gGeometry.ScaleY); }

const lv_font_t *FontOf(const OBV_FONT_CHOICE &choice) {
  // The name may fill its field.
  CHAR8 name[sizeof(choice.Name) + 1] = {};
  CopyMem(name, choice.Name, sizeof(choice.Name));
  return GetFont(ScaledFontSize(choice.Size), name);
}

const lv_font_t *StandardFont(UINT8 size) { return GetFont(ScaledFontSize(size), kStandardFace); }

bool TextRoomGrows() {
  static_assert(sizeof(OBV_ROOM_GROWS) == OBV_ROOM_SIZE);
  return CompareMem(Look().TextRoom, OBV_ROOM_GROWS, OBV_ROOM_SIZE) == 0;
}

void InitializeButtonStyle(lv_style_t *style, const ButtonLook &look) {
  lv_style_init(style);
  lv_style_set_radius(style, look.CornerRadius);
  lv_style_set_bg_opa(style, LV_OPA_COVER);
  lv_style_set_bg_color(style, ColorOf(look.BackgroundColor));
  SetBorder(style, look.BorderColor, look.BorderWidth);
  lv_style_set_text_color(style, ColorOf(look.TextColor));
  lv_style_set_text_font(style, look.Font);
}

void SetBorder(lv_style_t *style, const CHAR8 *colorText, UINT8 width) {
  lv_style_set_border_width(style, 0);
  if (width != 0) {
    lv_style_set_border_color(style, ColorOf(colorText));
    lv_style_set_border_opa(style, kBorderOpacity);
    lv_style_set_border_width(style, width);
  }
}

void RemoveThemeStyles(lv_obj_t *object) {
  lv_obj_remove_style(object, nullptr,
                      static_cast<lv_style_selector_t>(LV_PART_ANY) | LV_STATE_ANY);
}

void SetVisible(lv_obj_t *object, bool visible) {
  // LVGL would draw it anew even when nothing changes.
  if (object == nullptr || visible == !lv_obj_has_flag(object, LV_OBJ_FLAG_HIDDEN)) {
    return;
  }
  if (visible) {
    lv_obj_clear_flag(object, LV_OBJ_FLAG_HIDDEN);
  } else {
    lv_obj_add_flag(object, LV_OBJ_FLAG_HIDDEN);
  }
}
