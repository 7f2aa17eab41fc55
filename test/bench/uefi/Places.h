/** @file
  Where the user points.
**/

#pragma once

#include "BenchFirmware.h"

struct Place {
  UINT64 X, Y;
};

/// On a filter button; rows are counted from 0, the top one.
Place OnFilterButton(UINTN row);

/// On the callout of a component. The view has placed it.
Place OnCallout(const OBV_COMPONENT &component);
