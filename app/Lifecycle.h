/** @file
  The application's own state from start to end.
**/

#pragma once

#include "app/Firmware.h"

/// How the lifecycle signs its log lines.
inline constexpr CHAR8 kEntryName[] = "VeltBoardscopeAppEntryPoint";

/// Set once before anything is drawn, except where stated.
struct LifecycleState {
  /// Resolution of the view in pixels.
  UINT16 ViewWidth;
  UINT16 ViewHeight;
  /// Factors for sizes designed for a screen of 1920 x 1080.
  double ScaleX;
  double ScaleY;
  /// Size of the setup's screen, put back at the end.
  UINT16 PreviousWidth;
  UINT16 PreviousHeight;
  /// Host clock when the host was located, and at the latest main-loop turn.
  UINT64 StartTime;
  UINT64 LastTime;
  /// Ends the main loop. Also set by the hot-plug notification.
  volatile UINT8 ExitRequested;
  /// Mode of the view on the output in use; -1 when its size has no mode.
  INT32 ModeNumber;
  /// What the entry function returns.
  EFI_STATUS ResultStatus;
  /// The setup screen, rows of PreviousWidth pixels; NULL before it is saved.
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *ScreenBackup;
};

extern LifecycleState gApp;
