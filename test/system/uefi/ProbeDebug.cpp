#include "ProbeDebug.h"

namespace {

EFI_LOADED_IMAGE_PROTOCOL *ImageOf(EFI_HANDLE handle) {
  void *image = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(handle, &gEfiLoadedImageProtocolGuid, &image);
  return EFI_ERROR(status) ? nullptr : static_cast<EFI_LOADED_IMAGE_PROTOCOL *>(image);
}

}  // namespace

EFI_STATUS LoadProgram(EFI_HANDLE probe, const CHAR16 *name, EFI_HANDLE *program) {
  EFI_LOADED_IMAGE_PROTOCOL *image = ImageOf(probe);
  if (image == nullptr) {
    return EFI_NOT_FOUND;
  }
  EFI_DEVICE_PATH_PROTOCOL *path = FileDevicePath(image->DeviceHandle, name);
  if (path == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  EFI_STATUS status = gBS->LoadImage(FALSE, probe, path, nullptr, 0, program);
  gBS->FreePool(path);
  return status;
}

EFI_STATUS StartForDebugger(EFI_HANDLE probe, const CHAR16 *name) {
  EFI_HANDLE program = nullptr;
  EFI_STATUS status = LoadProgram(probe, name, &program);
  if (EFI_ERROR(status)) {
    return status;
  }
  EFI_LOADED_IMAGE_PROTOCOL *image = ImageOf(program);
  if (image == nullptr) {
    return EFI_NOT_FOUND;
  }
  Print(Ucs2(u"%s is at 0x%lx\n"), name,
        static_cast<UINT64>(reinterpret_cast<UINTN>(image->ImageBase)));
  status = WaitForKey();
  return EFI_ERROR(status) ? status : gBS->StartImage(program, nullptr, nullptr);
}

EFI_STATUS WaitForKey() {
  UINTN index = 0;
  EFI_STATUS status = gBS->WaitForEvent(1, &gST->ConIn->WaitForKey, &index);
  if (EFI_ERROR(status)) {
    return status;
  }
  EFI_INPUT_KEY key = {};
  return gST->ConIn->ReadKeyStroke(gST->ConIn, &key);
}
