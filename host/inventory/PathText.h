/** @file
  Device paths in the text that a board description takes.
**/

#pragma once

#include "host/sources/Devices.h"

namespace obv_host {

/// Room for the longest path that a board can name.
inline constexpr UINTN kPathTextSize = 512;

/// Writes nodes as text, "PciRoot(0x0)/Pci(0x1F,0x2)". False when a board cannot name
/// it: another node than those of PCI root bridges, PCI, USB and SATA, or too long.
bool WritePathText(const PathNodes &nodes, CHAR8 (&text)[kPathTextSize]);

}  // namespace obv_host
