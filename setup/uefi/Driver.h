/** @file
  The resident driver: everything that lives from load to unload.
**/

#pragma once

#include "setup/portable/SetupLink.h"
#include "setup/portable/SetupPages.h"
#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {

struct Driver {
  EFI_HANDLE ImageHandle;
  EFI_HANDLE Handle;  ///< Carries the protocols below.
  EFI_HII_CONFIG_ACCESS_PROTOCOL ConfigAccess;
  SetupLink Link;
  EFI_HII_HANDLE Pages;
};

extern Driver gDriver;

}  // namespace obv_setup

/// Publishes the pages and stays resident. EFI_ALREADY_STARTED when another setup
/// is there.
extern "C" EFI_STATUS EFIAPI ObvSetupEntryPoint(EFI_HANDLE imageHandle,
                                                EFI_SYSTEM_TABLE *systemTable);

/// Withdraws everything. None of the pages may be open.
extern "C" EFI_STATUS EFIAPI ObvSetupUnload(EFI_HANDLE imageHandle);
