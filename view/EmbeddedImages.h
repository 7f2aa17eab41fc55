/** @file
  The pictures that are built into the application, besides the pointer's arrow.

  Each descriptor is of kind LV_IMG_CF_RAW_ALPHA: its data is a complete PNG stream, its header
  gives the picture's size in pixels. They are constants and live as long as the program.
**/

#pragma once

#include "lvgl.h"

/// Logos for the view's header: A is 93x19 pixels, B and C are 67x35.
extern const lv_img_dsc_t kLogoA;
extern const lv_img_dsc_t kLogoB;
extern const lv_img_dsc_t kLogoC;

/// Status dots, 11x11 pixels: A green, B red, C amber.
extern const lv_img_dsc_t kMarkerA;
extern const lv_img_dsc_t kMarkerB;
extern const lv_img_dsc_t kMarkerC;
