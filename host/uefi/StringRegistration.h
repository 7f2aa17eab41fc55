/** @file
  The localized texts in the firmware's HII database.
**/

#pragma once

#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// Registers the texts of every language under OBV_STRING_PACKAGE_LIST_GUID.
/// *hiiHandle is for RemoveStrings.
[[nodiscard]] EFI_STATUS RegisterStrings(EFI_HANDLE imageHandle, EFI_HII_HANDLE *hiiHandle);

void RemoveStrings(EFI_HII_HANDLE hiiHandle);

}  // namespace obv_host
