/** @file
  The size of a disk in words.
**/

#pragma once

#include "host/portable/Facts.h"

namespace obv_host {

/// Tells a capacity as disks are sold: "512 GB", "1 TB", "1.9 TB", powers of ten.
/// Nothing for 0.
void TellCapacity(UINT64 bytes, Facts *facts);

}  // namespace obv_host
