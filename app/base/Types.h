/** @file
  UEFI's types and the contract with the host, for files that call no firmware.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Protocol/ObvProtocol.h>
#include <Protocol/VeltSetupEventHandler.h>
}

/// A UCS-2 literal in the firmware's character type.
inline const CHAR16 *Ucs2(const char16_t *text) { return reinterpret_cast<const CHAR16 *>(text); }
