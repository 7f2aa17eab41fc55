#include "host/sources/PciFacts.h"

namespace obv_host {
namespace {

constexpr UINTN kEthernetAddressSize = 6;

/// An address of any other size is no Ethernet address, and is left out.
void TellAddress(const EFI_SIMPLE_NETWORK_MODE &mode, Facts *facts) {
  if (mode.HwAddressSize != kEthernetAddressSize) {
    return;
  }
  const UINT8 *bytes = mode.CurrentAddress.Addr;
  TellFact(facts, OBV_INFO_DESCRIPTION, "MAC address", "%02X:%02X:%02X:%02X:%02X:%02X", bytes[0],
           bytes[1], bytes[2], bytes[3], bytes[4], bytes[5]);
}

/// As the driver has seen it last.
void TellCable(const EFI_SIMPLE_NETWORK_MODE &mode, Facts *facts) {
  if (mode.MediaPresentSupported) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Connection",
             mode.MediaPresent ? "Connected" : "No cable");
  }
}

void TellNetwork(const Presence &device, Facts *facts) {
  const auto *network = static_cast<const EFI_SIMPLE_NETWORK_PROTOCOL *>(device.Interface);
  if (network->Mode == nullptr) {
    return;
  }
  // A driver may change it at any time.
  EFI_SIMPLE_NETWORK_MODE mode;
  CopyMem(&mode, network->Mode, sizeof(mode));
  TellAddress(mode, facts);
  TellCable(mode, facts);
}

}  // namespace

EFI_STATUS ReadNetwork(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  PathNodes place = NodesOf(hardware.Name);
  EFI_STATUS status = ReadPciDeviceAt(place, facts, presence);
  if (EFI_ERROR(status)) {
    return status;
  }
  Presence network;
  status = FindDevice({&gEfiSimpleNetworkProtocolGuid, place, AcceptAnything, nullptr}, &network);
  if (!EFI_ERROR(status)) {
    TellNetwork(network, facts);
  }
  return EFI_SUCCESS;
}

}  // namespace obv_host
