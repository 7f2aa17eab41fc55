/** @file
  Stands in front of every disk, so that waiting for it does not count: how long that is, chance
  decides.
**/

#pragma once

#include "BenchFirmware.h"

[[nodiscard]] EFI_STATUS WatchDisks();

/// Undoes WatchDisks.
void LeaveDisks();
