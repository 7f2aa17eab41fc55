#include "host/sources/Display.h"

#include "host/sources/PciFacts.h"

namespace obv_host {

/// Nothing of its mode: the view changes that after it has asked.
EFI_STATUS ReadDisplay(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  return ReadPciDeviceAt(NodesOf(hardware.Name), facts, presence);
}

EFI_STATUS DisplayName(CHAR8 *name, UINTN size) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status =
      gBS->LocateHandleBuffer(ByProtocol, &gEfiPciIoProtocolGuid, nullptr, &count, &handles);
  if (EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  PciIdentity identity = {};
  for (UINTN i = 0; i < count && identity.BaseClass != PCI_CLASS_DISPLAY; ++i) {
    Presence device = {handles[i], &gEfiPciIoProtocolGuid, nullptr};
    status = gBS->HandleProtocol(handles[i], &gEfiPciIoProtocolGuid, &device.Interface);
    if (EFI_ERROR(status) || device.Interface == nullptr ||
        EFI_ERROR(ReadPciIdentity(device, &identity))) {
      identity = {};
    }
  }
  gBS->FreePool(handles);
  if (identity.BaseClass != PCI_CLASS_DISPLAY) {
    return EFI_NOT_FOUND;
  }
  PrintPciName(identity, name, size);
  return EFI_SUCCESS;
}

}  // namespace obv_host
