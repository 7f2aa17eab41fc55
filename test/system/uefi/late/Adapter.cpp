#include "Adapter.h"

namespace {

EFI_HANDLE gAdapter;

/// The PCI device that an output belongs to; NULL for an output of no device.
EFI_HANDLE DeviceBehind(EFI_HANDLE output) {
  VOID *found = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(output, &gEfiDevicePathProtocolGuid, &found);
  if (EFI_ERROR(status)) {
    return nullptr;
  }
  auto *path = static_cast<EFI_DEVICE_PATH_PROTOCOL *>(found);
  EFI_HANDLE device = nullptr;
  status = gBS->LocateDevicePath(&gEfiPciIoProtocolGuid, &path, &device);
  return EFI_ERROR(status) ? nullptr : device;
}

EFI_STATUS FindAdapter(EFI_HANDLE *adapter) {
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                              &count, &handles);
  if (EFI_ERROR(status)) {
    return status;
  }
  *adapter = nullptr;
  for (UINTN i = 0; i < count && *adapter == nullptr; i++) {
    *adapter = DeviceBehind(handles[i]);
  }
  gBS->FreePool(handles);
  return *adapter == nullptr ? EFI_NOT_FOUND : EFI_SUCCESS;
}

}  // namespace

EFI_STATUS StopAdapter() {
  EFI_STATUS status = FindAdapter(&gAdapter);
  return EFI_ERROR(status) ? status : gBS->DisconnectController(gAdapter, nullptr, nullptr);
}

EFI_STATUS StartAdapter() { return gBS->ConnectController(gAdapter, nullptr, nullptr, TRUE); }
