#include "platform/LvglStart.h"

#include "app/base/MemoryPool.h"
#include "lvgl.h"
#include "platform/LvglGuard.h"
#include "platform/LvglMemory.h"

LvglMemory gLvglMemory;

void StartLvgl() {
  gLvglMemory.Allocate = BoardscopeAllocateOrFail;
  gLvglMemory.Free = free;
  gLvglMemory.Reallocate = BoardscopeReallocateOrFail;
  lv_init();
}
