/** @file
  The pointer's arrow.
**/

#pragma once

#include "lvgl.h"

/// A block of 32x32 pixels of 4 bytes (blue, green, red, alpha), whose header deliberately declares
/// 8x16: the view shows the block's first four rows, each in four pieces of eight pixels laid below
/// one another. These rows hold a small arrow in just that order, the other 28 the rest of a large
/// one; both are white with a black outline and have their tip at the top left. Constant, lives as
/// long as the program.
extern const lv_img_dsc_t kCursorImage;
