/** @file
  The settings that EDK2's build generates for each library, for the native build: the defaults of
  EDK2's packages and of ours. It is included before every file of EDK2's libraries and of the
  reference host's driver.
**/

#pragma once

#ifdef __cplusplus
extern "C" {
#endif

#include <Base.h>

#include <Library/PcdLib.h>

extern GUID gEfiCallerIdGuid;
extern CHAR8 *gEfiCallerBaseName;

#define EFI_CALLER_BASE_NAME "Boardscope"

#define _PCD_GET_MODE_BOOL_PcdBoardFileFromAnyVolume FALSE
#define _PCD_GET_MODE_BOOL_PcdComponentName2Disable FALSE
#define _PCD_GET_MODE_BOOL_PcdComponentNameDisable FALSE
#define _PCD_GET_MODE_BOOL_PcdDriverDiagnostics2Disable FALSE
#define _PCD_GET_MODE_BOOL_PcdDriverDiagnosticsDisable FALSE
#define _PCD_GET_MODE_BOOL_PcdUgaConsumeSupport TRUE
#define _PCD_GET_MODE_BOOL_PcdVerifyNodeInList FALSE

#define _PCD_GET_MODE_8_PcdSpeculationBarrierType 0x01U

#define _PCD_GET_MODE_32_PcdMaximumAsciiStringLength 1000000U
#define _PCD_GET_MODE_32_PcdMaximumDevicePathNodeCount 0U
#define _PCD_GET_MODE_32_PcdMaximumLinkedListLength 1000000U
#define _PCD_GET_MODE_32_PcdMaximumUnicodeStringLength 1000000U
#define _PCD_GET_MODE_32_PcdUefiLibMaxPrintBufferSize 320U

// Assembler code reads this one, so it is a variable.
extern const UINT32 _gPcd_FixedAtBuild_PcdControlFlowEnforcementPropertyMask;
#define _PCD_GET_MODE_32_PcdControlFlowEnforcementPropertyMask \
  _gPcd_FixedAtBuild_PcdControlFlowEnforcementPropertyMask

#ifdef __cplusplus
}
#endif
