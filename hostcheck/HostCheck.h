/** @file
  Takes a host through the contract that include/Protocol and docs/host.md describe, with the
  application's own code wherever that decides. Nothing is drawn, and all memory is given back.
**/

#pragma once

#include "hostcheck/Report.h"

namespace hostcheck {

/// Fills the report, which must be zero. EFI_SUCCESS: no mistake. EFI_ABORTED: mistakes.
/// EFI_NOT_FOUND: there is no host. EFI_OUT_OF_RESOURCES: something was left out for want of
/// memory.
[[nodiscard]] EFI_STATUS CheckHost(Report *report);

}  // namespace hostcheck
