/** @file
  The pointer: mouse or touch device, and its cursor.
**/

#pragma once

#include "app/base/Firmware.h"
#include "lvgl.h"

/// What a movement does: the pointer in view pixels, and whether its button is down.
using MovementHandler = void (*)(UINT16 x, UINT16 y, bool pressed);

struct PointerDeviceState {
  /// Called for each reading that brought news; set before the pointer is started. NULL for none.
  MovementHandler OnMovement;
  /// Both NULL without a usable pointer.
  EFI_SIMPLE_POINTER_PROTOCOL *Simple;
  EFI_ABSOLUTE_POINTER_PROTOCOL *Absolute;
  /// Of the simple pointer; kept for a debugger, the shifts below say it all.
  EFI_SIMPLE_POINTER_MODE *SimpleMode;
  /// Bits of the simple pointer's resolution, minus one.
  UINT16 ShiftX;
  UINT16 ShiftY;
  /// Device range of one view pixel, times 10000.
  UINT32 DivisorX;
  UINT32 DivisorY;
  /// The pointer in view pixels, reported while no device has news.
  UINT16 X;
  UINT16 Y;
  bool Pressed;
  /// LVGL keeps a reference to it for the whole run.
  lv_indev_drv_t Driver;
};

/// The one pointer of the view.
extern PointerDeviceState gPointer;

/// Finds the devices, registers them with LVGL and shows the cursor.
void StartPointer();

/// Both pointer protocols of the console's input handle. The handle is given
/// only when both are there.
[[nodiscard]] EFI_STATUS GetMouseProtocol(EFI_SIMPLE_POINTER_PROTOCOL **simple,
                                          EFI_ABSOLUTE_POINTER_PROTOCOL **absolute,
                                          EFI_HANDLE *handle);

/// Takes the devices over and puts the pointer at a view pixel. Does nothing
/// without a handle.
void PointerInit(EFI_SIMPLE_POINTER_PROTOCOL *simple, EFI_ABSOLUTE_POINTER_PROTOCOL *absolute,
                 EFI_HANDLE handle, UINT16 startX, UINT16 startY);

/// LVGL's read callback.
void PointerRead(lv_indev_drv_t *driver, lv_indev_data_t *data);

/// The pointer in view pixels; writes nothing when either address is NULL.
void PointerGetPosition(UINT16 *x, UINT16 *y);
