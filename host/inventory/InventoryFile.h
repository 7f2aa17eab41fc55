/** @file
  The inventory as a program: run in a UEFI Shell, it leaves a file behind.
**/

#pragma once

#include "host/sources/SourceFirmware.h"

namespace obv_host {

/// Writes inventory.yaml anew into the root of the volume that the image was loaded
/// from. EFI_BUFFER_TOO_SMALL: more hardware than there is room for; the file holds
/// what was found first.
[[nodiscard]] EFI_STATUS WriteInventoryFile(EFI_HANDLE imageHandle);

}  // namespace obv_host
