/** @file
  Colours that a host writes as texts.
**/

#pragma once

#include "hostcheck/Report.h"

namespace hostcheck {

/// Complains of a text that is not three numbers from 0 to 255. Reads at most
/// OBV_COLOR_TEXT_SIZE bytes; field and owner name it, as in "BorderColor" of "Config".
void CheckColor(Report *report, const CHAR8 *text, const CHAR8 *field, const CHAR8 *owner);

}  // namespace hostcheck
