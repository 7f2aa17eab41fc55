/** @file
  What the application has used of the processor: ticks of its time-stamp counter. QEMU can have it
  count instructions, which then is what all figures here are.
**/

#pragma once

#include "BenchFirmware.h"

/// Ticks so far, without those that an Uncounted was alive in.
UINT64 CountedTicks();

/// What a million instructions take.
UINT64 TicksOfMillion();

/// While one lives, nothing counts: the bench itself, transfers to screen and disk, the host's log.
/// They may nest.
class Uncounted {
 public:
  Uncounted();
  ~Uncounted();
  Uncounted(const Uncounted &) = delete;
  Uncounted &operator=(const Uncounted &) = delete;
};
