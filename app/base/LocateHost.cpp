#include "app/base/LocateHost.h"

#include "app/base/Firmware.h"
#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/LocalizedStrings.h"

namespace {

constexpr CHAR8 kOperation[] = "InitializeObvProtocol";

EFI_STATUS ChooseGraphicsOutput() {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = gHost.SharedState->Gop;
  if (gop == nullptr) {
    EFI_STATUS status = gHost.Protocol->GetGop(gHost.Protocol, &gop);
    if (EFI_ERROR(status)) {
      return status;
    }
    // A host that answers success without an output would have us start blind.
    if (gop == nullptr) {
      return EFI_NOT_FOUND;
    }
  }
  gHost.Gop = gop;
  return EFI_SUCCESS;
}

}  // namespace

EFI_STATUS InitializeObvProtocol() {
  EFI_GUID guid = OBV_PROTOCOL_GUID;
  VOID *interface = nullptr;
  EFI_STATUS status = gBS->LocateProtocol(&guid, nullptr, &interface);
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
    return status;
  }
  gHost.Protocol = static_cast<OBV_PROTOCOL *>(interface);
  gHost.SharedState = gHost.Protocol->SharedState;
  if (gHost.SharedState == nullptr) {
    // A host without its record is none: everything else would write to address 0.
    LogOperationError(kOperation, EFI_NOT_FOUND);
    return EFI_NOT_FOUND;
  }

  status = ChooseGraphicsOutput();
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
    return status;
  }

  const EFI_GRAPHICS_OUTPUT_MODE_INFORMATION *mode = gHost.Gop->Mode->Info;
  gGeometry.PreviousWidth = static_cast<UINT16>(mode->HorizontalResolution);
  gGeometry.PreviousHeight = static_cast<UINT16>(mode->VerticalResolution);
  LogInfo("previous resolution: %d %d\n", gGeometry.PreviousWidth, gGeometry.PreviousHeight);
  return LoadLocalizedStrings();
}
