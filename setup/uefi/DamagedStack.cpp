#include "setup/uefi/DamagedStack.h"

#include "setup/uefi/DriverFirmware.h"

namespace {

/// Copying a text stops at its end, so with a zero in the value no text can bring the value along.
constexpr UINTN kZeroByte = 0xFF;
/// Spreads the few bits of the clock that nobody can foretell; odd, so that none is lost.
constexpr UINTN kSpread = 0x9E3779B97F4A7C15;

}  // namespace

// The compiler knows both names, and uses them after the linker has thrown out what nobody names.
extern "C" {

extern UINTN __stack_chk_guard;
[[noreturn]] void __stack_chk_fail();

__attribute__((used)) UINTN __stack_chk_guard = kSpread & ~kZeroByte;

/// The frames above are the form browser's, which cannot be left. So the machine starts anew.
__attribute__((used)) void __stack_chk_fail() {
  gRT->ResetSystem(EfiResetCold, EFI_COMPROMISED_DATA, 0, nullptr);
  CpuDeadLoop();
  __builtin_unreachable();
}

}  // extern "C"

namespace obv_setup {

// Not guarded: the value changes between its start and its end.
__attribute__((no_stack_protector)) void SeedStackGuard() {
  __stack_chk_guard = AsmReadTsc() * kSpread & ~kZeroByte;
}

}  // namespace obv_setup
