/** @file
  Messages over the form browser's page.
**/

#pragma once

#include "setup/portable/Callback.h"
#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {

/// Tells the user what went wrong, in their language, and waits until they have
/// read it. Firmware without popups shows nothing; its page stays as it is.
void ShowTrouble(EFI_HII_HANDLE pages, Trouble trouble);

}  // namespace obv_setup
