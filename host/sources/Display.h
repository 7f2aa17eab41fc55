/** @file
  What the display source tells to others.
**/

#pragma once

#include "host/sources/SourceFirmware.h"

namespace obv_host {

/// The name of the first display controller; EFI_NOT_FOUND without one.
EFI_STATUS DisplayName(CHAR8 *name, UINTN size);

}  // namespace obv_host
