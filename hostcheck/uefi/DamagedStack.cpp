#include "app/base/Firmware.h"

// The compiler knows the name, and uses it after the linker has thrown out what nobody names.
extern "C" {

[[noreturn]] void __stack_chk_fail();

/// What stands farther up on the stack may be damaged as well, so nothing returns there.
__attribute__((used)) void __stack_chk_fail() {
  (void)gBS->Exit(gImageHandle, EFI_COMPROMISED_DATA, 0, nullptr);
  CpuDeadLoop();
  __builtin_unreachable();
}

}  // extern "C"
