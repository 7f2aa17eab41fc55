/** @file
  What the callouts say: the component's name and its marks.
**/

#pragma once

#include "app/base/Types.h"

/// A component's style record; an empty one where the host forgot it.
const OBV_COMPONENT_STYLE &CalloutStyleOf(const OBV_COMPONENT_STYLE *style);

/// Whether the component's callout carries marks: it is not ready, or it has
/// no setup option.
bool HasMarks(const OBV_COMPONENT &component);

/// Fills the component's name and both texts of its callout.
void ComposeCalloutTexts(UINTN index);
