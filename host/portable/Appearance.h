/** @file
  The look of the view.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// Names of the three font faces, in the order of their indices. Face 1 is the
/// one that the others take missing glyphs from.
inline constexpr UINT8 kFaceCount = 3;
extern const CHAR8 *const kFaceNames[kFaceCount];

/// Colour text of the close button's keyboard-focus background.
extern const CHAR8 kCloseFocusColor[];

/// Fills the whole record with the reference look. logo is one of OBV_LOGO_*,
/// markerTheme one of OBV_MARKER_*.
void FillAppearance(UINT8 logo, UINT8 markerTheme, OBV_CONFIG *config);

}  // namespace obv_host
