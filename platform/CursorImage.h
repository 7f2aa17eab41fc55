/** @file
  The pointer's arrow.
**/

#pragma once

#include "lvgl.h"

/// A 32x32 arrow of 4-byte pixels (blue, green, red, alpha) with its tip at the top left. The
/// header deliberately declares 8x16 pixels: the view shows the block's first four rows, each in
/// four pieces of eight pixels laid below one another. Constant, lives as long as the program.
extern const lv_img_dsc_t kCursorImage;
