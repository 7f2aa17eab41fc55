/** @file
  Running code from which LVGL may fail for good.
**/

#pragma once

#include "app/Firmware.h"

struct LvglGuardState {
  BASE_LIBRARY_JUMP_BUFFER Return;
  BOOLEAN Armed;
};

extern LvglGuardState gLvglGuard;

/// Runs work; false when BoardscopeLvglFailure cut it short. Nothing on work's
/// stack is cleaned up then: memory is left to the leak report, and no object
/// with a destructor may stand on it.
[[nodiscard]] bool RunGuardedFromLvgl(void (*work)());
