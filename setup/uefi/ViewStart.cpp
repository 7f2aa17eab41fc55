#include "setup/uefi/ViewStart.h"

namespace obv_setup {
namespace {

constexpr const char16_t *kFile = u"Boardscope.efi";
constexpr const char16_t *kFolder = u"\\EFI\\Boardscope\\";
/// FILE_GUID of Boardscope.inf.
constexpr EFI_GUID kFileInFirmware = {
    0x51FFDCE4, 0xAD16, 0x41CA, {0xA9, 0xFE, 0x76, 0x8F, 0x19, 0x2F, 0x66, 0xE2}};
/// With its end; a longer path is not looked at.
constexpr UINTN kPathLimit = 512;

struct FilePath {
  CHAR16 Text[kPathLimit];
};

struct FirmwareFileNode {
  EFI_DEVICE_PATH_PROTOCOL Header;
  EFI_GUID Name;
};

EFI_LOADED_IMAGE_PROTOCOL *ImageOf(EFI_HANDLE handle) {
  EFI_LOADED_IMAGE_PROTOCOL *image = nullptr;
  EFI_STATUS status =
      gBS->HandleProtocol(handle, &gEfiLoadedImageProtocolGuid, reinterpret_cast<VOID **>(&image));
  return EFI_ERROR(status) ? nullptr : image;
}

bool IsFilePath(const EFI_DEVICE_PATH_PROTOCOL *node) {
  return DevicePathType(node) == MEDIA_DEVICE_PATH && DevicePathSubType(node) == MEDIA_FILEPATH_DP;
}

/// False when the nodes do not name a file, or one too deep down.
bool TextOf(const EFI_DEVICE_PATH_PROTOCOL *node, FilePath *path) {
  path->Text[0] = 0;
  while (!IsDevicePathEnd(node)) {
    if (!IsFilePath(node)) {
      return false;
    }
    const auto *file = reinterpret_cast<const FILEPATH_DEVICE_PATH *>(node);
    UINTN length = (DevicePathNodeLength(node) - SIZE_OF_FILEPATH_DEVICE_PATH) / sizeof(CHAR16);
    if (EFI_ERROR(StrnCatS(path->Text, kPathLimit, file->PathName, length))) {
      return false;
    }
    node = NextDevicePathNode(node);
  }
  return path->Text[0] != 0;
}

/// Puts the application's name in place of the driver's.
bool ReplaceName(FilePath *path) {
  UINTN end = 0;
  for (UINTN i = 0; path->Text[i] != 0; ++i) {
    end = path->Text[i] == u'\\' ? i + 1 : end;
  }
  path->Text[end] = 0;
  return !EFI_ERROR(StrCatS(path->Text, kPathLimit, Ucs2(kFile)));
}

bool IsFirmwareVolume(EFI_HANDLE device) {
  VOID *volume = nullptr;
  return !EFI_ERROR(gBS->HandleProtocol(device, &gEfiFirmwareVolume2ProtocolGuid, &volume));
}

/// EFI_NOT_FOUND without a path, for which there was no memory.
EFI_STATUS LoadFrom(EFI_DEVICE_PATH_PROTOCOL *path, EFI_HANDLE parent, EFI_HANDLE *loaded) {
  if (path == nullptr) {
    return EFI_NOT_FOUND;
  }
  *loaded = nullptr;
  EFI_STATUS status = gBS->LoadImage(FALSE, parent, path, nullptr, 0, loaded);
  FreePool(path);
  // This one status leaves an image behind.
  if (status == EFI_SECURITY_VIOLATION && *loaded != nullptr) {
    (void)gBS->UnloadImage(*loaded);
  }
  return status;
}

EFI_STATUS LoadFromFirmware(EFI_HANDLE volume, EFI_HANDLE parent, EFI_HANDLE *loaded) {
  FirmwareFileNode node;
  node.Header.Type = MEDIA_DEVICE_PATH;
  node.Header.SubType = MEDIA_PIWG_FW_FILE_DP;
  SetDevicePathNodeLength(&node.Header, sizeof(node));
  CopyMem(&node.Name, &kFileInFirmware, sizeof(node.Name));
  return LoadFrom(AppendDevicePathNode(DevicePathFromHandle(volume), &node.Header), parent, loaded);
}

EFI_STATUS LoadFromFolder(EFI_HANDLE parent, const EFI_LOADED_IMAGE_PROTOCOL *driver,
                          EFI_HANDLE *loaded) {
  FilePath path;
  if (driver->FilePath != nullptr && TextOf(driver->FilePath, &path) && ReplaceName(&path)) {
    EFI_STATUS status = LoadFrom(FileDevicePath(driver->DeviceHandle, path.Text), parent, loaded);
    if (status != EFI_NOT_FOUND) {
      return status;
    }
  }
  StrCpyS(path.Text, kPathLimit, Ucs2(kFolder));
  StrCatS(path.Text, kPathLimit, Ucs2(kFile));
  return LoadFrom(FileDevicePath(driver->DeviceHandle, path.Text), parent, loaded);
}

EFI_STATUS LoadView(EFI_HANDLE parent, EFI_HANDLE *loaded) {
  const EFI_LOADED_IMAGE_PROTOCOL *driver = ImageOf(parent);
  if (driver == nullptr || driver->DeviceHandle == nullptr) {
    return EFI_NOT_FOUND;
  }
  return IsFirmwareVolume(driver->DeviceHandle)
             ? LoadFromFirmware(driver->DeviceHandle, parent, loaded)
             : LoadFromFolder(parent, driver, loaded);
}

Trouble WhyNotLoaded(EFI_STATUS status) {
  switch (status) {
    case EFI_NOT_FOUND:
      return Trouble::kNoFile;
    case EFI_SECURITY_VIOLATION:
    case EFI_ACCESS_DENIED:
      return Trouble::kRefused;
    default:
      return Trouble::kFailed;
  }
}

bool HostIsThere() {
  EFI_GUID protocolGuid = OBV_PROTOCOL_GUID;
  VOID *host = nullptr;
  return !EFI_ERROR(gBS->LocateProtocol(&protocolGuid, nullptr, &host));
}

}  // namespace

EFI_STATUS ShowView(EFI_HANDLE driverImage, Trouble *trouble) {
  if (!HostIsThere()) {
    *trouble = Trouble::kNoHost;
    return EFI_NOT_READY;
  }
  EFI_HANDLE view = nullptr;
  EFI_STATUS status = LoadView(driverImage, &view);
  if (EFI_ERROR(status)) {
    *trouble = WhyNotLoaded(status);
    return status;
  }
  // The setup may run as a boot option, under a watchdog that knows nothing of users who look on.
  (void)gBS->SetWatchdogTimer(0, 0, 0, nullptr);
  status = gBS->StartImage(view, nullptr, nullptr);
  *trouble = Trouble::kFailed;
  return status;
}

}  // namespace obv_setup
