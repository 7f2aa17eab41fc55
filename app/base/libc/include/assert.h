/** @file
  The libraries' own checks are compiled out; LVGL's go through lv_conf.h.
  Firmware only; native builds use the system's.
**/

#pragma once

#define assert(Condition) ((void)0)
