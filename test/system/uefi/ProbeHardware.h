/** @file
  What the host answers when it is asked for its components' states.
**/

#pragma once

#include "ProbeFirmware.h"

/// Logs the answer for each component, "[Probe] state NAME: STATUS", each of its lines,
/// "[Probe] line LABEL: VALUE", and at the end how long the slowest of them takes once everything
/// was read, "[Probe] slowest NAME: MICROSECONDS us".
[[nodiscard]] EFI_STATUS LogStates();
