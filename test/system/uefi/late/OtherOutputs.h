/** @file
  What happens to a monitor that is unplugged: its output has no modes any more.
**/

#pragma once

#include "LateFirmware.h"

/// Takes the modes of every output that is there.
[[nodiscard]] EFI_STATUS TakeModes();

/// Gives back what TakeModes took.
void GiveModesBack();
