/** @file
  The variables that EDK2's build generates for an image: here, those that are not GUIDs.
**/

#include <Uefi.h>

#include <Library/PcdLib.h>

GUID gEfiCallerIdGuid = {
    0x51FFDCE4, 0xAD16, 0x41CA, {0xA9, 0xFE, 0x76, 0x8F, 0x19, 0x2F, 0x66, 0xE2}};
CHAR8 *gEfiCallerBaseName = "Boardscope";

const UINT32 _gPcd_FixedAtBuild_PcdControlFlowEnforcementPropertyMask = 0;
