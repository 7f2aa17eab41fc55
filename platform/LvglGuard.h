/** @file
  Running code from which LVGL, or what allocates through it, may fail for good.

  LVGL tests only some of its allocations. So its allocator does not return
  without memory: it ends the innermost guarded piece of work.
**/

#pragma once

#include <stddef.h>

#include "app/Firmware.h"

struct LvglGuardState {
  BASE_LIBRARY_JUMP_BUFFER Return;
  BOOLEAN Armed;
};

extern LvglGuardState gLvglGuard;

/// Runs work; false when BoardscopeLvglFailure cut it short. Guards may be
/// nested. Nothing on work's stack is cleaned up then: memory is left to the
/// leak report, and no object with a destructor may stand on it.
[[nodiscard]] bool RunGuardedFromLvgl(void (*work)(void *context), void *context);

/// LVGL's allocator: malloc and realloc that do not return without memory.
void *AllocateForLvgl(size_t size);
void *ReallocateForLvgl(void *block, size_t size);
