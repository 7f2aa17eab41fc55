/** @file
  The column of filter buttons and how they look.
**/

#pragma once

#include "lvgl.h"

/// Sets up the default, active and selected styles.
void InitializeFilterStyles();

/// Creates the six buttons; the first starts out selected.
void BuildFilterButtons();

/// Gives the selected look to one button and the default look to the others.
void MarkSelectedFilterButton(lv_obj_t *selected);
