/** @file
  The entry function of the application.
**/

#pragma once

#include "app/base/Firmware.h"

/// Shows the board view until the user leaves it and hands screen and choice
/// back. Returns the status of locating the host, of component intake or of the
/// option search, EFI_OUT_OF_RESOURCES when memory ran out; success also when
/// no display mode suits the view.
extern "C" EFI_STATUS EFIAPI VeltBoardscopeAppEntryPoint(EFI_HANDLE imageHandle,
                                                         EFI_SYSTEM_TABLE *systemTable);
