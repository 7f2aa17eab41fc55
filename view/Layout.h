/** @file
  Lengths and positions of the view, from the view geometry.

  Formulas are evaluated in double precision and truncated once, at the end.
**/

#pragma once

#include "app/base/Geometry.h"
#include "lvgl.h"
#include "view/FixedLook.h"

/// A computed length or position in whole pixels.
inline lv_coord_t Pixels(double value) { return static_cast<lv_coord_t>(value); }

/// A length designed for 1920 x 1080, in the view.
inline double ScaledX(double length) { return length * gGeometry.ScaleX; }
inline double ScaledY(double length) { return length * gGeometry.ScaleY; }

/// The board picture lies in the middle of the height, a quarter of which it leaves free.
inline double PictureTop() { return gGeometry.ViewHeight * 0.25 * 0.5; }

/// The rule below the header.
inline double UpperRuleY() { return PictureTop() * 0.5 + ScaledY(kUpperRuleGap); }

/// The rule above the key-help line.
inline double LowerRuleY() { return gGeometry.ViewHeight * 0.9375 + 0.0; }

inline double SideMargin() { return ScaledX(kSideMargin); }

/// Nine tenths and three twentieths of the height, in whole pixels.
inline UINT32 NineTenthsHeight() { return gGeometry.ViewHeight * 9U / 10U; }
inline UINT32 ThreeTwentiethsHeight() { return gGeometry.ViewHeight * 3U / 20U; }

/// The panels lie right of the board picture.
inline double PanelLeft() { return gGeometry.ViewWidth * kPictureShare; }

/// Filter buttons, which end at the side margin.
inline double FilterButtonWidth() { return ScaledX(kFilterWidth); }
inline double FilterButtonLeft() {
  return gGeometry.ViewWidth - SideMargin() - FilterButtonWidth();
}

/// Top of the first filter button.
inline double FirstFilterButtonY() { return NineTenthsHeight() - ScaledY(kFilterColumnHeight); }

/// The screen that the view is built on.
inline lv_obj_t *Screen() { return lv_disp_get_scr_act(lv_disp_get_default()); }
