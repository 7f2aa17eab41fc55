#include "test/firmware/FailureLoop.h"

#include <cstdio>

namespace fake {

namespace {

constexpr int kLeftBehind = 87;

bool LeavesMachineClean(const Firmware &firmware) {
  std::string leftovers = firmware.Leftovers();
  std::fputs(leftovers.c_str(), stdout);
  return leftovers.empty();
}

}  // namespace

FailureLoopResult RunFailureLoop(const FailureLoop &loop,
                                 const std::function<int(Firmware &firmware)> &body) {
  FailureLoopResult result;
  for (uint64_t n = loop.First; n <= loop.Last; n += loop.Step) {
    ChildResult child = RunInChild(
        [&](std::string *text) {
          Firmware firmware;
          bool frozen = false;
          if (loop.FreezesPool) {
            firmware.At(loop.What, n, [&] {
              firmware.Pool.Capacity = firmware.Pool.LiveBytes();
              frozen = true;
            });
          } else {
            firmware.FailCall(loop.What, n, loop.Status, loop.Count);
          }
          int code = body(firmware);
          *text = frozen || firmware.Faults.AnyFailed() ? "met" : "";
          return code != 0 || LeavesMachineClean(firmware) ? code : kLeftBehind;
        },
        loop.TimeoutSeconds);
    if (!child.Succeeded) {
      result.Complaints.push_back(std::string(ServiceName(loop.What)) + " call " +
                                  std::to_string(n) + ": " + child.Summary());
    }
    result.Ended = child.Succeeded && child.Text.empty();
    if (result.Ended) {
      break;
    }
    result.Runs++;
  }
  return result;
}

std::string FailureLoopResult::Text() const {
  std::string text;
  for (const std::string &complaint : Complaints) {
    text += complaint + "\n";
  }
  return text;
}

}  // namespace fake
