/** @file
  On ConnectedHost: memory for LVGL and its PNG code, without LVGL itself. What the resources need.
**/

#pragma once

#include "test/unit/stage/ApplicationPool.h"
#include "test/unit/stage/ConnectedHost.h"

#include "platform/LvglGuard.h"
#include "platform/LvglMemory.h"

class ResourceStage : public ConnectedHost {
 protected:
  ResourceStage() {
    gLvglMemory = {BoardscopeAllocateOrFail, BoardscopeFree, BoardscopeReallocateOrFail};
  }
};
