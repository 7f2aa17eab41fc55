/** @file
  The fifteen texts in the user's language, from the firmware's HII package.
**/

#pragma once

#include "app/base/Types.h"

/// What each text is for. The order is that of OBV_SHARED_STATE.StringIds.
enum class TextId : UINT8 {
  Title = 0,
  KeyHelp = 1,  ///< A print format with five colours.
  Footer = 2,
  CloseHint = 3,
  FilterHint = 4,  ///< A print format with the filter's caption.
  VolumeTitle = 5,
  VolumeText = 6,
  SavedTitle = 7,
  SavedText = 8,  ///< A print format with volume and file name.
  FailureTitle = 9,
  NoVolumeText = 10,
  WriteProtectedText = 11,
  NotSavedText = 12,
  ConfirmButton = 13,
  CancelButton = 14,
};

struct LocalizedStringState {
  /// UTF-8, from malloc, NULL where memory ran out; never freed by their owner.
  CHAR8 *Texts[OBV_STRING_COUNT];
};

extern LocalizedStringState gLocalizedStrings;

/// Loads all texts in the platform language, each with "en-US" as fallback.
/// EFI_NOT_FOUND when the package is not registered.
[[nodiscard]] EFI_STATUS LoadLocalizedStrings();

/// A text, owned by the table; empty where it could not be loaded.
const CHAR8 *LocalizedText(TextId id);
