/** @file
  Replacing a band of colours in a picture.
**/

#pragma once

#include "app/base/Types.h"

/// Colours are 0xRRGGBB; both bounds are exclusive.
struct RecolorBand {
  UINT32 Low;
  UINT32 High;
  UINT32 New;
};

/// Gives the new colour to every pixel (blue, green, red, alpha) of which all
/// channels (mode OBV_RECOLOR_ALL_CHANNELS_INSIDE) or any channel
/// (OBV_RECOLOR_ANY_CHANNEL_INSIDE) lie inside the band. Alpha stays. Any other
/// mode changes nothing.
void RecolorPixels(UINT8 *pixels, UINTN count, const RecolorBand &band, UINT8 mode);
