/** @file
  EDK2's headers, as the portable part of the setup sees them: types and pure
  libraries only, no services.
**/

#pragma once

extern "C" {
#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>

#include <Protocol/HiiConfigAccess.h>
#include <Protocol/ObvSetup.h>
#include <Protocol/VeltSetupEventHandler.h>
}
