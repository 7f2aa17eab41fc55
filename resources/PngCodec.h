/** @file
  lodepng, as LVGL brings it: C functions only.
**/

#pragma once

#define LODEPNG_NO_COMPILE_CPP
extern "C" {
#include "src/extra/libs/png/lodepng.h"
}
