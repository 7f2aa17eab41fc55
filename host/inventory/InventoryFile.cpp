#include "host/inventory/InventoryFile.h"

#include "host/inventory/Inventory.h"

extern "C" {
#include <Protocol/LoadedImage.h>
#include <Protocol/SimpleFileSystem.h>
}

namespace obv_host {
namespace {

constexpr const char16_t *kFileName = u"inventory.yaml";
/// Some 500 pieces of hardware.
constexpr UINTN kTextSize = 128 * 1024;

EFI_STATUS OpenOwnVolume(EFI_HANDLE imageHandle, EFI_FILE_PROTOCOL **root) {
  EFI_LOADED_IMAGE_PROTOCOL *image = nullptr;
  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *fileSystem = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(imageHandle, &gEfiLoadedImageProtocolGuid,
                                          reinterpret_cast<VOID **>(&image));
  if (EFI_ERROR(status)) {
    return status;
  }
  status = gBS->HandleProtocol(image->DeviceHandle, &gEfiSimpleFileSystemProtocolGuid,
                               reinterpret_cast<VOID **>(&fileSystem));
  return EFI_ERROR(status) ? status : fileSystem->OpenVolume(fileSystem, root);
}

/// A longer file from earlier would leave its end behind.
void DeleteOld(EFI_FILE_PROTOCOL *root, CHAR16 *name) {
  EFI_FILE_PROTOCOL *file = nullptr;
  EFI_STATUS status = root->Open(root, &file, name, EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE, 0);
  if (!EFI_ERROR(status)) {
    file->Delete(file);
  }
}

EFI_STATUS WriteFile(EFI_FILE_PROTOCOL *root, const InventoryText &text) {
  CHAR16 *name = reinterpret_cast<CHAR16 *>(const_cast<char16_t *>(kFileName));
  constexpr UINT64 kAnew = EFI_FILE_MODE_READ | EFI_FILE_MODE_WRITE | EFI_FILE_MODE_CREATE;
  DeleteOld(root, name);
  EFI_FILE_PROTOCOL *file = nullptr;
  EFI_STATUS status = root->Open(root, &file, name, kAnew, 0);
  if (EFI_ERROR(status)) {
    return status;
  }
  UINTN size = text.Length;
  status = file->Write(file, &size, text.Bytes);
  EFI_STATUS closed = file->Close(file);
  if (!EFI_ERROR(status) && size != text.Length) {
    status = EFI_VOLUME_FULL;
  }
  return EFI_ERROR(status) ? status : closed;
}

EFI_STATUS WriteAll(EFI_HANDLE imageHandle, InventoryWork *work, CHAR8 *bytes) {
  EFI_FILE_PROTOCOL *root = nullptr;
  EFI_STATUS status = OpenOwnVolume(imageHandle, &root);
  if (EFI_ERROR(status)) {
    return status;
  }
  InventoryText text = {.Bytes = bytes, .Size = kTextSize, .Length = 0, .Full = false};
  WriteInventory(work, &text);
  status = WriteFile(root, text);
  root->Close(root);
  return !EFI_ERROR(status) && text.Full ? EFI_BUFFER_TOO_SMALL : status;
}

void Release(void *memory) {
  if (memory != nullptr) {
    FreePool(memory);
  }
}

}  // namespace

EFI_STATUS WriteInventoryFile(EFI_HANDLE imageHandle) {
  auto *work = static_cast<InventoryWork *>(AllocateZeroPool(sizeof(InventoryWork)));
  auto *bytes = static_cast<CHAR8 *>(AllocatePool(kTextSize));
  EFI_STATUS status = EFI_OUT_OF_RESOURCES;
  if (work != nullptr && bytes != nullptr) {
    status = WriteAll(imageHandle, work, bytes);
  }
  Release(work);
  Release(bytes);
  return status;
}

}  // namespace obv_host
