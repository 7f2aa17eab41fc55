/** @file
  Setup screens: display modes and a picture that no other program draws.
**/

#pragma once

#include "ProbeFirmware.h"

/// Puts every output that has a mode of this size into it, and paints each with
/// a picture of its own. EFI_UNSUPPORTED when no output has such a mode.
[[nodiscard]] EFI_STATUS ShowSetupScreen(UINTN width, UINTN height);

/// Prints each output's number and current size, one a line.
[[nodiscard]] EFI_STATUS ListOutputs();
