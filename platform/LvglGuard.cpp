#include "platform/LvglGuard.h"

#include "app/HostClient.h"
#include "platform/LvglFailure.h"

LvglGuardState gLvglGuard;

namespace {

constexpr UINTN kFailed = 1;

}  // namespace

bool RunGuardedFromLvgl(void (*work)()) {
  if (SetJump(&gLvglGuard.Return) != 0) {
    return false;
  }
  gLvglGuard.Armed = TRUE;
  work();
  gLvglGuard.Armed = FALSE;
  return true;
}

void BoardscopeLvglFailure(const char *file, int line) {
  LogError("[OBV] LVGL cannot go on: %a %d\n", file, line);
  if (gLvglGuard.Armed) {
    // Once only: a failure on the way out must not come back here.
    gLvglGuard.Armed = FALSE;
    LongJump(&gLvglGuard.Return, kFailed);
  }
  (void)gBS->Exit(gImageHandle, EFI_OUT_OF_RESOURCES, 0, nullptr);
  __builtin_unreachable();
}
