/** @file
  The choice of the view's resolution and scale factors.
**/

#pragma once

#include "app/base/Geometry.h"
#include "app/base/Types.h"

/// Chooses the view geometry from the setup screen's size and the modes of the
/// output in use, and stores it in gGeometry. EFI_UNSUPPORTED when neither
/// 1920 x 1080 nor 1024 x 768 exists where one of them is needed.
[[nodiscard]] EFI_STATUS ChooseViewGeometry();
