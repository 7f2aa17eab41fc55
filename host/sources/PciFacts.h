/** @file
  What every PCI device tells of itself.
**/

#pragma once

#include "host/sources/Devices.h"

namespace obv_host {

/// The start of a device's configuration space.
struct PciIdentity {
  UINT16 Vendor;
  UINT16 Device;
  UINT8 BaseClass;
  UINT8 SubClass;
};

/// Reads it from a device that was found by its PciIo. EFI_NOT_FOUND: the device has
/// left, all its bits read as one; another error: it cannot be read.
[[nodiscard]] EFI_STATUS ReadPciIdentity(const Presence &device, PciIdentity *identity);

/// Tells type, maker and numbers.
void TellPciIdentity(const PciIdentity &identity, Facts *facts);

/// Tells speed and width of the link, now and possible; nothing of a device without
/// a link.
void TellPciLink(const Presence &device, Facts *facts);

/// Both for a device that was found by its PciIo; becomes presence unless it has left.
/// The answers are those of a source.
[[nodiscard]] EFI_STATUS ReadPciDevice(const Presence &device, Facts *facts, Presence *presence);

/// The same for the device at a PCI device path.
[[nodiscard]] EFI_STATUS ReadPciDeviceAt(const PathNodes &place, Facts *facts, Presence *presence);

/// "Intel Ethernet controller"; the numbers when the maker is not known.
void PrintPciName(const PciIdentity &identity, CHAR8 *name, UINTN size);

}  // namespace obv_host
