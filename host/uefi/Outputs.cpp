#include "host/uefi/Outputs.h"

namespace obv_host {
namespace {

EFI_GRAPHICS_OUTPUT_PROTOCOL *OutputOf(EFI_HANDLE handle) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = nullptr;
  EFI_STATUS status =
      gBS->HandleProtocol(handle, &gEfiGraphicsOutputProtocolGuid, reinterpret_cast<VOID **>(&gop));
  if (EFI_ERROR(status) || gop == nullptr || gop->Mode == nullptr || gop->Mode->Info == nullptr) {
    return nullptr;
  }
  return gop;
}

bool IsDevice(EFI_HANDLE handle) {
  VOID *devicePath = nullptr;
  return !EFI_ERROR(gBS->HandleProtocol(handle, &gEfiDevicePathProtocolGuid, &devicePath));
}

EFI_GRAPHICS_OUTPUT_PROTOCOL *FirstOutput(const EFI_HANDLE *handles, UINTN count) {
  EFI_GRAPHICS_OUTPUT_PROTOCOL *first = nullptr;
  for (UINTN i = 0; i < count; ++i) {
    EFI_GRAPHICS_OUTPUT_PROTOCOL *gop = OutputOf(handles[i]);
    if (gop != nullptr && IsDevice(handles[i])) {
      return gop;
    }
    first = first == nullptr ? gop : first;
  }
  return first;
}

}  // namespace

EFI_STATUS FindOutput(EFI_GRAPHICS_OUTPUT_PROTOCOL **gop) {
  *gop = gST->ConsoleOutHandle == nullptr ? nullptr : OutputOf(gST->ConsoleOutHandle);
  if (*gop != nullptr) {
    return EFI_SUCCESS;
  }
  UINTN count = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiGraphicsOutputProtocolGuid, nullptr,
                                              &count, &handles);
  if (EFI_ERROR(status)) {
    return status;
  }
  *gop = FirstOutput(handles, count);
  gBS->FreePool(handles);
  return *gop == nullptr ? EFI_NOT_FOUND : EFI_SUCCESS;
}

}  // namespace obv_host
