/** @file
  The box in which the user picks a USB volume.
**/

#pragma once

#include "app/base/Firmware.h"
#include "capture/UsbVolumes.h"
#include "lvgl.h"

/// Opens the box: one button a volume, in their order, then cancel. Volumes for
/// which it has no room are closed and leave the list. handler is called with
/// LV_EVENT_VALUE_CHANGED and the list as user data.
[[nodiscard]] EFI_STATUS OpenVolumeBox(VolumeList *volumes, lv_event_cb_t handler);
