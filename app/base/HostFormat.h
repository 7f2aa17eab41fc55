/** @file
  Printing in formats that come from the host's texts.
**/

#pragma once

#include "app/base/Firmware.h"

/// More directives than any of our buffers has room for the output of.
inline constexpr UINTN kMaxFormatArguments = 512;

inline UINTN FormatArgument(const CHAR8 *text) { return reinterpret_cast<UINTN>(text); }
inline UINTN FormatArgument(UINT32 number) { return number; }

/// Whether the arguments suffice whatever the format asks for: directives may
/// take arguments and print nothing, and widths may be arguments, too.
template <typename Character>
bool IsHostFormatUsable(const Character *format) {
  UINTN asked = 0;
  for (; *format != 0; ++format) {
    asked += *format == '%' || *format == '*' ? 1 : 0;
  }
  return asked <= kMaxFormatArguments;
}

/// Formats into buffer of size bytes, cutting what does not fit. A format with
/// more directives than arguments prints zeros for the rest, so that a text
/// gone wrong in translation cannot read what is not there; one with more than
/// kMaxFormatArguments prints nothing.
template <typename... Arguments>
void PrintHostFormat(CHAR8 *buffer, UINTN size, const CHAR8 *format, Arguments... arguments) {
  buffer[0] = 0;
  if (!IsHostFormatUsable(format)) {
    return;
  }
  UINTN list[kMaxFormatArguments] = {FormatArgument(arguments)...};
  AsciiBSPrint(buffer, size, format, reinterpret_cast<BASE_LIST>(list));
}

/// The same for a UCS-2 format without arguments.
inline void PrintHostFormat(CHAR8 *buffer, UINTN size, const CHAR16 *format) {
  buffer[0] = 0;
  if (!IsHostFormatUsable(format)) {
    return;
  }
  UINTN list[kMaxFormatArguments] = {};
  AsciiBSPrintUnicodeFormat(buffer, size, format, reinterpret_cast<BASE_LIST>(list));
}
