/** @file
  The PNG file of a screenshot.
**/

#pragma once

#include "app/base/Firmware.h"

/// The file's name, from the firmware's clock.
struct ScreenshotName {
  CHAR16 Ucs2[512];
  CHAR8 Ascii[512];
};

/// Writes the view's pixels, which are converted in place, to a file in the
/// volume's root and gives its name; a file of that name loses its beginning.
/// Failures are logged with their place; after a failed write the file stays
/// open and the PNG block allocated. Without memory for the PNG block no empty
/// file is left behind.
[[nodiscard]] EFI_STATUS SaveScreenshot(EFI_FILE_PROTOCOL *root,
                                        EFI_GRAPHICS_OUTPUT_BLT_PIXEL *pixels,
                                        ScreenshotName *name);
