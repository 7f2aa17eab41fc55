#include "resources/ComponentIntake.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "resources/BoardImage.h"

ComponentState gComponents;

EFI_STATUS ParseComponents() {
  OBV_PROTOCOL *host = gHost.Protocol;
  VOID *picture = nullptr;
  UINTN pictureSize = 0;
  EFI_STATUS status = host->GetResourceData(host, &picture, &pictureSize);
  if (EFI_ERROR(status)) {
    return status;
  }
  UINT32 height = 0;
  UINT32 width = 0;
  status = GetPngHeightAndWidth(picture, pictureSize, &height, &width);
  if (EFI_ERROR(status)) {
    return status;
  }
  return host->ParseComponents(
      host, &gComponents.Components, static_cast<UINT16>(height), static_cast<UINT16>(width),
      gGeometry.ViewHeight, gGeometry.ViewWidth, kPictureShare, gGeometry.ScaleX, gGeometry.ScaleY);
}

EFI_STATUS GetComponentData() {
  EFI_STATUS status = ParseComponents();
  if (EFI_ERROR(status)) {
    LogOperationError("GetComponentData", status);
    return status;
  }
  for (UINTN i = 0; i < ComponentCount(); ++i) {
    RefreshComponentStatus(i);
  }
  return gHost.Protocol->FinishParse(gHost.Protocol);
}

void RefreshComponentStatus(UINTN index) {
  if (index >= ComponentCount()) {
    return;
  }
  OBV_COMPONENT &component = ComponentAt(index);
  // NotReady and NoMapping deliberately stay for the rest of the run.
  component.Available = 0;
  component.DeviceError = 0;
  EFI_STATUS status =
      gHost.Protocol->QueryComponentStatus(gHost.Protocol, component.Name, component.Type,
                                           OBV_INFO_CAPACITY, &component.InfoCount, component.Info);
  switch (status) {
    case EFI_SUCCESS:
      component.Available = 1;
      break;
    case EFI_NO_MAPPING:
      component.NoMapping = 1;
      break;
    case EFI_NOT_READY:
      component.NotReady = 1;
      break;
    case EFI_DEVICE_ERROR:
      component.DeviceError = 1;
      break;
    default:
      break;
  }
}

UINT16 ComponentCount() {
  return gComponents.Components == nullptr ? 0 : gHost.SharedState->ComponentCount;
}

OBV_COMPONENT &ComponentAt(UINTN index) { return gComponents.Components[index]; }

UINTN InfoCountOf(const OBV_COMPONENT &component) {
  return static_cast<UINTN>(MIN(component.InfoCount, static_cast<UINT64>(OBV_INFO_CAPACITY)));
}
