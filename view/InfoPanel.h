/** @file
  The three labels of the right-hand column: heading, info text, side list.

  Each is created at its first use and kept for the run. Texts are UTF-8 and
  are copied.
**/

#pragma once

#include "app/base/Types.h"

/// Ignored when NULL, or 40 bytes long or longer.
void SetPanelHeading(const CHAR8 *text);

/// A single blank also blanks the heading.
void SetInfoText(const CHAR8 *text);

/// A text that is not empty is placed under the info text as it stands now.
void SetSideList(const CHAR8 *text);
