/** @file
  What the probe does when the firmware itself has started it, without a shell: under Secure Boot
the distribution's shell does not run.
**/

#pragma once

#include "ProbeFirmware.h"

/// Tries the unsigned programs, shows a setup screen, and after a key press starts the application
/// from it; prints each program's status as "NAME: STATUS". Ends at a key press.
[[nodiscard]] EFI_STATUS RunWithoutShell(EFI_HANDLE probe);
