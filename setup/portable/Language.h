/** @file
  The platform's language among those of the pages.
**/

#pragma once

#include "setup/portable/SetupPages.h"

namespace obv_setup {

/// Index in kLanguageCodes of what the variable PlatformLang holds, of which
/// nothing is taken for granted. A language of another region stands for its own
/// ("de-AT" for "de-DE"); the first one stands in for a language that is missing.
UINT8 LanguageIndex(const CHAR8 *data, UINTN size);

}  // namespace obv_setup
