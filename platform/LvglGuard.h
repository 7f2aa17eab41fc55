/** @file
  Running code from which LVGL, or what allocates through it, may fail for good.

  LVGL and FreeType do not test all of their allocations: FreeType does while it
  opens a font, but not while it draws letters. So their allocator does not return
  without memory, it ends the innermost guarded piece of work. Only work that is
  known to test each allocation gets NULL: PNG decoding, and the opening of a font.
  lodepng's encoder tests many, but writes through the NULL of some, and goes on to
  a damaged file after others: it is left at the first one.
**/

#pragma once

#include <stddef.h>

#include "app/base/Firmware.h"

/// What an allocation without memory does to the work at hand.
enum class WithoutMemory : UINT8 {
  Fails,  ///< Ends it with a line in the log.
  Null,   ///< Tells it.
  Leaves  ///< Ends it.
};

struct LvglGuardState {
  BASE_LIBRARY_JUMP_BUFFER Return;
  bool Armed;
  WithoutMemory Policy;
};

extern LvglGuardState gLvglGuard;

/// Runs work; false when BoardscopeLvglFailure cut it short. Guards may be
/// nested. Nothing on work's stack is cleaned up then: memory is left to the
/// leak report, and no object with a destructor may stand on it.
[[nodiscard]] bool RunGuardedFromLvgl(void (*work)(void *context), void *context);

/// The same for work that tests each of its allocations. These return NULL when
/// there is no memory, so that the work can clean up and say so itself.
[[nodiscard]] bool RunTestingAllocations(void (*work)(void *context), void *context);

/// The same for work that is left at its first allocation without memory: false then, and all that
/// it has allocated is given back. It must not move blocks that were there before.
[[nodiscard]] bool RunWhileMemoryLasts(void (*work)(void *context), void *context);

/// The allocator of LVGL and FreeType: malloc and realloc that do not return
/// without memory, unless the work at hand tests for it.
extern "C" void *BoardscopeAllocateOrFail(size_t size);
extern "C" void *BoardscopeReallocateOrFail(void *block, size_t size);
