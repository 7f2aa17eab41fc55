/** @file
  The status dots of the components.
**/

#pragma once

#include "app/base/Types.h"

/// Builds both dots of every component, hidden; the first of an unknown theme is empty, not hidden.
void BuildMarkers();

/// Shows the dots that the component's state calls for.
void ShowMarkers(UINTN index);

/// Hides both dots.
void HideMarkers(UINTN index);
