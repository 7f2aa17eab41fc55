/** @file
  Colours that the host gives as texts.
**/

#pragma once

#include "app/base/Types.h"

/// A text of three comma-separated numbers (red, green, blue), at most 20 bytes
/// of it, as 0x00RRGGBB. Each number is decimal, or hexadecimal where decimal
/// gives 0; only its low 8 bits count. A missing number, and NULL, give 0xFF.
[[nodiscard]] UINT32 ParseColorText(const CHAR8 *text);
