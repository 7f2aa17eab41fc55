// A machine with devices that are asked by their sources.

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "test/firmware/FailureLoop.h"
#include "test/unit/sources/DeviceAnswer.h"

namespace obv_host {

class DeviceStage : public testing::Test {
 protected:
  DeviceStage() { UseFirmware(Machine); }

  ~DeviceStage() override { EXPECT_EQ(Machine.Leftovers(), ""); }

  DeviceAnswer Ask(ReadHardware read, UINT16 kind, fake::DevicePath path) {
    DeviceAnswer answer = AskSource(read, HardwareAtPath(kind, std::move(path)));
    EXPECT_EQ(BrokenPromise(answer), "");
    return answer;
  }

  fake::Firmware Machine;
};

inline constexpr uint64_t kMostFailures = 40;

/// Asks a source again and again, on a machine of `devices` each time, while call 1, 2, 3, ... of
/// each service fails that searching and reading devices uses. Every answer must keep its
/// promises, and nothing may be left behind. No other machine may be there. Returns complaints,
/// empty when all went well; "runs" gets the number of failures that were met.
inline std::string AnswersDespiteFailures(
    const std::function<DeviceAnswer(fake::Firmware &machine)> &ask, uint64_t *runs) {
  using fake::Service;
  std::string complaints;
  *runs = 0;
  for (Service service :
       {Service::LocateHandleBuffer, Service::HandleProtocol, Service::AllocatePages}) {
    fake::FailureLoopResult result = fake::RunFailureLoop(
        {.What = service, .Last = kMostFailures}, [&](fake::Firmware &machine) {
          UseFirmware(machine);
          std::string broken = BrokenPromise(ask(machine));
          std::fputs(broken.c_str(), stdout);
          return broken.empty() ? 0 : 1;
        });
    complaints += result.Ended ? result.Text() : result.Text() + "did not end\n";
    *runs += result.Runs;
  }
  return complaints;
}

}  // namespace obv_host
