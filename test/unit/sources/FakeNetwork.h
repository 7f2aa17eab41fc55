// A network interface: the mode that its driver keeps.

#pragma once

#include "test/unit/sources/FakeDevice.h"

extern "C" {
#include <Protocol/SimpleNetwork.h>
}

namespace obv_host {

class FakeNetwork : public FakeDevice {
 public:
  FakeNetwork() {
    Mode.HwAddressSize = 6;
    const UINT8 address[] = {0x52, 0x54, 0x00, 0x12, 0x34, 0x56};
    std::memcpy(Mode.CurrentAddress.Addr, address, sizeof address);
    Mode.MediaPresentSupported = TRUE;
    Mode.MediaPresent = TRUE;
    Protocol.Mode = &Mode;
  }

  FakeNetwork &At(fake::Firmware &machine, fake::DevicePath path) {
    Place(machine, gEfiSimpleNetworkProtocolGuid, &Protocol, std::move(path));
    return *this;
  }

  EFI_SIMPLE_NETWORK_MODE Mode = {};
  EFI_SIMPLE_NETWORK_PROTOCOL Protocol = {};
};

}  // namespace obv_host
