/** @file
  What LVGL's objects look like and say, for tests of any stage that has a view.
**/

#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "lvgl.h"
#include "platform/FontTable.h"
#include "platform/LvglPort.h"

/// A rectangle of the screen.
struct Place {
  int X, Y, Width, Height;
  bool operator==(const Place &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const Place &place) {
  return out << place.Width << "x" << place.Height << " at (" << place.X << ", " << place.Y << ")";
}

/// Where LVGL has put an object.
inline Place PlaceOf(lv_obj_t *object) {
  lv_area_t area;
  lv_obj_get_coords(object, &area);
  return {area.x1, area.y1, lv_area_get_width(&area), lv_area_get_height(&area)};
}

/// 0xRRGGBB.
inline UINT32 Rgb(lv_color_t color) { return lv_color_to32(color) & 0xFFFFFF; }

/// "Face size", as the host's table of fonts was loaded; "default" for LVGL's own.
inline std::string FontText(const lv_font_t *font) {
  for (const lv_ft_info_t &entry : gFontTable.Fonts) {
    if (entry.font == font && font != nullptr) {
      return std::string(entry.name) + " " + std::to_string(entry.weight);
    }
  }
  return font == LV_FONT_DEFAULT ? "default" : "unknown";
}

inline std::string FontOf(lv_obj_t *object) {
  return FontText(lv_obj_get_style_text_font(object, LV_PART_MAIN));
}

inline UINT32 TextColorOf(lv_obj_t *object) {
  return Rgb(lv_obj_get_style_text_color(object, LV_PART_MAIN));
}

inline std::vector<lv_obj_t *> ChildrenOf(lv_obj_t *object) {
  std::vector<lv_obj_t *> children;
  for (UINT32 i = 0; i < lv_obj_get_child_cnt(object); i++) {
    children.push_back(lv_obj_get_child(object, static_cast<INT32>(i)));
  }
  return children;
}

inline bool IsHidden(const lv_obj_t *object) { return lv_obj_has_flag(object, LV_OBJ_FLAG_HIDDEN); }

inline std::string LabelText(lv_obj_t *label) { return lv_label_get_text(label); }

/// A label's whole text, also where LVGL shows dots for its end.
inline std::string WholeText(lv_obj_t *label) {
  lv_label_long_mode_t mode = lv_label_get_long_mode(label);
  lv_label_set_long_mode(label, LV_LABEL_LONG_WRAP);
  std::string text = lv_label_get_text(label);
  lv_label_set_long_mode(label, mode);
  return text;
}

/// The text of a button's label.
inline std::string Caption(lv_obj_t *button) { return LabelText(lv_obj_get_child(button, 0)); }

/// The picture that an image object shows; null when it has none.
inline const lv_img_dsc_t *Source(lv_obj_t *image) {
  return static_cast<const lv_img_dsc_t *>(lv_img_get_src(image));
}

/// The object that keys go to.
inline lv_obj_t *Focused() { return lv_group_get_focused(gLvglPort.Group); }
