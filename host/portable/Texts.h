/** @file
  The localized texts and the HII string packages made of them.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// The texts of one language. docs/host.md tells what the view does with each.
struct LanguageTexts {
  const CHAR8 *Code;           ///< RFC 4646, as in PlatformLang.
  const char16_t *NativeName;  ///< What a language menu shows.

  const char16_t *Title;
  /// A print format with exactly five equal colours, for the five key names; at
  /// most 299 bytes of UTF-8 once formatted.
  const char16_t *KeyHelp;
  const char16_t *Footer;
  const char16_t *CloseHint;  ///< Drawn with recolouring, so it holds no '#'.
  /// A print format with a filter button's caption as %a; at most 99 bytes once
  /// formatted.
  const char16_t *FilterHint;
  const char16_t *VolumeTitle;
  const char16_t *VolumeText;
  const char16_t *SavedTitle;
  const char16_t *SavedText;  ///< A print format: %a is the volume, then the file name.
  const char16_t *FailureTitle;
  const char16_t *NoVolumeText;
  const char16_t *WriteProtectedText;
  const char16_t *NotSavedText;
  const char16_t *ConfirmButton;
  const char16_t *CancelButton;
};

/// The texts in the order of OBV_SHARED_STATE.StringIds.
inline constexpr const char16_t *LanguageTexts::*kTextOrder[] = {
    &LanguageTexts::Title,               // 0
    &LanguageTexts::KeyHelp,             // 1
    &LanguageTexts::Footer,              // 2
    &LanguageTexts::CloseHint,           // 3
    &LanguageTexts::FilterHint,          // 4
    &LanguageTexts::VolumeTitle,         // 5
    &LanguageTexts::VolumeText,          // 6
    &LanguageTexts::SavedTitle,          // 7
    &LanguageTexts::SavedText,           // 8
    &LanguageTexts::FailureTitle,        // 9
    &LanguageTexts::NoVolumeText,        // 10
    &LanguageTexts::WriteProtectedText,  // 11
    &LanguageTexts::NotSavedText,        // 12
    &LanguageTexts::ConfirmButton,       // 13
    &LanguageTexts::CancelButton,        // 14
};
static_assert(ARRAY_SIZE(kTextOrder) == OBV_STRING_COUNT);

/// The text of an index of OBV_SHARED_STATE.StringIds.
inline const char16_t *TextAt(const LanguageTexts &language, UINTN index) {
  return language.*kTextOrder[index];
}

inline constexpr UINTN kLanguageCount = 6;
extern const LanguageTexts kLanguages[kLanguageCount];

/// String identifier of text index: the first identifier of a package is its
/// language's name.
inline constexpr UINT16 TextId(UINTN index) { return static_cast<UINT16>(index + 2); }

/// Bytes that WriteStringPackages writes.
UINTN StringPackagesSize();

/// Writes one string package per language behind a 32-bit total size, the form
/// that EDK2's HiiAddPackages takes. buffer has StringPackagesSize() bytes and
/// any alignment.
void WriteStringPackages(UINT8 *buffer);

}  // namespace obv_host
