#include "resources/Recolor.h"

namespace {

constexpr UINTN kBytesPerPixel = 4;
constexpr UINTN kColorChannels = 3;

UINT8 Channel(UINT32 color, UINTN channel) { return static_cast<UINT8>(color >> (8 * channel)); }

UINTN ChannelsInside(const UINT8 *pixel, const RecolorBand &band) {
  UINTN inside = 0;
  for (UINTN c = 0; c < kColorChannels; ++c) {
    inside += Channel(band.Low, c) < pixel[c] && pixel[c] < Channel(band.High, c);
  }
  return inside;
}

}  // namespace

void RecolorPixels(UINT8 *pixels, UINTN count, const RecolorBand &band, UINT8 mode) {
  if (mode != OBV_RECOLOR_ALL_CHANNELS_INSIDE && mode != OBV_RECOLOR_ANY_CHANNEL_INSIDE) {
    return;
  }
  UINTN needed = mode == OBV_RECOLOR_ALL_CHANNELS_INSIDE ? kColorChannels : 1;
  for (UINT8 *pixel = pixels; pixel < pixels + count * kBytesPerPixel; pixel += kBytesPerPixel) {
    if (ChannelsInside(pixel, band) < needed) {
      continue;
    }
    for (UINTN c = 0; c < kColorChannels; ++c) {
      pixel[c] = Channel(band.New, c);
    }
  }
}
