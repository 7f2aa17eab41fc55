/** @file
  EDK2's headers, seen from C++.

  Everything the application uses of the firmware comes in through this one
  file: UEFI types, the services tables, and EDK2's libraries.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/DevicePathLib.h>
#include <Library/HiiLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiHiiServicesLib.h>
#include <Library/UefiLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>

#include <Guid/FileSystemInfo.h>
#include <Protocol/AbsolutePointer.h>
#include <Protocol/DevicePath.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/SimpleFileSystem.h>
#include <Protocol/SimplePointer.h>

#include <Protocol/ObvProtocol.h>
#include <Protocol/VeltSetupEventHandler.h>
}

/// A UCS-2 literal in the firmware's character type.
inline const CHAR16 *Ucs2(const char16_t *text) { return reinterpret_cast<const CHAR16 *>(text); }
