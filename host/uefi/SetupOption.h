/** @file
  The way from a component to its option in the firmware's setup.
**/

#pragma once

#include "host/portable/FormSearch.h"
#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// Finds the question whose number is the token, in the setup's own formset
/// first and then in all others, and hands its place to the setup, which opens it
/// after the run. EFI_UNSUPPORTED: there is no setup to open it. EFI_NOT_FOUND:
/// no formset has it. Otherwise the setup's answer.
[[nodiscard]] EFI_STATUS OpenSetupOption(UINT16 token, OBV_SETUP_OPTION *option);

}  // namespace obv_host
