/** @file
  The column of filter buttons.
**/

#pragma once

/// Creates the six buttons; the first starts out selected.
void BuildFilterButtons();
