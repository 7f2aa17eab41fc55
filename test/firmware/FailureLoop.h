// The loop that makes call 1 of a service fail, then call 2, and so on until a whole run no
// longer meets the failure.

#pragma once

#include "test/firmware/Child.h"
#include "test/firmware/FakeFirmware.h"

namespace fake {

struct FailureLoop {
  Service What;
  EFI_STATUS Status = EFI_OUT_OF_RESOURCES;
  /// How many calls fail from the n-th on; kForever for all.
  uint64_t Count = 1;
  /// Which n are tried: First, First + Step, ... up to Last, or until the run ends before.
  uint64_t First = 1;
  uint64_t Last = kForever;
  uint64_t Step = 1;
  unsigned TimeoutSeconds = 120;
  /// Instead of failing, the n-th call leaves the pool without room: from then on nobody gets more
  /// than was given back, the firmware itself included.
  bool FreezesPool = false;
};

struct FailureLoopResult {
  uint64_t Runs = 0;   ///< How many runs met their failure.
  bool Ended = false;  ///< The last run came through without meeting it.
  /// One entry for each run that crashed, hung, returned non-zero, or left a problem behind.
  std::vector<std::string> Complaints;
  std::string Text() const;
};

/// Runs `body` in a child process for each n, on a fresh firmware with the failure planned. After
/// a body that returned 0 there must be no leftovers (Firmware::Leftovers).
FailureLoopResult RunFailureLoop(const FailureLoop &loop,
                                 const std::function<int(Firmware &firmware)> &body);

}  // namespace fake
