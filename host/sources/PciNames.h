/** @file
  Words for the numbers by which PCI devices call themselves.
**/

#pragma once

#include "host/portable/Firmware.h"

namespace obv_host {

/// The maker's name; NULL for one that is not known.
const CHAR8 *PciVendorName(UINT16 vendor);

/// What the device is, by its base class and subclass: "Ethernet controller". Never
/// NULL.
const CHAR8 *PciClassName(UINT8 baseClass, UINT8 subClass);

}  // namespace obv_host
