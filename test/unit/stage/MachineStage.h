/** @file
  The ground: a machine, and a host that is not yet installed on it. Nothing of the application has
  run. Every other stage stands on this one.
**/

#pragma once

#include <gtest/gtest.h>

#include "test/firmware/Run.h"
#include "test/firmware/TestHost.h"

using Lines = std::vector<std::string>;
using LogLines = std::vector<fake::LogLine>;

/// A test ends with the machine asked for what was done wrong to it.
class MachineStage : public testing::Test {
 protected:
  ~MachineStage() override { EXPECT_EQ(Machine.ProblemsText(), ""); }

  static fake::LogLine Info(std::string text) { return {OBV_LOG_INFO, std::move(text)}; }
  static fake::LogLine Error(std::string text) { return {OBV_LOG_ERROR, std::move(text)}; }
  /// What was logged as an error.
  Lines Errors() const { return Host.LogTexts(OBV_LOG_ERROR); }

  /// For tests that look at no text: loading all faces takes most of their time.
  void LeaveFontsOut() { Host.LeaveFontsOut(); }

  fake::Firmware Machine;
  fake::TestHost Host{Machine};
};
