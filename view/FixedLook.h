/** @file
  Colours and sizes of the view that the host does not give.

  Colours are 0xRRGGBB. Sizes are for a screen of 1920 x 1080 and are scaled to the view, except
  where stated.
**/

#pragma once

#include "app/base/Types.h"
#include "lvgl.h"

/// The face that everything outside the host's record uses.
inline constexpr CHAR8 kStandardFace[] = "DroidSans";

inline constexpr UINT32 kScreenColor = 0x2C2C2C;
/// Distance of rules, logo and buttons from the screen's sides.
inline constexpr int kSideMargin = 30;

// Rules.
inline constexpr UINT32 kRuleColor = 0x969696;
inline constexpr lv_coord_t kRuleWidth = 2;    ///< Not scaled.
inline constexpr lv_coord_t kLeaderWidth = 1;  ///< Not scaled.
inline constexpr int kUpperRuleGap = 5;

// Header and footer.
inline constexpr double kLogoZoom = 1.2;
inline constexpr int kLogoRuleGap = 7;
inline constexpr int kTitleGap = 10;
inline constexpr int kTitleWidth = 500;
inline constexpr int kTextLineHeight = 20;
inline constexpr int kFooterHeight = 30;
inline constexpr int kKeyHelpGap = 7;  ///< Deliberately not scaled.

// Close button.
inline constexpr UINT32 kCloseColor = 0xFFFFFF;
inline constexpr UINT32 kCloseFocusTextColor = 0x000000;
inline constexpr int kCloseWidth = 30;
inline constexpr int kCloseHeight = 35;
inline constexpr int kCloseTopGap = 30;             ///< Deliberately not scaled.
inline constexpr lv_coord_t kCloseRadius = 5;       ///< Not scaled.
inline constexpr lv_coord_t kCloseBorderWidth = 1;  ///< Not scaled.

// Borders of all buttons.
inline constexpr lv_opa_t kBorderOpacity = 204;

// Filter buttons: a column, from its top to the foot of the panels' part of the screen.
inline constexpr int kFilterColumnHeight = 150;
inline constexpr int kFilterPitch = 30;
inline constexpr int kFilterWidth = 95;
inline constexpr int kFilterHeight = 25;
inline constexpr lv_coord_t kSelectedRadius = 8;  ///< Not scaled.

// Panels and summary. None of these gaps is scaled.
inline constexpr int kPanelFilterGap = 10;
inline constexpr lv_coord_t kSideListGap = 10;
inline constexpr lv_coord_t kSummaryFilterGap = 10;

// Components.
inline constexpr UINT32 kHotspotAlpha = 0x19;
inline constexpr UINT16 kCalloutLabelMargin = 4;  ///< Both sides together; not scaled.
