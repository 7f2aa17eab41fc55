/** @file
  UCS-2 text as 8-bit text.
**/

#pragma once

#include "app/base/Types.h"

/// Copies the low byte of each character, and the NUL, into output of size
/// bytes. All or nothing: output stays as it was when the text does not fit.
/// At most size characters of text are read.
void CopyLowBytes(const CHAR16 *text, CHAR8 *output, UINTN size);
