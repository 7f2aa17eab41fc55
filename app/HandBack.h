/** @file
  Handing screen and choice back to the setup, and the last words of a run.
**/

#pragma once

#include "app/base/Types.h"

/// Closes the hot-plug detector, saves the state of a view that stood, has the host find a chosen
/// option, and puts modes and setup screen back. The LVGL objects stay as they are, for the pool's
/// leak report, unless the firmware has no memory left for the way back.
void HandBack(bool viewStood);

/// Calls the host's hooks for the end, frees and reports what memory is left, and logs how long the
/// run took. resolutionVerdict tells whether the outputs have a mode for the view.
void EndLife(EFI_STATUS resolutionVerdict);
