#include "host/sources/PciFacts.h"

namespace obv_host {

EFI_STATUS ReadAudio(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  return ReadPciDeviceAt(NodesOf(hardware.Name), facts, presence);
}

}  // namespace obv_host
