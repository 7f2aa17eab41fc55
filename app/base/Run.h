/** @file
  The run's own state, from start to end.
**/

#pragma once

#include "app/base/Firmware.h"

/// How the run signs its log lines.
inline constexpr CHAR8 kEntryName[] = "VeltBoardscopeAppEntryPoint";

struct RunState {
  /// Host clock in milliseconds: when the host was located, and at the latest main-loop turn.
  UINT64 StartTime;
  UINT64 LastTime;
  /// Ends the main loop. Also set by the hot-plug notification.
  volatile bool ExitRequested;
  /// What the entry function returns.
  EFI_STATUS ResultStatus;
  /// The setup screen, rows of the previous width; NULL before it is saved. From the pool.
  EFI_GRAPHICS_OUTPUT_BLT_PIXEL *ScreenBackup;
};

extern RunState gRun;
