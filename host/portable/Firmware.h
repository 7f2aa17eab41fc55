/** @file
  EDK2's headers, as the portable part of the host sees them: types and pure
  libraries only, no services.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/PrintLib.h>

#include <Protocol/ObvProtocol.h>
}

namespace obv_host {

/// A UCS-2 literal in the firmware's character type.
inline const CHAR16 *Ucs2(const char16_t *text) { return reinterpret_cast<const CHAR16 *>(text); }

}  // namespace obv_host
