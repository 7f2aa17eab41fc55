// A writer of small PNG files, independent of the PNG library that the application uses.

#pragma once

#include "test/firmware/Edk2.h"

namespace fake {

/// A PNG file with 8-bit red, green, blue, alpha samples; `pixel` gives each as 0xRRGGBBAA in
/// the file's sample order. Not compressed.
std::vector<uint8_t> MakePng(uint32_t width, uint32_t height,
                             const std::function<uint32_t(uint32_t x, uint32_t y)> &pixel);

}  // namespace fake
