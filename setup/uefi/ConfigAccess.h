/** @file
  What the form browser calls: values out of and into the variable, and the
  questions that do something.
**/

#pragma once

#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {

/// Fills in the functions of a protocol for the driver's handle.
void InitializeConfigAccess(EFI_HII_CONFIG_ACCESS_PROTOCOL *access);

}  // namespace obv_setup
