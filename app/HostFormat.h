/** @file
  Printing in formats that come from the host's texts.
**/

#pragma once

#include "app/Firmware.h"

/// More directives than any of our buffers has room for the output of.
inline constexpr UINTN kMaxFormatArguments = 512;

inline UINTN FormatArgument(const CHAR8 *text) { return reinterpret_cast<UINTN>(text); }
inline UINTN FormatArgument(UINT32 number) { return number; }

/// Formats into buffer of size bytes, cutting what does not fit. A format with
/// more directives than arguments prints zeros for the rest, so that a text
/// gone wrong in translation cannot read what is not there.
template <typename... Arguments>
void PrintHostFormat(CHAR8 *buffer, UINTN size, const CHAR8 *format, Arguments... arguments) {
  UINTN list[kMaxFormatArguments] = {FormatArgument(arguments)...};
  AsciiBSPrint(buffer, size, format, reinterpret_cast<BASE_LIST>(list));
}

/// The same for a UCS-2 format without arguments.
inline void PrintHostFormat(CHAR8 *buffer, UINTN size, const CHAR16 *format) {
  UINTN list[kMaxFormatArguments] = {};
  AsciiBSPrintUnicodeFormat(buffer, size, format, reinterpret_cast<BASE_LIST>(list));
}
