/** @file
  PNG files through lodepng, as LVGL brings it.

  Both functions allocate from the pool through LVGL's allocator; without memory
  they fail like on a bad file.
**/

#pragma once

#include "app/base/Firmware.h"

/// A picture of 4 bytes a pixel: red, green, blue, alpha.
struct PngPixels {
  UINT8 *Data;
  UINT32 Width;
  UINT32 Height;
};

/// Decodes size bytes of a PNG file of at most OBV_MAX_PICTURE_SIZE pixels in each direction, and
/// decompresses no more than its header announces. All zero on failure; Data is the caller's
/// to free.
[[nodiscard]] PngPixels DecodePng(const VOID *file, UINTN size);

struct PngFile {
  UINT8 *Data;
  UINTN Size;
};

/// Encodes a picture with lodepng's defaults: the file drops an alpha that is
/// opaque everywhere. All zero on failure; Data is the caller's to free.
[[nodiscard]] PngFile EncodePng(const PngPixels &pixels);
