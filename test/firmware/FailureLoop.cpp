#include "test/firmware/FailureLoop.h"

#include <cstdio>

namespace fake {

namespace {

constexpr int kLeftBehind = 87;

// What the run left that it should not have; prints it.
bool LeavesMachineClean(const Firmware &firmware) {
  std::string complaints = firmware.ProblemsText();
  if (firmware.Pool.LiveBlocks() != 0) {
    complaints += std::to_string(firmware.Pool.LiveBlocks()) + " pool blocks are still allocated\n";
  }
  if (firmware.Pool.LivePages() != 0) {
    complaints += std::to_string(firmware.Pool.LivePages()) + " pages are still allocated\n";
  }
  if (firmware.Handles.UnclosedCount() != 0) {
    complaints += "protocols were left open\n";
  }
  if (firmware.OpenFileCount() != 0) {
    complaints += std::to_string(firmware.OpenFileCount()) + " files were left open\n";
  }
  std::fputs(complaints.c_str(), stdout);
  return complaints.empty();
}

}  // namespace

FailureLoopResult RunFailureLoop(const FailureLoop &loop,
                                 const std::function<int(Firmware &firmware)> &body) {
  FailureLoopResult result;
  for (uint64_t n = loop.First; n <= loop.Last; n += loop.Step) {
    ChildResult child = RunInChild(
        [&](std::string *text) {
          Firmware firmware;
          firmware.FailCall(loop.What, n, loop.Status, loop.Count);
          int code = body(firmware);
          *text = firmware.Faults.AnyFailed() ? "met" : "";
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
