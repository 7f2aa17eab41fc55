/** @file
  Firmware and host as the application sees them once the host is located, without a run: for
  tests of single operations.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

#include "app/base/Geometry.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"

class ConnectedHost : public testing::Test {
 protected:
  ConnectedHost() {
    fake::RunLibraryConstructors(Machine);
    gHost.Protocol = &Host.Protocol();
    gHost.SharedState = &Host.State;
  }
  ~ConnectedHost() override {
    gHost = {};
    EXPECT_EQ(Machine.ProblemsText(), "");
  }

  std::vector<fake::LogLine> &Log() { return Host.Log; }
  static fake::LogLine Info(std::string text) { return {OBV_LOG_INFO, std::move(text)}; }
  static fake::LogLine Error(std::string text) { return {OBV_LOG_ERROR, std::move(text)}; }

  fake::Firmware Machine;
  fake::TestHost Host{Machine};
};

using LogLines = std::vector<fake::LogLine>;
