#include "platform/LvglGuard.h"

#include "app/base/HostClient.h"
#include "app/base/MemoryPool.h"
#include "platform/LvglFailure.h"

LvglGuardState gLvglGuard;

namespace {

constexpr UINTN kFailed = 1;

void *OrFail(void *block) {
  if (block == nullptr && gLvglGuard.Policy == WithoutMemory::Fails) {
    BoardscopeLvglFailure(__FILE_NAME__, __LINE__);
  }
  if (block == nullptr && gLvglGuard.Policy == WithoutMemory::Leaves) {
    LongJump(&gLvglGuard.Return, kFailed);
  }
  return block;
}

bool RunGuarded(void (*work)(void *context), void *context, WithoutMemory policy) {
  const LvglGuardState outer = gLvglGuard;
  bool finished = false;
  if (SetJump(&gLvglGuard.Return) == 0) {
    gLvglGuard.Armed = true;
    gLvglGuard.Policy = policy;
    work(context);
    finished = true;
  }
  gLvglGuard = outer;
  return finished;
}

}  // namespace

bool RunGuardedFromLvgl(void (*work)(void *context), void *context) {
  return RunGuarded(work, context, WithoutMemory::Fails);
}

bool RunTestingAllocations(void (*work)(void *context), void *context) {
  return RunGuarded(work, context, WithoutMemory::Null);
}

bool RunWhileMemoryLasts(void (*work)(void *context), void *context) {
  const void *newest = NewestMemory();
  bool finished = RunGuarded(work, context, WithoutMemory::Leaves);
  if (!finished) {
    ReleaseMemoryNewerThan(newest);
  }
  return finished;
}

void BoardscopeLvglFailure(const char *file, int line) {
  LogError("[OBV] LVGL cannot go on: %a %d\n", file, line);
  if (gLvglGuard.Armed) {
    LongJump(&gLvglGuard.Return, kFailed);
  }
  (void)gBS->Exit(gImageHandle, EFI_OUT_OF_RESOURCES, 0, nullptr);
  __builtin_unreachable();
}

void *BoardscopeAllocateOrFail(size_t size) { return OrFail(malloc(size)); }

void *BoardscopeReallocateOrFail(void *block, size_t size) { return OrFail(realloc(block, size)); }
