/** @file
  The firmware's headers, which are C.
**/

#pragma once

extern "C" {
#include <PiDxe.h>

#include <Guid/MemoryAllocationHob.h>
#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/DevicePathLib.h>
#include <Library/HiiLib.h>
#include <Library/HobLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiLib.h>
#include <Protocol/Cpu.h>
#include <Protocol/FormBrowser2.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/LoadedImage.h>
#include <Protocol/ObvComponent.h>
#include <Protocol/ObvProtocol.h>
#include <Protocol/ObvSetup.h>
#include <Protocol/ShellParameters.h>
}

/// A UCS-2 literal in the firmware's character type.
inline const CHAR16 *Ucs2(const char16_t *text) { return reinterpret_cast<const CHAR16 *>(text); }
