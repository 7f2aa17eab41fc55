/** @file
  What the right-hand column tells, on a built view.
**/

#pragma once

#include "test/unit/stage/ViewStage.h"

/// A label's whole text, also where LVGL shows dots for its end.
inline std::string WholeText(lv_obj_t *label) {
  lv_label_long_mode_t mode = lv_label_get_long_mode(label);
  lv_label_set_long_mode(label, LV_LABEL_LONG_WRAP);
  std::string text = lv_label_get_text(label);
  lv_label_set_long_mode(label, mode);
  return text;
}

/// EDK2's print library ends a line so.
inline const std::string kLineEnd = "\r\n";

/// An information line whose label has the colour of the test host's record, 180,180,180.
inline std::string InfoLineText(const std::string &label, const std::string &value) {
  return "#B4B4B4 " + label + ": #" + value + kLineEnd;
}
