/** @file
  Stands in front of Blt of every graphics output: it does not count, but its pixels are counted.
**/

#pragma once

#include "BenchFirmware.h"

[[nodiscard]] EFI_STATUS WatchOutputs();

/// Undoes WatchOutputs.
void LeaveOutputs();

/// Pixels transferred to the screen so far.
UINT64 DrawnPixels();
