/** @file
  Trimming of the host's texts.
**/

#pragma once

#include "app/base/Types.h"

/// Cuts blanks and line feeds off the end, in place; carriage returns and tabs
/// stay. Returns its argument, which may be NULL.
CHAR16 *TrimTrailingWhitespace(CHAR16 *text);
