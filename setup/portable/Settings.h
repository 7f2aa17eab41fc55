/** @file
  The values of the setup, and the variable that keeps them.
**/

#pragma once

#include "setup/portable/SetupPages.h"

namespace obv_setup {

#pragma pack(1)

/// The variable, and what the form browser edits. OBV_SETUP_DATA of the pages
/// states the same layout.
struct Settings {
  OBV_SETUP_LOOK Look;
  UINT8 Options[kOptionCount];
};

#pragma pack()

static_assert(OFFSET_OF(Settings, Options) == 4);
static_assert(sizeof(Settings) == 4 + kOptionCount);
static_assert(sizeof(Settings) <= OBV_SETUP_VARIABLE_LIMIT);

/// Every value's default.
void SetDefaults(Settings *settings);

/// The settings that these bytes stand for, whoever wrote them: what is not
/// there, belongs to another layout or is beyond its limit is the default.
void ReadSettings(const void *data, UINTN size, Settings *settings);

/// True when every value is one that the pages offer.
bool AreValid(const Settings &settings);

}  // namespace obv_setup
