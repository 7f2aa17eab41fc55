/** @file
  The modal message box over the view: its state, opening, keys and colours.

  Only one is open at a time.
**/

#pragma once

#include "app/base/Firmware.h"
#include "lvgl.h"

struct MessageBoxState {
  /// Set while the box is open: keys go to it and hover focus is off.
  bool ModalMessageBoxOpen;
  lv_obj_t *Box;
  /// What had the focus before the box opened.
  lv_obj_t *PreviousFocus;
  /// Button map of the result box.
  const CHAR8 *ResultButtons[2];
};

extern MessageBoxState gMessageBox;

inline constexpr UINT32 kBoxTitleColor = 0xFFFFFFFF;
inline constexpr UINT32 kBoxTextColor = 0xFFD0D0D0;

/// Opens a box over half the screen. Texts are UTF-8; the button map stays the
/// caller's and must live as long as the box; colours are 32-bit ARGB. handler
/// is called with LV_EVENT_VALUE_CHANGED and userData.
void OpenMessageBox(const CHAR8 *title, const CHAR8 *text, const CHAR8 **buttons, UINT32 titleColor,
                    UINT32 textColor, lv_event_cb_t handler, void *userData);

/// Gives the open box's buttons their font, size, place and the focus.
void ArrangeBoxButtons(lv_coord_t width, lv_coord_t height);

/// The font of texts and buttons.
const lv_font_t *BoxTextFont();

/// What a key does to the open box: Esc closes it, arrows, Tab and page keys walk its buttons.
/// Whether LVGL is told of the key.
bool HandleMessageBoxKey(UINT32 key);

/// Closes the box that sent the event and gives the focus back.
void CloseMessageBox(lv_event_t *event);

/// Opens a box with one button that closes it.
void ShowResultBox(const CHAR8 *title, const CHAR8 *text, UINT32 titleColor, UINT32 textColor);
