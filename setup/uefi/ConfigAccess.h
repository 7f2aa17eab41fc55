/** @file
  What the form browser calls: values out of and into the variable, and the
  questions that do something.
**/

#pragma once

#include "setup/portable/SetupLink.h"
#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {

/// Protocol is the first member: its functions get the rest back from This.
struct ConfigAccess {
  EFI_HII_CONFIG_ACCESS_PROTOCOL Protocol;
  SetupLink Link;
  EFI_HANDLE Image;      ///< The driver, beside which the application lies.
  EFI_HANDLE Handle;     ///< Carries Protocol.
  EFI_HII_HANDLE Pages;  ///< Of the database, for messages; NULL until they are there.
};

/// Clears the record and fills in what the browser and the host call.
void InitializeConfigAccess(EFI_HANDLE image, ConfigAccess *access);

}  // namespace obv_setup
