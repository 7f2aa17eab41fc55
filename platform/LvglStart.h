/** @file
  LVGL itself, without display and input.
**/

#pragma once

/// Gives LVGL the pool as its memory and starts it. Called once, inside RunGuardedFromLvgl.
void StartLvgl();
