/** @file
  Starting a program so that a debugger can be there first.
**/

#pragma once

#include "ProbeFirmware.h"

/// Loads the program of this name from the probe's own disk.
[[nodiscard]] EFI_STATUS LoadProgram(EFI_HANDLE probe, const CHAR16 *name, EFI_HANDLE *program);

/// Loads the program of this name from the probe's own disk, prints where it
/// lies as "NAME is at 0xADDRESS", waits for a key, starts it, and returns its
/// status.
[[nodiscard]] EFI_STATUS StartForDebugger(EFI_HANDLE probe, const CHAR16 *name);

/// Waits for one key without writing anything to the console.
[[nodiscard]] EFI_STATUS WaitForKey();
