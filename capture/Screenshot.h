/** @file
  F12: the screen as a PNG file on a USB volume of the user's choice.
**/

#pragma once

#include "app/base/Firmware.h"
#include "capture/UsbVolumes.h"
#include "lvgl.h"

struct ScreenshotState {
  /// The screen at F12: blue, green, red, reserved; red, green, blue, alpha
  /// after it was saved. From the pool, kept for the run.
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *Buffer;
  VolumeList Volumes;
};

extern ScreenshotState gScreenshot;

/// Copies the screen and lets the user pick a volume; the file is written when
/// that is done. EFI_NO_MEDIA without a USB volume, which the user is told.
[[nodiscard]] EFI_STATUS F12ScreenShots();

/// Handler of the volume box; the user data is the volume list.
void UserSelectedPartitionMessageBoxHandler(lv_event_t *event);
