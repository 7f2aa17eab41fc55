/** @file
  What an open message box shows, for tests of any stage that can have one.
**/

#pragma once

#include "test/unit/stage/ObjectLooks.h"

#include "capture/MessageBox.h"

inline bool BoxIsOpen() { return gMessageBox.ModalMessageBoxOpen; }
inline lv_obj_t *BoxButtons() { return lv_msgbox_get_btns(gMessageBox.Box); }
inline std::string BoxTitle() { return LabelText(lv_msgbox_get_title(gMessageBox.Box)); }
inline std::string BoxText() { return LabelText(lv_msgbox_get_text(gMessageBox.Box)); }
inline UINT16 SelectedButton() { return lv_btnmatrix_get_selected_btn(BoxButtons()); }

/// Where a button is on the screen.
inline Place ButtonPlace(UINT16 number) {
  const lv_area_t &area = reinterpret_cast<lv_btnmatrix_t *>(BoxButtons())->button_areas[number];
  Place buttons = PlaceOf(BoxButtons());
  return {buttons.X + area.x1, buttons.Y + area.y1, lv_area_get_width(&area),
          lv_area_get_height(&area)};
}

/// The button map up to its end; row breaks are "\n".
inline std::vector<std::string> ButtonMap() {
  std::vector<std::string> texts;
  const char **map = lv_btnmatrix_get_map(BoxButtons());
  for (size_t i = 0; map[i] != nullptr && map[i][0] != 0; i++) {
    texts.emplace_back(map[i]);
  }
  return texts;
}

/// The button map without its row breaks.
inline std::vector<std::string> ButtonTexts() {
  std::vector<std::string> texts = ButtonMap();
  std::erase(texts, "\n");
  return texts;
}
