/** @file
  A host with one mistake, for as long as a program runs.
**/

#pragma once

#include "ProbeFirmware.h"

/// Spoils the host that is loaded as the word says, starts the program of this name, and mends the
/// host. Returns the program's status; EFI_INVALID_PARAMETER for an unknown word.
[[nodiscard]] EFI_STATUS StartOnSpoiltHost(EFI_HANDLE probe, const CHAR16 *word,
                                           const CHAR16 *name);
