/** @file
  Whether a driver leaves anything behind.
**/

#pragma once

#include "ProbeFirmware.h"

/// Loads the host and the setup of these names, asks the host for all of its components, unloads
/// both, and does so again. Prints how many handles and memory pages the firmware had in use before
/// the second time and after it: "handles N M, pages P Q". The first time may connect drivers to
/// devices, for good.
[[nodiscard]] EFI_STATUS CycleHostAndSetup(EFI_HANDLE probe, const CHAR16 *host,
                                           const CHAR16 *setup);
