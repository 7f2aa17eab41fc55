/** @file
  What setup/generate.py says about the pages: which questions there are, and
  what their values may be.
**/

#pragma once

#include "setup/portable/SetupFirmware.h"

namespace obv_setup {

/// A stored value: a question's number, its largest value, and its default.
struct OptionRule {
  UINT16 Question;
  UINT8 Limit;
  UINT8 Default;
};

/// A question that leads to the board view, at one component.
struct ViewEntry {
  UINT16 Question;
  UINT16 Category;
  const char16_t *Name;
};

}  // namespace obv_setup

// Written by setup/generate.py before the build.
#include "build/setup/SetupTable.h"

namespace obv_setup {

inline constexpr UINTN kOptionCount = ARRAY_SIZE(kOptionRules);
inline constexpr UINTN kLanguageCount = ARRAY_SIZE(kLanguageCodes);

}  // namespace obv_setup
