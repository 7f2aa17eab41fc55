#include "test/firmware/DevicePath.h"

namespace fake {

namespace {

constexpr size_t kHeaderSize = sizeof(EFI_DEVICE_PATH_PROTOCOL);

size_t NodeLength(const uint8_t *node) { return node[2] | static_cast<size_t>(node[3]) << 8; }

}  // namespace

size_t DevicePathSizeWithoutEnd(const EFI_DEVICE_PATH_PROTOCOL *path) {
  const auto *bytes = reinterpret_cast<const uint8_t *>(path);
  size_t size = 0;
  while (bytes[size] != END_DEVICE_PATH_TYPE) {
    size += NodeLength(bytes + size);
  }
  return size;
}

DevicePath &DevicePath::Node(UINT8 type, UINT8 subType, const std::vector<uint8_t> &body) {
  size_t length = kHeaderSize + body.size();
  bytes_.insert(bytes_.end(), {type, subType, static_cast<uint8_t>(length & 0xFF),
                               static_cast<uint8_t>(length >> 8)});
  bytes_.insert(bytes_.end(), body.begin(), body.end());
  return *this;
}

template <typename T>
DevicePath &DevicePath::Append(T node, UINT8 type, UINT8 subType) {
  const auto *bytes = reinterpret_cast<const uint8_t *>(&node);
  return Node(type, subType, {bytes + kHeaderSize, bytes + sizeof node});
}

DevicePath &DevicePath::PciRoot(UINT32 uid) {
  ACPI_HID_DEVICE_PATH node{};
  node.HID = EISA_PNP_ID(0x0A03);
  node.UID = uid;
  return Append(node, ACPI_DEVICE_PATH, ACPI_DP);
}

DevicePath &DevicePath::Pci(UINT8 device, UINT8 function) {
  PCI_DEVICE_PATH node{};
  node.Device = device;
  node.Function = function;
  return Append(node, HARDWARE_DEVICE_PATH, HW_PCI_DP);
}

DevicePath &DevicePath::Usb(UINT8 port, UINT8 interface) {
  USB_DEVICE_PATH node{};
  node.ParentPortNumber = port;
  node.InterfaceNumber = interface;
  return Append(node, MESSAGING_DEVICE_PATH, MSG_USB_DP);
}

DevicePath &DevicePath::Sata(UINT16 port) {
  SATA_DEVICE_PATH node{};
  node.HBAPortNumber = port;
  node.PortMultiplierPortNumber = 0xFFFF;
  return Append(node, MESSAGING_DEVICE_PATH, MSG_SATA_DP);
}

DevicePath &DevicePath::HardDrive(UINT32 partition) {
  HARDDRIVE_DEVICE_PATH node{};
  node.PartitionNumber = partition;
  node.PartitionStart = 2048 * partition;
  node.PartitionSize = 1 << 20;
  node.MBRType = MBR_TYPE_PCAT;
  node.SignatureType = SIGNATURE_TYPE_MBR;
  return Append(node, MEDIA_DEVICE_PATH, MEDIA_HARDDRIVE_DP);
}

DevicePath &DevicePath::Display(UINT32 address) {
  ACPI_ADR_DEVICE_PATH node{};
  node.ADR = address;
  return Append(node, ACPI_DEVICE_PATH, ACPI_ADR_DP);
}

EFI_DEVICE_PATH_PROTOCOL *DevicePath::Get() {
  finished_ = bytes_;
  finished_.insert(finished_.end(), {END_DEVICE_PATH_TYPE, END_ENTIRE_DEVICE_PATH_SUBTYPE, 4, 0});
  return reinterpret_cast<EFI_DEVICE_PATH_PROTOCOL *>(finished_.data());
}

}  // namespace fake
