/** @file
  What the panel tells about one component.
**/

#pragma once

#include "app/base/Types.h"

/// Fills heading, info text and side list from the component's information
/// lines, to which it may add a status line. Does nothing for an index beyond
/// the count.
void FillComponentPanel(UINTN index);
