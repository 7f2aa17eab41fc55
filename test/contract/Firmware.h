/** @file
  The firmware's headers, which are C.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Guid/FileInfo.h>
#include <Guid/FileSystemInfo.h>
#include <Guid/GlobalVariable.h>
#include <Library/BaseLib.h>
#include <Library/PrintLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Library/UefiRuntimeServicesTableLib.h>
#include <Protocol/AbsolutePointer.h>
#include <Protocol/GraphicsOutput.h>
#include <Protocol/SimpleFileSystem.h>
#include <Protocol/SimplePointer.h>
}

/// A UCS-2 literal in the firmware's character type.
inline CHAR16 *Ucs2(const char16_t *text) {
  return const_cast<CHAR16 *>(reinterpret_cast<const CHAR16 *>(text));
}
