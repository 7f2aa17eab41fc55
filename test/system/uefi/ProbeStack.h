/** @file
  How much of the stack a program uses.
**/

#pragma once

#include "ProbeFirmware.h"

/// The stack that the firmware's loader made for everything that runs in one thread; the lowest
/// page may be out of bounds.
struct Stack {
  UINTN Base;
  UINTN Size;
};

/// Finds the stack. Fails when the loader has not described it, or when this code runs on another.
[[nodiscard]] EFI_STATUS FindStack(Stack *stack);

/// Starts the program of this name, as StartForDebugger does, on a stack that is painted, and logs
/// how far it went: "[Probe] stack: USED bytes used, FREE never touched".
[[nodiscard]] EFI_STATUS StartOnPaintedStack(EFI_HANDLE probe, const CHAR16 *name);
