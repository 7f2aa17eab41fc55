#include "host/sources/PciFacts.h"

namespace obv_host {
namespace {

/// Device and function, which the path's last node gives.
UINT32 AddressOf(const Presence &device) {
  PathNodes nodes = NodesOfDevice(device);
  if (nodes.Path == nullptr || nodes.Size == 0) {
    return MAX_UINT32;
  }
  PathNodes last;
  WithoutLast(nodes, &last);
  if (!AcceptPciNode(last, nullptr)) {
    return MAX_UINT32;
  }
  PCI_DEVICE_PATH node;
  CopyMem(&node, last.Path, sizeof(node));
  return static_cast<UINT32>(node.Device) << 8 | node.Function;
}

/// The one of the lowest device and function speaks for all: a card's main function is
/// its first.
UINTN FirstFunction(const Presence *functions, UINTN count) {
  UINTN first = 0;
  for (UINTN i = 1; i < count; ++i) {
    if (AddressOf(functions[i]) < AddressOf(functions[first])) {
      first = i;
    }
  }
  return first;
}

}  // namespace

EFI_STATUS ReadPcie(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  Presence functions[kDeviceLimit];
  UINTN count =
      FindDevices({&gEfiPciIoProtocolGuid, NodesOf(hardware.Name), AcceptPciNode, nullptr},
                  functions, kDeviceLimit);
  if (count == 0) {
    return EFI_NOT_FOUND;
  }
  EFI_STATUS status = ReadPciDevice(functions[FirstFunction(functions, count)], facts, presence);
  if (status == EFI_SUCCESS && count > 1) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Functions", "%u", static_cast<UINT32>(count));
  }
  return status;
}

}  // namespace obv_host
