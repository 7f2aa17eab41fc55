#include "test/bench/EncodePeers.h"

#include <png.h>
#include <spng.h>
#include <cstdlib>
#include <memory>

namespace bench {

namespace {

std::vector<uint8_t> WithLibspng(const RgbaPicture &picture) {
  std::unique_ptr<spng_ctx, void (*)(spng_ctx *)> context(spng_ctx_new(SPNG_CTX_ENCODER),
                                                          spng_ctx_free);
  if (context == nullptr || spng_set_option(context.get(), SPNG_ENCODE_TO_BUFFER, 1) != 0) {
    return {};
  }
  spng_ihdr header{};
  header.width = picture.Width;
  header.height = picture.Height;
  header.bit_depth = 8;
  header.color_type = SPNG_COLOR_TYPE_TRUECOLOR_ALPHA;
  if (spng_set_ihdr(context.get(), &header) != 0 ||
      spng_encode_image(context.get(), picture.Bytes.data(), picture.Bytes.size(), SPNG_FMT_PNG,
                        SPNG_ENCODE_FINALIZE) != 0) {
    return {};
  }
  size_t size = 0;
  int error = 0;
  std::unique_ptr<void, void (*)(void *)> file(spng_get_png_buffer(context.get(), &size, &error),
                                               std::free);
  auto *bytes = static_cast<const uint8_t *>(file.get());
  return error == 0 ? std::vector<uint8_t>(bytes, bytes + size) : std::vector<uint8_t>();
}

void Append(png_structp png, png_bytep data, size_t size) {
  auto *file = static_cast<std::vector<uint8_t> *>(png_get_io_ptr(png));
  file->insert(file->end(), data, data + size);
}

std::vector<uint8_t> WithLibpng(const RgbaPicture &picture) {
  std::vector<uint8_t> file;
  // Without handlers of its own libpng prints what is wrong and ends the process.
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &file, Append, nullptr);
  png_set_IHDR(png, info, picture.Width, picture.Height, 8, PNG_COLOR_TYPE_RGB_ALPHA,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (uint32_t y = 0; y < picture.Height; y++) {
    png_write_row(png, picture.Bytes.data() + size_t{y} * picture.Width * 4);
  }
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return file;
}

}  // namespace

std::vector<Encoder> EncodePeers() { return {{"libspng", WithLibspng}, {"libpng", WithLibpng}}; }

}  // namespace bench
