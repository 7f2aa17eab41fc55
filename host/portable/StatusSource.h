/** @file
  Who answers QueryComponentStatus: the hardware that the component names, else
  the board's description.
**/

#pragma once

#include "host/portable/HostRecord.h"

namespace obv_host {

/// The answer for the component of host's board with this name and category;
/// EFI_NOT_FOUND, with no lines, when the board has none. Writes at most capacity
/// lines to infos: those of the hardware, then those of the description; *infoCount
/// is their number. Entries beyond it are zeroed up to capacity.
EFI_STATUS QueryStatus(Host *host, const CHAR16 *name, UINT32 type, UINTN capacity,
                       UINT64 *infoCount, OBV_COMPONENT_INFO *infos);

}  // namespace obv_host
