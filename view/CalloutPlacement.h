/** @file
  Where a callout stands at the end of its leader line.
**/

#pragma once

#include "app/base/Types.h"

/// The top left corner that lets the side OBV_CALLOUT_* of a callout touch the
/// anchor, in 16-bit arithmetic; unchanged for any other side.
OBV_POINT PlaceAtAnchor(INT32 side, OBV_POINT anchor, UINT16 width, UINT16 height,
                        OBV_POINT unchanged);

/// Makes the record's callout as large as its label of this size in pixels wants it, and moves it
/// to the end of the leader line.
void FitCallout(OBV_COMPONENT *component, INT16 labelWidth, INT16 labelHeight);
