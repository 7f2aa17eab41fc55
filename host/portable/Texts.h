/** @file
  The localized texts and the HII string packages made of them.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// The texts of one language, in the order of OBV_SHARED_STATE.StringIds.
struct LanguageTexts {
  const CHAR8 *Code;           ///< RFC 4646, as in PlatformLang.
  const char16_t *NativeName;  ///< What a language menu shows.
  const char16_t *Texts[OBV_STRING_COUNT];
};

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
