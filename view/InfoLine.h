/** @file
  One information line as recoloured text.
**/

#pragma once

#include "app/base/Types.h"

/// Appends "label: value" and a line feed to text, a NUL-terminated buffer of size bytes; the label
/// and its colon are in labelColor (0xRRGGBB). Without a label the value stands alone. A line that
/// is too long is cut, one that no longer fits is left out.
void AppendInfoLine(CHAR8 *text, UINTN size, const OBV_COMPONENT_INFO &line, UINT32 labelColor);
