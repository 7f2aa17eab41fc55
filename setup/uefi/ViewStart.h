/** @file
  Starting the application from where the setup's driver came from.
**/

#pragma once

#include "setup/portable/Callback.h"
#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {

/// Loads Boardscope.efi and returns when the user has left it. It lies in the
/// firmware volume that the driver lies in; or in the driver's folder; or else in
/// \EFI\Boardscope of the driver's volume. With an error, *trouble says what to
/// tell the user.
[[nodiscard]] EFI_STATUS ShowView(EFI_HANDLE driverImage, Trouble *trouble);

}  // namespace obv_setup
