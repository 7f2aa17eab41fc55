/** @file
  The language of the firmware, which the pages and the view share.
**/

#pragma once

#include "setup/uefi/DriverFirmware.h"

namespace obv_setup {

/// Index in kLanguageCodes.
UINT8 GetPlatformLanguage();

/// language must be below kLanguageCount.
[[nodiscard]] EFI_STATUS SetPlatformLanguage(UINT8 language);

}  // namespace obv_setup
