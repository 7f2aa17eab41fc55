// Before EDK2's headers, which would hide the functions.
#include <png.h>

#include "tool/view/PngFile.h"

#include "tool/view/Request.h"

namespace board_view {

void WritePng(const std::string &path, const Screen &screen) {
  std::vector<uint8_t> samples;
  samples.reserve(screen.Pixels.size() * 3);
  for (uint32_t pixel : screen.Pixels) {
    for (int shift : {16, 8, 0}) {
      samples.push_back(static_cast<uint8_t>(pixel >> shift));
    }
  }
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  image.width = screen.Width;
  image.height = screen.Height;
  image.format = PNG_FORMAT_RGB;
  image.flags = PNG_IMAGE_FLAG_FAST;
  if (png_image_write_to_file(&image, path.c_str(), 0, samples.data(), 0, nullptr) == 0) {
    throw ViewError("cannot write " + path + ": " + image.message);
  }
}

}  // namespace board_view
