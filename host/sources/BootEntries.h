/** @file
  The entries of the firmware's boot menu.
**/

#pragma once

#include "host/sources/SourceFirmware.h"

namespace obv_host {

/// What the firmware boots first: the description of the first entry of BootOrder
/// that is active, or the entry's own name when that is empty, as printable ASCII
/// in a buffer of size bytes (9 at least); a longer one is cut. Entries that are
/// missing or broken are passed over. EFI_NOT_FOUND: there is none.
EFI_STATUS FirstBootEntry(CHAR8 *name, UINTN size);

}  // namespace obv_host
