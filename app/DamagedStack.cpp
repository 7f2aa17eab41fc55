#include "app/DamagedStack.h"

#include "app/HandBack.h"
#include "app/base/Firmware.h"
#include "app/base/HostClient.h"
#include "app/base/Run.h"

namespace {

/// Copying a text stops at its end, so with a zero in the value no text can bring the value along.
constexpr UINTN kZeroByte = 0xFF;
/// Spreads the few bits of the clock that nobody can foretell; odd, so that none is lost.
constexpr UINTN kSpread = 0x9E3779B97F4A7C15;

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

// The compiler knows both names, and uses them after the linker has thrown out what nobody names.
extern "C" {

extern UINTN __stack_chk_guard;
[[noreturn]] void __stack_chk_fail();

__attribute__((used)) UINTN __stack_chk_guard = kSpread & ~kZeroByte;

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

// Not guarded: the value changes between its start and its end.
__attribute__((no_stack_protector)) void SeedStackGuard() {
  __stack_chk_guard = AsmReadTsc() * kSpread & ~kZeroByte;
}
