/** @file
  How the filter buttons look.
**/

#pragma once

#include "lvgl.h"

/// Sets up the default, active and selected styles.
void InitializeFilterStyles();

/// Gives a button the default look, and the active one for while it has the focus.
void AddFilterStyles(lv_obj_t *button);

/// Gives the selected look to one button and the default look to the others; to all for NULL.
void MarkSelectedFilterButton(lv_obj_t *selected);
