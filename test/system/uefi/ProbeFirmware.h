/** @file
  The firmware's headers, which are C.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/DevicePathLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiLib.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/LoadedImage.h>
#include <Protocol/ObvComponent.h>
#include <Protocol/ObvProtocol.h>
#include <Protocol/ShellParameters.h>
}

/// A UCS-2 literal in the firmware's character type.
inline const CHAR16 *Ucs2(const char16_t *text) { return reinterpret_cast<const CHAR16 *>(text); }
