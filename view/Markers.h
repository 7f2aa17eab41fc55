/** @file
  The status dots of the components.
**/

#pragma once

/// Builds both dots of every component, hidden.
void BuildMarkers();
