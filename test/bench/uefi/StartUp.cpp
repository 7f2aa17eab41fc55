#include "StartUp.h"

#include "Meter.h"

namespace {

struct StartUp {
  Phase Current;
  UINT64 Since;
  UINT64 Ticks[kPhases];
};
StartUp gStartUp;

}  // namespace

void BeginStartUp() {
  gStartUp.Current = Phase::Rest;
  gStartUp.Since = CountedTicks();
}

void EnterPhase(Phase phase) {
  UINT64 now = CountedTicks();
  if (gStartUp.Current != Phase::Over) {
    gStartUp.Ticks[static_cast<UINTN>(gStartUp.Current)] += now - gStartUp.Since;
  }
  gStartUp.Current = phase;
  gStartUp.Since = now;
}

Phase CurrentPhase() { return gStartUp.Current; }

bool StartUpIsWhole() {
  for (UINTN phase = 0; phase < kPhases; phase++) {
    if (gStartUp.Ticks[phase] == 0 && phase != static_cast<UINTN>(Phase::Fonts)) {
      return false;
    }
  }
  return true;
}

UINT64 TicksOfPhase(UINTN phase) { return gStartUp.Ticks[phase]; }
