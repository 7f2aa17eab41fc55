/** @file
  The resident driver: everything that lives from load to unload.
**/

#pragma once

#include "setup/uefi/ConfigAccess.h"

namespace obv_setup {

extern ConfigAccess gAccess;

}  // namespace obv_setup

/// Publishes the pages and stays resident. EFI_ALREADY_STARTED when another setup
/// is there.
extern "C" EFI_STATUS EFIAPI ObvSetupEntryPoint(EFI_HANDLE imageHandle,
                                                EFI_SYSTEM_TABLE *systemTable);

/// Withdraws everything. None of the pages may be open.
extern "C" EFI_STATUS EFIAPI ObvSetupUnload(EFI_HANDLE imageHandle);
