/** @file
  A millisecond clock from the processor's time-stamp counter.
**/

#pragma once

#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// Start and rate of the clock; zero until StartClock.
struct Clock {
  UINT64 Start;
  UINT64 TicksPerMillisecond;
};

/// Measures the counter against the firmware's Stall, for about 30 ms, and
/// starts the clock at 0.
void StartClock(Clock *clock);

UINT64 ReadMilliseconds(const Clock &clock);

}  // namespace obv_host
