/** @file
  What lies under the pointer.
**/

#pragma once

#include "app/base/Types.h"

/// Focuses the callout of the first component under a view pixel. Nothing there changes nothing.
void FocusComponentAt(UINT16 x, UINT16 y);
