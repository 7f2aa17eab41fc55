/** @file
  The main loop.
**/

#pragma once

/// Runs LVGL, with the host's clock as its tick, until the exit flag is set.
void RunMainLoop();
