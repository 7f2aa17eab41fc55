/** @file
  A graphics output whose screen is a piece of memory: it can arrive at any time.
**/

#pragma once

#include "LateFirmware.h"

/// What the output can show.
enum class Modes : UINT32 {
  SmallOnly = 1,    ///< 640x480
  SmallAndView = 2  ///< 640x480 and 1024x768
};

/// Makes the output's screen, once. Returns its address, 0 without memory.
/// Pixels are blue, green, red, reserved; rows follow one another closely.
[[nodiscard]] UINTN MakeLateScreen();

/// Installs the output on a handle of its own, in its small mode, with a screen
/// that is not black anywhere.
[[nodiscard]] EFI_STATUS InstallLateOutput(Modes modes);

/// Takes the output away; nothing happens when it is not there.
void RemoveLateOutput();
