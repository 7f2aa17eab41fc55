/** @file
  EDK2's headers with the services that the driver side of the setup uses.
**/

#pragma once

extern "C" {
#include <Uefi.h>

// For the protocol of firmware volumes.
#include <PiDxe.h>

#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/DevicePathLib.h>
#include <Library/HiiLib.h>
#include <Library/MemoryAllocationLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiHiiServicesLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include <Guid/GlobalVariable.h>
#include <Protocol/DevicePath.h>
#include <Protocol/FirmwareVolume2.h>
#include <Protocol/HiiConfigAccess.h>
#include <Protocol/HiiConfigRouting.h>
#include <Protocol/HiiPopup.h>
#include <Protocol/LoadedImage.h>
#include <Protocol/ObvProtocol.h>
#include <Protocol/ObvSetup.h>
}

namespace obv_setup {

/// A UCS-2 literal as firmware's functions take it, who do not write to it.
inline CHAR16 *Ucs2(const char16_t *text) {
  return reinterpret_cast<CHAR16 *>(const_cast<char16_t *>(text));
}

}  // namespace obv_setup
