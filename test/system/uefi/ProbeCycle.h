/** @file
  Whether a driver leaves anything behind.
**/

#pragma once

#include "ProbeFirmware.h"

/// Loads the host of this name, asks it for all of its components, unloads it, and does so again.
/// Prints how many handles and memory pages the firmware had in use before the second time and
/// after it: "handles N M, pages P Q". The first time may connect drivers to devices, for good.
[[nodiscard]] EFI_STATUS CycleHost(EFI_HANDLE probe, const CHAR16 *name);
