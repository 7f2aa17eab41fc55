#include "app/HandBack.h"
#include "app/base/Firmware.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"

namespace {

bool gDamageFound;

void GiveBack() {
  // A jump that the damaged run asked for is not followed.
  gHost.SharedState->JumpRequested = 0;
  if (gRun.ScreenBackup != nullptr) {
    HandBack(false);
  }
  EndLife(EFI_SUCCESS);
}

}  // namespace

// The compiler knows the name, and uses it after the linker has thrown out what nobody names.
extern "C" {

[[noreturn]] void __stack_chk_fail();

/// What stands farther up on the stack may be damaged as well, so nothing returns there: from here
/// the screen is given back and the image left. Files that are open stay so.
__attribute__((used)) void __stack_chk_fail() {
  if (!gDamageFound) {
    gDamageFound = true;
    LogError("[OBV] The stack is damaged\n");
    GiveBack();
  }
  (void)gBS->Exit(gImageHandle, EFI_COMPROMISED_DATA, 0, nullptr);
  CpuDeadLoop();
  __builtin_unreachable();
}

}  // extern "C"
