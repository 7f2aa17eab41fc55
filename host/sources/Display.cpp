#include "host/sources/Display.h"

#include "host/sources/PciFacts.h"

namespace obv_host {
namespace {

void TellMode(const PathNodes &place, Facts *facts) {
  Presence output;
  EFI_STATUS status =
      FindDevice({&gEfiGraphicsOutputProtocolGuid, place, AcceptAnything, nullptr}, &output);
  if (EFI_ERROR(status)) {
    return;
  }
  const auto *gop = static_cast<const EFI_GRAPHICS_OUTPUT_PROTOCOL *>(output.Interface);
  if (gop->Mode != nullptr && gop->Mode->Info != nullptr) {
    TellFact(facts, OBV_INFO_DESCRIPTION, "Resolution", "%u x %u",
             gop->Mode->Info->HorizontalResolution, gop->Mode->Info->VerticalResolution);
  }
}

}  // namespace

EFI_STATUS ReadDisplay(const BoardHardware &hardware, Facts *facts, Presence *presence) {
  PathNodes place = NodesOf(hardware.Name);
  EFI_STATUS status = ReadPciDeviceAt(place, facts, presence);
  if (!EFI_ERROR(status)) {
    TellMode(place, facts);
  }
  return status;
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
