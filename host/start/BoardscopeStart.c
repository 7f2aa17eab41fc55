/** @file
  Starts the board view from the firmware volume that this application lies in: a boot option for
  platforms whose setup does not start the view itself.
**/

#include <Uefi.h>

#include <Library/DevicePathLib.h>
#include <Library/MemoryAllocationLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiLib.h>

#include <Protocol/LoadedImage.h>

STATIC EFI_STATUS StartBoardView(IN EFI_HANDLE ImageHandle) {
  EFI_LOADED_IMAGE_PROTOCOL *Self;
  MEDIA_FW_VOL_FILEPATH_DEVICE_PATH File;
  EFI_DEVICE_PATH_PROTOCOL *Path;
  EFI_HANDLE View = NULL;
  EFI_STATUS Status;

  Status = gBS->HandleProtocol(ImageHandle, &gEfiLoadedImageProtocolGuid, (VOID **)&Self);
  if (EFI_ERROR(Status)) {
    return Status;
  }
  EfiInitializeFwVolDevicepathNode(&File, &gBoardscopeFileGuid);
  Path = AppendDevicePathNode(DevicePathFromHandle(Self->DeviceHandle), &File.Header);
  if (Path == NULL) {
    return EFI_OUT_OF_RESOURCES;
  }
  Status = gBS->LoadImage(FALSE, ImageHandle, Path, NULL, 0, &View);
  FreePool(Path);
  return EFI_ERROR(Status) ? Status : gBS->StartImage(View, NULL, NULL);
}

EFI_STATUS EFIAPI BoardscopeStartEntryPoint(IN EFI_HANDLE ImageHandle,
                                            IN EFI_SYSTEM_TABLE *SystemTable) {
  // The boot manager has set it for an operating system's loader: five minutes, then a reset.
  (VOID) gBS->SetWatchdogTimer(0, 0, 0, NULL);
  return StartBoardView(ImageHandle);
}
