/** @file
  Highlights in the shape of the components' outlines.
**/

#pragma once

/// Builds every component's highlight, hidden.
void BuildHotspots();
