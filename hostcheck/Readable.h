/** @file
  Whether there is memory where a host points to.
**/

#pragma once

#include "app/base/Types.h"

namespace hostcheck {

/// Whether size bytes can be read at the address: on firmware, whether the processor's page tables
/// map them. Says nothing of what stands there. No NULL is readable, and no size of 0.
[[nodiscard]] bool IsReadable(const VOID *address, UINTN size);

}  // namespace hostcheck
