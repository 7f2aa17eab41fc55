/** @file
  Choosing the graphics output that the view is drawn on.
**/

#pragma once

#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// The output that the setup screen is on: the one of the console output
/// handle, else the first one that stands for a device, else the first one at
/// all. EFI_NOT_FOUND when there is none with a mode.
[[nodiscard]] EFI_STATUS FindOutput(EFI_GRAPHICS_OUTPUT_PROTOCOL **gop);

}  // namespace obv_host
