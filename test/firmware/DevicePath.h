// Device paths made of the few node types that the tests need.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

/// Bytes of a device path up to its end node, the end node excluded.
size_t DevicePathSizeWithoutEnd(const EFI_DEVICE_PATH_PROTOCOL *path);

class DevicePath {
 public:
  DevicePath &PciRoot(UINT32 uid = 0);
  DevicePath &Pci(UINT8 device, UINT8 function = 0);
  DevicePath &Usb(UINT8 port, UINT8 interface = 0);
  DevicePath &Sata(UINT16 port);
  DevicePath &HardDrive(UINT32 partition);
  DevicePath &Display(UINT32 address);
  /// Any node: type, sub-type and the bytes after its header.
  DevicePath &Node(UINT8 type, UINT8 subType, const std::vector<uint8_t> &body);

  /// The path with its end node. Valid until the next node is added.
  EFI_DEVICE_PATH_PROTOCOL *Get();

 private:
  template <typename T>
  DevicePath &Append(T node, UINT8 type, UINT8 subType);

  std::vector<uint8_t> bytes_;
  std::vector<uint8_t> finished_;
};

}  // namespace fake
