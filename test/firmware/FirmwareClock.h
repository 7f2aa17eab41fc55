// The one time source: moved by tests, by Stall and, if asked, by every look at the host's clock.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

class FirmwareClock {
 public:
  /// Units of timer events.
  static constexpr uint64_t kTicksPerMillisecond = 10000;

  uint64_t Milliseconds() const { return ticks_ / kTicksPerMillisecond; }
  uint64_t Ticks() const { return ticks_; }
  void SetMilliseconds(uint64_t value) { ticks_ = value * kTicksPerMillisecond; }
  void Advance(uint64_t milliseconds) { ticks_ += milliseconds * kTicksPerMillisecond; }
  void AdvanceTicks(uint64_t ticks) { ticks_ += ticks; }

  /// Milliseconds that pass at every GetTime of the test host, before it is answered.
  uint64_t StepPerLook = 0;

  /// What the runtime service GetTime answers; it does not move by itself.
  EFI_TIME Date = {2023, 7, 4, 13, 5, 9, 0, 0, EFI_UNSPECIFIED_TIMEZONE, 0, 0};

 private:
  uint64_t ticks_ = 1000 * kTicksPerMillisecond;
};

}  // namespace fake
