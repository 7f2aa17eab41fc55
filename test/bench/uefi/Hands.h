/** @file
  The user's hands: what the console's keyboard and absolute pointer answer. The real devices are
  not asked meanwhile.
**/

#pragma once

#include "BenchFirmware.h"
#include "Places.h"

/// Takes keyboard and pointers over; the pointer's range becomes one step per pixel of the screen.
[[nodiscard]] EFI_STATUS TakeInput(UINT64 width, UINT64 height);

/// Undoes TakeInput.
void GiveInputBack();

/// Each is read once, by the next reading of its device.
void PressKey(EFI_INPUT_KEY key);
void PointAt(const Place &place, bool pressed);
