/** @file
  Setup screens: display modes and a picture that no other program draws.
**/

#pragma once

#include "ProbeFirmware.h"

/// Puts every output into the mode of this size and paints the same picture on
/// each, as a setup utility does. Fails when an output has no such mode.
[[nodiscard]] EFI_STATUS ShowSetupScreen(UINTN width, UINTN height);

/// Prints each output's number, current size and all its sizes, one output a line.
[[nodiscard]] EFI_STATUS ListOutputs();
