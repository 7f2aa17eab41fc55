/** @file
  A located host and LVGL's memory, without anything else of a run: what the resources need.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "platform/LvglGuard.h"
#include "platform/LvglMemory.h"

// The application's free, by the name that it has in native builds.
extern "C" void BoardscopeFree(void *pointer);

class LocatedHost : public testing::Test {
 protected:
  LocatedHost() {
    fake::RunLibraryConstructors(Machine);
    gHost.Protocol = &Host.Protocol();
    gHost.SharedState = &Host.State;
    gLvglMemory = {BoardscopeAllocateOrFail, BoardscopeFree, BoardscopeReallocateOrFail};
  }
  ~LocatedHost() override {
    gHost = {};
    EXPECT_EQ(Machine.ProblemsText(), "");
  }

  std::vector<std::string> Errors() const { return Host.LogTexts(OBV_LOG_ERROR); }

  fake::Firmware Machine;
  fake::TestHost Host{Machine};
};
