/** @file
  UTF-16 to UTF-8.
**/

#pragma once

#include "app/base/Types.h"

/// Converts units code units of text into output, which holds capacity bytes
/// and is zero-filled. Ends early, keeping what is converted, at a surrogate
/// without its partner or when a character no longer fits. A NUL is added when
/// there is room for it.
void ConvertUtf16ToUtf8(const CHAR16 *text, UINTN units, CHAR8 *output, UINTN capacity);
