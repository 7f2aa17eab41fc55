#include "app/base/StackGuard.h"

#include "app/base/Firmware.h"

namespace {

/// Copying a text stops at its end, so with a zero in the value no text can bring the value along.
constexpr UINTN kZeroByte = 0xFF;
/// Spreads the few bits of the clock that nobody can foretell; odd, so that none is lost.
constexpr UINTN kSpread = 0x9E3779B97F4A7C15;

}  // namespace

// The compiler knows the name, and uses it after the linker has thrown out what nobody names.
extern "C" {

extern UINTN __stack_chk_guard;

__attribute__((used)) UINTN __stack_chk_guard = kSpread & ~kZeroByte;

}  // extern "C"

// Not guarded: the value changes between its start and its end.
__attribute__((no_stack_protector)) void SeedStackGuard() {
  __stack_chk_guard = AsmReadTsc() * kSpread & ~kZeroByte;
}
