/** @file
  The setup's pages, without the firmware's first page before them.
**/

#pragma once

#include "ProbeFirmware.h"

/// Opens the setup's pages in the firmware's form browser at the screen's present size, and returns
/// when they are left. The firmware's own setup always has a size of its own.
[[nodiscard]] EFI_STATUS OpenSetupPages();
