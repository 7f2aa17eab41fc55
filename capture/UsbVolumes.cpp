#include "capture/UsbVolumes.h"

#include "app/base/HostClient.h"
#include "app/base/LowBytes.h"
#include "app/base/MemoryPool.h"

namespace {

constexpr CHAR8 kOperation[] = "GetRootDirectoryFileHandle";

// One entry stays NULL as the end of the list.
constexpr UINTN kVolumeLimit = kMaxVolumes - 1;

bool IsUsbNode(const EFI_DEVICE_PATH_PROTOCOL *node) {
  return DevicePathType(node) == MESSAGING_DEVICE_PATH && DevicePathSubType(node) == MSG_USB_DP;
}

bool IsOnUsb(EFI_HANDLE handle) {
  VOID *interface = nullptr;
  if (EFI_ERROR(gBS->HandleProtocol(handle, &gEfiDevicePathProtocolGuid, &interface))) {
    return false;
  }
  auto *node = static_cast<EFI_DEVICE_PATH_PROTOCOL *>(interface);
  // A node shorter than its own header would never lead to the end.
  while (!IsDevicePathEndType(node) && DevicePathNodeLength(node) >= sizeof(*node)) {
    if (IsUsbNode(node)) {
      return true;
    }
    node = NextDevicePathNode(node);
  }
  return false;
}

EFI_STATUS ReadInfo(EFI_FILE_PROTOCOL *root, EFI_FILE_SYSTEM_INFO *info) {
  ZeroMem(info, kFileSystemInfoSize);
  UINTN size = kFileSystemInfoSize;
  return root->GetInfo(root, &gEfiFileSystemInfoGuid, &size, info);
}

/// The opened root of a file system that tells about itself; NULL otherwise.
EFI_FILE_PROTOCOL *OpenRoot(EFI_HANDLE handle, EFI_FILE_SYSTEM_INFO *info) {
  VOID *interface = nullptr;
  if (EFI_ERROR(gBS->HandleProtocol(handle, &gEfiSimpleFileSystemProtocolGuid, &interface))) {
    return nullptr;
  }
  auto *fileSystem = static_cast<EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *>(interface);
  EFI_FILE_PROTOCOL *root = nullptr;
  if (EFI_ERROR(fileSystem->OpenVolume(fileSystem, &root))) {
    return nullptr;
  }
  if (EFI_ERROR(ReadInfo(root, info))) {
    (void)root->Close(root);
    return nullptr;
  }
  return root;
}

EFI_STATUS ListVolumes(VolumeList *volumes, EFI_FILE_SYSTEM_INFO *info) {
  UINTN handleCount = 0;
  EFI_HANDLE *handles = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiSimpleFileSystemProtocolGuid,
                                              nullptr, &handleCount, &handles);
  if (EFI_ERROR(status)) {
    LogOperationError(kOperation, status);
    return status;
  }
  UINTN used = 0;
  for (UINTN i = 0; i < handleCount && used < kVolumeLimit; ++i) {
    EFI_FILE_PROTOCOL *root = IsOnUsb(handles[i]) ? OpenRoot(handles[i], info) : nullptr;
    if (root != nullptr) {
      volumes->Roots[used++] = root;
    }
  }
  (void)gBS->FreePool(handles);
  return used > 0 ? EFI_SUCCESS : EFI_NOT_FOUND;
}

}  // namespace

EFI_STATUS GetRootDirectoryFileHandle(VolumeList *volumes) {
  if (volumes == nullptr) {
    return EFI_INVALID_PARAMETER;
  }
  auto *info = static_cast<EFI_FILE_SYSTEM_INFO *>(malloc(kFileSystemInfoSize));
  if (info == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  EFI_STATUS status = ListVolumes(volumes, info);
  free(info);
  return status;
}

void CloseVolumes(VolumeList *volumes, UINTN first) {
  for (UINTN i = first; i < kMaxVolumes && volumes->Roots[i] != nullptr; ++i) {
    (void)volumes->Roots[i]->Close(volumes->Roots[i]);
    volumes->Roots[i] = nullptr;
  }
}

void DescribeVolume(EFI_FILE_PROTOCOL *root, CHAR8 *label, UINTN labelSize, UINT64 *size) {
  label[0] = 0;
  *size = 0;
  // Two bytes more than are read, so that a full label still ends.
  auto *info = static_cast<EFI_FILE_SYSTEM_INFO *>(malloc(kFileSystemInfoSize + sizeof(CHAR16)));
  if (info == nullptr) {
    return;
  }
  // A volume that was pulled out meanwhile keeps its place, without a label.
  (void)ReadInfo(root, info);
  CopyLowBytes(info->VolumeLabel, label, labelSize);
  *size = info->VolumeSize;
  free(info);
}
