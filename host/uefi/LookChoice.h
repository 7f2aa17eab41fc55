/** @file
  What the user chose in the setup for the look of the view.
**/

#pragma once

#include "host/portable/Appearance.h"
#include "host/uefi/DriverFirmware.h"

namespace obv_host {

/// The choice in the setup's variable, of which nothing is taken for granted; the
/// usual look without one.
LookChoice ReadLookChoice();

}  // namespace obv_host
