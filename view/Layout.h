/** @file
  Lengths and positions of the view, from the view geometry.

  Formulas are evaluated in double precision and truncated once, at the end.
**/

#pragma once

#include "app/Lifecycle.h"
#include "app/ViewGeometry.h"
#include "lvgl.h"

/// A computed length or position in whole pixels.
inline lv_coord_t Pixels(double value) { return static_cast<lv_coord_t>(value); }

/// The rule below the header.
inline double UpperRuleY() { return gApp.ViewHeight * 0.25 * 0.5 * 0.5 + 5 * gApp.ScaleY; }

/// The rule above the key-help line.
inline double LowerRuleY() { return gApp.ViewHeight * 0.9375 + 0.0; }

/// Distance of rules, logo and buttons from the screen's sides.
inline double SideMargin() { return 30 * gApp.ScaleX; }

/// Nine tenths and three twentieths of the height, in whole pixels.
inline UINT32 NineTenthsHeight() { return gApp.ViewHeight * 9U / 10U; }
inline UINT32 ThreeTwentiethsHeight() { return gApp.ViewHeight * 3U / 20U; }

/// The panels lie right of the board picture.
inline double PanelLeft() { return gApp.ViewWidth * kPictureShare; }

/// Filter buttons, which end at the side margin.
inline double FilterButtonWidth() { return 95 * gApp.ScaleX; }
inline double FilterButtonLeft() { return gApp.ViewWidth - SideMargin() - FilterButtonWidth(); }

/// Top of the first filter button.
inline double FirstFilterButtonY() { return NineTenthsHeight() - 150 * gApp.ScaleY; }

/// The screen that the view is built on.
inline lv_obj_t *Screen() { return lv_disp_get_scr_act(lv_disp_get_default()); }
