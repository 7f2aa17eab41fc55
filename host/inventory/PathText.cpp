#include "host/inventory/PathText.h"

namespace obv_host {
namespace {

/// Of a PCI root bridge and of one for PCI Express, by the ACPI specification's
/// compressed EISA numbers.
constexpr UINT32 kPciRoot = EISA_PNP_ID(0x0A03);
constexpr UINT32 kPcieRoot = EISA_PNP_ID(0x0A08);

template <typename Node>
Node Read(const PathNodes &nodes) {
  Node node;
  CopyMem(&node, nodes.Path, sizeof(node));
  return node;
}

/// Writes the first of nodes; 0 characters for one that a board cannot name.
UINTN WriteRoot(const PathNodes &nodes, CHAR8 *text, UINTN size) {
  if (!IsNode(nodes, ACPI_DEVICE_PATH, ACPI_DP, sizeof(ACPI_HID_DEVICE_PATH))) {
    return 0;
  }
  auto root = Read<ACPI_HID_DEVICE_PATH>(nodes);
  if (root.HID != kPciRoot && root.HID != kPcieRoot) {
    return 0;
  }
  return AsciiSPrint(text, size, "%a(0x%x)", root.HID == kPciRoot ? "PciRoot" : "PcieRoot",
                     root.UID);
}

UINTN WriteNode(const PathNodes &nodes, CHAR8 *text, UINTN size) {
  if (IsNode(nodes, HARDWARE_DEVICE_PATH, HW_PCI_DP, sizeof(PCI_DEVICE_PATH))) {
    auto pci = Read<PCI_DEVICE_PATH>(nodes);
    return AsciiSPrint(text, size, "/Pci(0x%x,0x%x)", pci.Device, pci.Function);
  }
  if (IsNode(nodes, MESSAGING_DEVICE_PATH, MSG_USB_DP, sizeof(USB_DEVICE_PATH))) {
    auto usb = Read<USB_DEVICE_PATH>(nodes);
    return AsciiSPrint(text, size, "/USB(0x%x,0x%x)", usb.ParentPortNumber, usb.InterfaceNumber);
  }
  if (IsNode(nodes, MESSAGING_DEVICE_PATH, MSG_SATA_DP, sizeof(SATA_DEVICE_PATH))) {
    auto sata = Read<SATA_DEVICE_PATH>(nodes);
    return AsciiSPrint(text, size, "/Sata(0x%x,0x%x,0x%x)", sata.HBAPortNumber,
                       sata.PortMultiplierPortNumber, sata.Lun);
  }
  return 0;
}

}  // namespace

bool WritePathText(const PathNodes &nodes, CHAR8 (&text)[kPathTextSize]) {
  constexpr UINTN kEndNode = sizeof(EFI_DEVICE_PATH_PROTOCOL);
  if (nodes.Path == nullptr || nodes.Size == 0 || nodes.Size + kEndNode > kHardwareNameSize) {
    return false;
  }
  UINTN length = 0;
  PathNodes rest = nodes;
  while (rest.Size != 0) {
    UINTN written = length == 0 ? WriteRoot(rest, text, sizeof(text))
                                : WriteNode(rest, text + length, sizeof(text) - length);
    if (written == 0) {
      return false;
    }
    length += written;
    UINTN size = FirstNodeSize(rest);
    rest.Path += size;
    rest.Size -= size;
  }
  return true;
}

}  // namespace obv_host
