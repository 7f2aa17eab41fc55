/** @file
  Colours, fonts and styles from the host's appearance record.
**/

#pragma once

#include "app/base/Types.h"
#include "lvgl.h"

/// Selector for the main part in its default state.
inline constexpr lv_style_selector_t kMainPart = LV_PART_MAIN | LV_STATE_DEFAULT;

/// The host's appearance record; all zero when it has none.
const OBV_CONFIG &Look();

/// A colour text as LVGL's colour.
lv_color_t ColorOf(const CHAR8 *colorText);

/// Pixels in the view of a font size for a screen of 1080 lines.
INT16 ScaledFontSize(UINT8 size);

/// A font of the record, scaled to the view; never NULL.
const lv_font_t *FontOf(const OBV_FONT_CHOICE &choice);

/// The face that everything outside the record uses, at a size for a screen of
/// 1080 lines; never NULL.
const lv_font_t *StandardFont(UINT8 size);

/// Whether the record asks for room that grows with its fonts.
bool TextRoomGrows();

/// What the styles of callouts and filter buttons have in common. Texts are
/// colour texts.
struct ButtonLook {
  const CHAR8 *TextColor;
  const CHAR8 *BackgroundColor;
  const CHAR8 *BorderColor;
  UINT8 BorderWidth;
  UINT8 CornerRadius;
  const lv_font_t *Font;
};

/// Sets up an opaque button style.
void InitializeButtonStyle(lv_style_t *style, const ButtonLook &look);

/// Gives the style a border, or none for width 0.
void SetBorder(lv_style_t *style, const CHAR8 *colorText, UINT8 width);

/// Strips what LVGL's theme has put on an object.
void RemoveThemeStyles(lv_obj_t *object);

/// Shows or hides an object; NULL, for a component that came after the view was
/// built, is ignored.
void SetVisible(lv_obj_t *object, bool visible);
