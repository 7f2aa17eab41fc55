/** @file
  The board that a user brings along on a disk.
**/

#pragma once

#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// Reads \EFI\Boardscope\board.bin from the volume that the driver was loaded
/// from or, failing that, from the first other volume that has it. *data is a
/// pool block for the caller to free. EFI_NOT_FOUND when no volume has the
/// file; otherwise the status of the first volume that has it.
[[nodiscard]] EFI_STATUS ReadBoardFile(EFI_HANDLE imageHandle, VOID **data, UINTN *size);

}  // namespace obv_host
