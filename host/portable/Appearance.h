/** @file
  The look of the view.
**/

#pragma once

#include "host/portable/BoardFormat.h"

extern "C" {
#include <Protocol/ObvSetup.h>
}

namespace obv_host {

/// Names of the three font faces, in the order of their indices. Face 1 is the
/// one that the others take missing glyphs from.
inline constexpr UINT8 kFaceCount = 3;
extern const CHAR8 *const kFaceNames[kFaceCount];

/// Colour text of the close button's keyboard-focus background.
extern const CHAR8 kCloseFocusColor[];

/// What a setup lets the user choose. All zero: the usual look.
struct LookChoice {
  bool HighContrast;
  bool LargeText;
};

/// The choice that the bytes of the setup's variable stand for, whoever wrote
/// them. What is not there or not a choice is the usual look.
LookChoice ParseLookChoice(const void *data, UINTN size);

/// Fills the whole record with the reference look. logo is one of OBV_LOGO_*,
/// markerTheme one of OBV_MARKER_*.
void FillAppearance(UINT8 logo, UINT8 markerTheme, OBV_CONFIG *config);

/// Changes a filled record: with high contrast every text has 7:1 or more on its
/// ground, with large text every size is a half larger.
void AdaptAppearance(const LookChoice &choice, OBV_CONFIG *config);

/// The same for the callouts' looks, whose size is the record's.
void AdaptStyle(const LookChoice &choice, BoardStyle *style);

}  // namespace obv_host
