/** @file
  The setup's values in the firmware's variable store.
**/

#pragma once

#include "setup/portable/Settings.h"

namespace obv_setup {

/// The saved values; those that are missing or not valid are the defaults.
void LoadSettings(Settings *settings);

[[nodiscard]] EFI_STATUS SaveSettings(const Settings &settings);

}  // namespace obv_setup
