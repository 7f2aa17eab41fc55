#include "app/MainLoop.h"

#include "app/base/Firmware.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"
#include "lvgl.h"
#include "platform/HotPlug.h"

namespace {

/// For how long the host's clock has shown the same time.
struct StillClock {
  UINT32 Turns;
  UINT32 StalledMilliseconds;
};

/// Without a clock LVGL reads no input, so that nobody could leave. A clock that has not moved for
/// far more turns than one of its ticks can last is watched against the firmware's Stall; the loop
/// waits in no other case.
bool StandsStillTooLong(UINT64 now, StillClock *still) {
  constexpr UINT32 kSuspiciousTurns = 200000;
  constexpr UINT32 kMostMilliseconds = 10000;
  constexpr UINTN kMicroseconds = 1000;
  if (now != gRun.LastTime) {
    *still = {};
    return false;
  }
  if (still->Turns < kSuspiciousTurns) {
    still->Turns += 1;
    return false;
  }
  (void)gBS->Stall(kMicroseconds);
  still->StalledMilliseconds += 1;
  return still->StalledMilliseconds > kMostMilliseconds;
}

}  // namespace

// A busy loop on purpose: LVGL's timers are its only pacing.
void RunMainLoop() {
  StillClock still = {};
  while (!gRun.ExitRequested) {
    // First, so that what the notification asked for between two turns is drawn once.
    RedrawAfterHotPlug();
    lv_timer_handler();
    UINT64 now = HostTime();
    lv_tick_inc(static_cast<UINT32>(now - gRun.LastTime));
    if (StandsStillTooLong(now, &still)) {
      LogError("[OBV] The host's clock stands still, now app exit...\n");
      gRun.ExitRequested = true;
    }
    gRun.LastTime = now;
  }
}
