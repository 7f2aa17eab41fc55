/** @file
  What happens to a graphics adapter whose driver lets go of it: its outputs are gone.
**/

#pragma once

#include "LateFirmware.h"

/// Has the driver of the first adapter stopped. The console's own output goes with its last
/// adapter.
[[nodiscard]] EFI_STATUS StopAdapter();

/// Has the driver of the adapter started that StopAdapter stopped.
[[nodiscard]] EFI_STATUS StartAdapter();
