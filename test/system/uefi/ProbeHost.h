/** @file
  What the host shares with the application, seen and reset from outside.
**/

#pragma once

#include "ProbeFirmware.h"

/// NULL before the host was loaded.
[[nodiscard]] OBV_PROTOCOL *FindHost();

/// Puts the hand-over fields back to what they are before the first run.
[[nodiscard]] EFI_STATUS ForgetSavedState();

/// Sets whether the setup screen comes back on every output or on one.
[[nodiscard]] EFI_STATUS RestoreAllOutputs(bool all);

/// Has the host build its components for a view of this size.
[[nodiscard]] EFI_STATUS ParseForSize(OBV_PROTOCOL *host, UINTN width, UINTN height,
                                      OBV_COMPONENT **components);

/// Logs the components as the host describes them for a view of this size:
/// "[Probe] component INDEX TYPE TOKEN SELECTABLE SIDE NAME", its outline as
/// "[Probe] outline X,Y X,Y ...", and its leader line, "[Probe] leader ...".
[[nodiscard]] EFI_STATUS LogComponents(UINTN width, UINTN height);
