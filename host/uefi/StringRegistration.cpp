#include "host/uefi/StringRegistration.h"

#include "host/portable/Texts.h"

namespace obv_host {

EFI_STATUS RegisterStrings(EFI_HANDLE imageHandle, EFI_HII_HANDLE *hiiHandle) {
  EFI_GUID packageListGuid = OBV_STRING_PACKAGE_LIST_GUID;
  UINT8 *packages = static_cast<UINT8 *>(AllocatePool(StringPackagesSize()));
  if (packages == nullptr) {
    return EFI_OUT_OF_RESOURCES;
  }
  WriteStringPackages(packages);
  // The database copies the packages.
  *hiiHandle = HiiAddPackages(&packageListGuid, imageHandle, packages, nullptr);
  FreePool(packages);
  return *hiiHandle == nullptr ? EFI_OUT_OF_RESOURCES : EFI_SUCCESS;
}

void RemoveStrings(EFI_HII_HANDLE hiiHandle) {
  if (hiiHandle != nullptr) {
    HiiRemovePackages(hiiHandle);
  }
}

}  // namespace obv_host
