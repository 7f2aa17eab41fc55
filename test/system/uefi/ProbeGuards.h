/** @file
  What firmware that watches over memory must not let a program do.
**/

#pragma once

#include "ProbeFirmware.h"

/// Does what is forbidden, one after the other, and prints "NAME is caught" or "NAME is not
/// caught". Where nothing watches, nothing is damaged.
[[nodiscard]] EFI_STATUS TryGuards();

/// Reads from address 0, whatever comes of it.
[[nodiscard]] EFI_STATUS ReadNull();
