// Conversions between the firmware's UCS-2 and the tests' strings.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

/// Length of a NUL-terminated text in code units.
size_t TextLength(const CHAR16 *text);

std::u16string ToU16(const CHAR16 *text);
/// A copy in the firmware's character type, with its terminator.
std::vector<CHAR16> ToFirmware(std::u16string_view text);
/// ASCII rendering: other characters become '?'. Null becomes "(null)".
std::string ToAscii(const CHAR16 *text);
std::string ToAscii(std::u16string_view text);
/// Each ASCII character as one code unit.
std::u16string FromAscii(std::string_view text);

/// Copies a text into a fixed array of the firmware's character type, cut and terminated.
void CopyText(CHAR16 *to, size_t capacity, std::u16string_view text);
void CopyText(CHAR8 *to, size_t capacity, std::string_view text);

template <size_t N>
void CopyText(CHAR16 (&to)[N], std::u16string_view text) {
  CopyText(to, N, text);
}
template <size_t N>
void CopyText(CHAR8 (&to)[N], std::string_view text) {
  CopyText(to, N, text);
}

}  // namespace fake
