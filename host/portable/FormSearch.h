/** @file
  Finding a question in the forms that the firmware's drivers have installed.
**/

#pragma once

#include "host/portable/Firmware.h"

extern "C" {
#include <Protocol/ObvSetup.h>
}

namespace obv_host {

/// Scopes that may be open at once; forms that nest deeper are not searched on.
inline constexpr UINTN kFormDepthLimit = 64;

/// Looks in a package list, as the HII database exports it, for the first question
/// with this number, and writes its place to *option. Nothing is taken for granted
/// of the bytes: lengths that lead out of them end the search of their package.
/// With formset, only that formset counts; NULL for any. False without a find.
bool FindQuestion(const void *packageList, UINTN size, UINT16 question, const EFI_GUID *formset,
                  OBV_SETUP_OPTION *option);

}  // namespace obv_host
