#include "host/uefi/Clock.h"

namespace obv_host {
namespace {

constexpr UINTN kStallMilliseconds = 10;
constexpr UINTN kRounds = 3;

/// No event may lengthen the wait, hence the high priority.
UINT64 MeasureStall() {
  EFI_TPL oldTpl = gBS->RaiseTPL(TPL_HIGH_LEVEL);
  UINT64 start = AsmReadTsc();
  gBS->Stall(kStallMilliseconds * 1000);
  UINT64 ticks = AsmReadTsc() - start;
  gBS->RestoreTPL(oldTpl);
  return ticks;
}

}  // namespace

void StartClock(Clock *clock) {
  // A wait can only come out too long, so the shortest is the best.
  UINT64 best = MAX_UINT64;
  for (UINTN i = 0; i < kRounds; ++i) {
    UINT64 ticks = MeasureStall();
    best = ticks < best ? ticks : best;
  }
  UINT64 rate = best / kStallMilliseconds;
  clock->TicksPerMillisecond = rate == 0 ? 1 : rate;
  clock->Start = AsmReadTsc();
}

UINT64 ReadMilliseconds(const Clock &clock) {
  return (AsmReadTsc() - clock.Start) / clock.TicksPerMillisecond;
}

}  // namespace obv_host
