/** @file
  The format letters that LVGL prints numbers with.
  Firmware only; native builds use the system's.
**/

#pragma once

#include <stdint.h>

#define PRId32 "d"
#define PRIi32 "i"
#define PRIu32 "u"
#define PRIx32 "x"
#define PRIX32 "X"
