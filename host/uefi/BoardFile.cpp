#include "host/uefi/BoardFile.h"

namespace obv_host {
namespace {

constexpr const char16_t *kBoardPath = u"\\EFI\\Boardscope\\board.bin";
constexpr const char16_t *kSecureBoot = u"SecureBoot";

/// Far above any picture of 4095 x 4095 pixels, far below what would starve
/// the firmware.
constexpr UINT64 kSizeLimit = 96 * 1024 * 1024;

/// Room for the file information with the longest name FAT allows.
constexpr UINTN kFileInfoSize = SIZE_OF_EFI_FILE_INFO + 256 * sizeof(CHAR16);

struct FileInfoBuffer {
  alignas(8) UINT8 Bytes[kFileInfoSize];
};

EFI_STATUS FileSize(EFI_FILE_PROTOCOL *file, UINTN *size) {
  FileInfoBuffer buffer;
  UINTN bufferSize = sizeof(buffer.Bytes);
  EFI_STATUS status = file->GetInfo(file, &gEfiFileInfoGuid, &bufferSize, buffer.Bytes);
  if (EFI_ERROR(status)) {
    return status;
  }
  const EFI_FILE_INFO *info = reinterpret_cast<const EFI_FILE_INFO *>(buffer.Bytes);
  if ((info->Attribute & EFI_FILE_DIRECTORY) != 0) {
    return EFI_UNSUPPORTED;
  }
  if (info->FileSize == 0 || info->FileSize > kSizeLimit) {
    return EFI_BAD_BUFFER_SIZE;
  }
  *size = static_cast<UINTN>(info->FileSize);
  return EFI_SUCCESS;
}

EFI_STATUS ReadWhole(EFI_FILE_PROTOCOL *file, VOID **data, UINTN *size) {
  EFI_STATUS status = FileSize(file, size);
  if (EFI_ERROR(status)) {
    return status;
  }
  VOID *block = AllocatePool(*size);
  if (block == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  UINTN read = *size;
  status = file->Read(file, &read, block);
  if (!EFI_ERROR(status) && read != *size) {
    status = EFI_END_OF_FILE;
  }
  if (EFI_ERROR(status)) {
    FreePool(block);
    return status;
  }
  *data = block;
  return EFI_SUCCESS;
}

EFI_STATUS ReadFromVolume(EFI_HANDLE volume, VOID **data, UINTN *size) {
  EFI_SIMPLE_FILE_SYSTEM_PROTOCOL *fileSystem = nullptr;
  EFI_FILE_PROTOCOL *root = nullptr;
  EFI_FILE_PROTOCOL *file = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(volume, &gEfiSimpleFileSystemProtocolGuid,
                                          reinterpret_cast<VOID **>(&fileSystem));
  if (EFI_ERROR(status) || EFI_ERROR(fileSystem->OpenVolume(fileSystem, &root))) {
    return EFI_NOT_FOUND;
  }
  CHAR16 *path = reinterpret_cast<CHAR16 *>(const_cast<char16_t *>(kBoardPath));
  status = root->Open(root, &file, path, EFI_FILE_MODE_READ, 0);
  root->Close(root);
  if (EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  status = ReadWhole(file, data, size);
  file->Close(file);
  return status;
}

EFI_HANDLE DeviceOf(EFI_HANDLE imageHandle) {
  EFI_LOADED_IMAGE_PROTOCOL *image = nullptr;
  EFI_STATUS status = gBS->HandleProtocol(imageHandle, &gEfiLoadedImageProtocolGuid,
                                          reinterpret_cast<VOID **>(&image));
  return EFI_ERROR(status) ? nullptr : image->DeviceHandle;
}

EFI_STATUS ReadFromAnyVolume(VOID **data, UINTN *size) {
  UINTN count = 0;
  EFI_HANDLE *volumes = nullptr;
  EFI_STATUS status = gBS->LocateHandleBuffer(ByProtocol, &gEfiSimpleFileSystemProtocolGuid,
                                              nullptr, &count, &volumes);
  if (EFI_ERROR(status)) {
    return EFI_NOT_FOUND;
  }
  status = EFI_NOT_FOUND;
  for (UINTN i = 0; i < count && status == EFI_NOT_FOUND; ++i) {
    status = ReadFromVolume(volumes[i], data, size);
  }
  FreePool(volumes);
  return status;
}

/// Firmware without the variable has no Secure Boot. A variable that cannot be
/// read counts as Secure Boot.
bool SecureBootIsOn() {
  CHAR16 *name = reinterpret_cast<CHAR16 *>(const_cast<char16_t *>(kSecureBoot));
  UINT8 value = 1;
  UINTN size = sizeof(value);
  EFI_STATUS status = gRT->GetVariable(name, &gEfiGlobalVariableGuid, nullptr, &size, &value);
  if (EFI_ERROR(status)) {
    return status != EFI_NOT_FOUND;
  }
  return value != 0;
}

}  // namespace

EFI_STATUS ReadBoardFile(EFI_HANDLE imageHandle, bool anyVolume, VOID **data, UINTN *size) {
  EFI_HANDLE ownDevice = DeviceOf(imageHandle);
  EFI_STATUS status = ownDevice == nullptr ? EFI_NOT_FOUND : ReadFromVolume(ownDevice, data, size);
  if (status != EFI_NOT_FOUND || !anyVolume || SecureBootIsOn()) {
    return status;
  }
  return ReadFromAnyVolume(data, size);
}

}  // namespace obv_host
