/** @file
  The board that a user brings along on a disk.
**/

#pragma once

#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// Reads \EFI\Boardscope\board.bin from the volume that the driver was loaded
/// from. With anyVolume, and never under Secure Boot, the first other volume
/// that has the file stands in. *data is a pool block for the caller to free.
/// EFI_NOT_FOUND when there is no such file; otherwise the status of the volume
/// that has it.
[[nodiscard]] EFI_STATUS ReadBoardFile(EFI_HANDLE imageHandle, bool anyVolume, VOID **data,
                                       UINTN *size);

}  // namespace obv_host
